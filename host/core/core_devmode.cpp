// The core driver's own section of a DEVMODE: it carries the selections of one job or one default, so that a
// helper call about a job answers from that job's settings.
#include <algorithm>
#include <cstring>

#include "host/core/core_helper.h"

namespace tintwerk {
namespace {

// A DEVMODE is 16-bit aligned at least; the section behind it is copied, never pointed into.
CoreDevmodeSection SectionOf(const DEVMODEW* devmode)
{
    CoreDevmodeSection section;
    std::memcpy(&section, reinterpret_cast<const BYTE*>(devmode) + devmode->dmSize, sizeof section);
    return section;
}

DWORD CoreSectionSize(const CoreModel& model)
{
    const std::size_t size = sizeof(CoreDevmodeSection) + model.features.size() * sizeof(WORD);
    return static_cast<DWORD>((size + 7) & ~std::size_t{7}); // the plug-in's part stays aligned
}

bool IsOurs(const CoreModel& model, const DEVMODEW* devmode, std::size_t size)
{
    if (!devmode || size < sizeof(DEVMODEW) || devmode->dmSize != sizeof(DEVMODEW) ||
        size < std::size_t{devmode->dmSize} + devmode->dmDriverExtra)
        return false;
    const DWORD expected = CoreSectionSize(model);
    if (devmode->dmDriverExtra < expected) return false;
    const CoreDevmodeSection section = SectionOf(devmode);
    return section.size == expected && section.signature == CoreDevmodeSection::kSignature &&
           section.version == CoreDevmodeSection::kVersion && section.checksum == model.checksum &&
           section.features == model.features.size() &&
           section.pluginSize == devmode->dmDriverExtra - expected;
}

BYTE* NumbersOf(DEVMODEW* devmode)
{
    return reinterpret_cast<BYTE*>(devmode) + devmode->dmSize + sizeof(CoreDevmodeSection);
}

void StoreSelections(const CoreModel& model, DEVMODEW* devmode, const std::vector<std::size_t>& selected)
{
    BYTE* numbers = NumbersOf(devmode);
    for (std::size_t feature = 0; feature < selected.size(); ++feature) {
        const WORD number = static_cast<WORD>(selected[feature]);
        std::memcpy(numbers + feature * sizeof number, &number, sizeof number);
    }
    // What applications read in the public part.
    const auto chosen = [&](std::string_view keyword) {
        const auto number = model.FindFeature(keyword);
        return number ? model.features[*number].keywords[selected[*number]] : std::string_view{};
    };
    devmode->dmOrientation = chosen("%Orientation") == "Portrait" ? DMORIENT_PORTRAIT : DMORIENT_LANDSCAPE;
    devmode->dmFields |= DM_ORIENTATION;
    if (const std::string_view duplex = chosen("Duplex"); !duplex.empty()) {
        devmode->dmDuplex = duplex == "DuplexNoTumble" ? DMDUP_VERTICAL
                            : duplex == "DuplexTumble" ? DMDUP_HORIZONTAL
                                                       : DMDUP_SIMPLEX;
        devmode->dmFields |= DM_DUPLEX;
    }
}

} // namespace

std::optional<std::vector<std::size_t>> SelectionsOf(const CoreModel& model, const DEVMODEW* devmode,
                                                     std::size_t size)
{
    if (!IsOurs(model, devmode, size)) return std::nullopt;
    std::vector<std::size_t> selected(model.features.size());
    const BYTE* numbers = NumbersOf(const_cast<DEVMODEW*>(devmode));
    for (std::size_t feature = 0; feature < selected.size(); ++feature) {
        WORD number;
        std::memcpy(&number, numbers + feature * sizeof number, sizeof number);
        selected[feature] =
            number < model.features[feature].keywords.size() ? number : model.features[feature].defaultOption;
    }
    return selected;
}

std::vector<BYTE> CoreDriver::MakeDevmode(PCWSTR device, std::span<const BYTE> pluginPart) const
{
    const DWORD sectionSize = CoreSectionSize(*model_);
    std::vector<BYTE> bytes(sizeof(DEVMODEW) + sectionSize + pluginPart.size());
    auto* devmode = reinterpret_cast<DEVMODEW*>(bytes.data());
    for (std::size_t i = 0; device && device[i] && i + 1 < std::size(devmode->dmDeviceName); ++i)
        devmode->dmDeviceName[i] = device[i];
    devmode->dmSpecVersion = 0x0401;
    devmode->dmDriverVersion = 0x0603;
    devmode->dmSize = sizeof(DEVMODEW);
    devmode->dmDriverExtra = static_cast<WORD>(sectionSize + pluginPart.size());
    devmode->dmFields = DM_COPIES;
    devmode->dmCopies = 1;
    const CoreDevmodeSection section{sectionSize,
                                     CoreDevmodeSection::kSignature,
                                     CoreDevmodeSection::kVersion,
                                     model_->checksum,
                                     static_cast<DWORD>(model_->features.size()),
                                     static_cast<DWORD>(pluginPart.size())};
    std::memcpy(bytes.data() + sizeof(DEVMODEW), &section, sizeof section);
    std::copy(pluginPart.begin(), pluginPart.end(),
              bytes.begin() + static_cast<std::ptrdiff_t>(sizeof(DEVMODEW) + sectionSize));
    StoreSelections(*model_, devmode, selected_);
    return bytes;
}

} // namespace tintwerk
