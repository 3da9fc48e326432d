#include "host/cli/check_rules.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "host/cli/check_constraints.h"
#include "host/cli/feature_use.h"
#include "host/core/core_driver.h"
#include "host/core/wide_text.h"
#include "host/sheet/script.h"
#include "platform/owners.h"
#include "src/bindings/advanced_features.h"
#include "src/bindings/borderless_sizes.h"
#include "src/bindings/cartridge_codes.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/option_number.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"
#include "src/sheets/advanced_rows.h"

namespace tintwerk {

namespace {

constexpr std::size_t kLongestFeature = 254; // of one request to the core driver
constexpr std::size_t kLongestPair = 508;    // feature and option together, of one change
constexpr std::size_t kLongestOption = 255;  // that is recognised as the selected one
constexpr std::size_t kLongestText = 511;    // of an option, of one reply of the core driver
constexpr int kScreenModes = 7;              // off, and three halftones with and without multi-black

std::string Joined(const std::vector<std::string>& texts, std::size_t most = 6)
{
    std::string joined;
    for (std::size_t i = 0; i < texts.size() && i < most; ++i)
        joined += (i ? ", " : "") + texts[i];
    if (texts.size() > most) joined += " and " + std::to_string(texts.size() - most) + " more";
    return joined;
}

// What the driver itself would list; nothing when it makes no advanced page.
std::optional<std::set<std::string>> AdvancedFeatures(const CoreDriver& core)
{
    ComPtr<IPrintCoreUI2> helper;
    core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(helper.Receive()));
    HeapHandle heap;
    heap.Reset(HeapCreate(0, 0, 0));
    const CoreArea area{core.CoreObject(), helper.Get(), nullptr, heap.Get()};
    AdvancedKeywords keywords;
    if (!SelectAdvancedKeywords(area, keywords)) return std::nullopt;
    const SourceRow* const rows = RowsFromKeywords(area, keywords);
    if (!rows) return std::nullopt;
    std::set<std::string> features;
    for (const SourceEntry& entry : SourceList(rows)) {
        if (!IsHeader(*entry.row)) features.insert(entry.row->name);
    }
    return features;
}

class Checker
{
public:
    explicit Checker(const Ppd& ppd) : ppd_(ppd) {}

    std::vector<Finding> Run()
    {
        for (const ControlBinding& row : kSliderTable)
            CheckSlider(row);
        for (const NumberFieldBinding& row : kNumberFieldTable)
            CheckNumberField(row);
        for (const CheckBoxBinding& row : kCheckBoxTable)
            CheckCheckBox(row);
        for (const PopupBinding& row : kPopupTable)
            CheckPopup(row);
        CheckMissingBehaviour();
        CheckBorderless();
        CheckCartridgeColors();
        CheckScreenModes();
        CheckLengths();
        CheckEmptyPopups(ppd_, findings_);
        Selections none;
        CoreDriver core(ppd_, none);
        CheckDefaults(core);
        CheckAdvancedPage(core);
        return std::move(findings_);
    }

private:
    void Add(Severity severity, std::string_view feature, std::string_view option, std::string text)
    {
        findings_.push_back({severity, std::string(feature), std::string(option), std::move(text)});
    }

    // The consequence names the control: "its slider on the page main" + what becomes of it. Without the
    // screen printing page nothing is said of its controls.
    const PpdFeature* FindOrMiss(std::string_view feature, DWORD tabBit, const std::string& control,
                                 const std::string& consequence)
    {
        const PpdFeature* const found = ppd_.Find(feature);
        if (!found && (tabBit != kScreenPrintingPage || ppd_.Find("halvScreenmode")))
            Add(Severity::Note, "", "",
                std::string(feature) + " is missing: " + control + " on the page " +
                    std::string(TextOf(PageOfTab(tabBit))) + " " + consequence);
        return found;
    }

    void CheckMissingBehaviour()
    {
        constexpr std::array<std::pair<const char*, const char*>, 6> kBehaviours{{
            {"halvLanguage", "the pages are in English"},
            {"halvGuiMode", "every page is shown"},
            {"halvGuiIcon", "the main page has no logo of its own"},
            {"halvScreenmode", "there is no screen printing page"},
            {"halvCartridgeColors", "the cartridges of the screen printing page have no colours"},
            {"Duplex", "the page layout has no duplex item"},
        }};
        for (const auto& [feature, consequence] : kBehaviours) {
            if (!ppd_.Find(feature))
                Add(Severity::Note, "", "", std::string(feature) + " is missing: " + consequence);
        }
    }

    void CheckNumbers(const PpdFeature& feature, const std::string& control)
    {
        for (const PpdOption& option : feature.options) {
            if (!OptionNumber(option.keyword))
                Add(Severity::Error, feature.keyword, option.keyword,
                    "the option " + std::string(option.keyword) + " is no number; " + control);
        }
    }

    void CheckSlider(const ControlBinding& row)
    {
        const int fallback = std::clamp(PositionOf(row, row.initialValue), row.minimum, row.maximum);
        const PpdFeature* const feature = FindOrMiss(row.keyword, row.tabBit, "its slider",
                                                     "falls back to position " + std::to_string(fallback) +
                                                         " and writes nothing that is kept");
        if (!feature) return;
        CheckNumbers(*feature, "the slider cannot stand for it");
        std::set<int> offered;
        for (const PpdOption& option : feature->options) {
            const std::optional<int> value = OptionNumber(option.keyword);
            if (!value) continue;
            offered.insert(*value);
            const int position = PositionOf(row, *value);
            if (position < row.minimum || position > row.maximum || PpdValue(row, position) != *value)
                Add(Severity::Error, feature->keyword, option.keyword,
                    "no slider position stands for " + std::string(option.keyword) + " (PPD values " +
                        std::to_string(PpdValue(row, row.minimum)) + " to " +
                        std::to_string(PpdValue(row, row.maximum)) + " in steps of " +
                        std::to_string(row.step) + ")");
        }
        std::vector<std::string> missing;
        for (int position = row.minimum; position <= row.maximum; ++position) {
            if (!offered.contains(PpdValue(row, position)))
                missing.push_back(std::to_string(PpdValue(row, position)));
        }
        if (!missing.empty())
            Add(Severity::Error, feature->keyword, "",
                "slider positions write options that are not there, which changes nothing: " +
                    Joined(missing));
    }

    void CheckNumberField(const NumberFieldBinding& row)
    {
        const std::string rest = std::string(row.keyword) + "2";
        for (const std::string& keyword : {std::string(row.keyword), rest}) {
            if (const PpdFeature* feature =
                    FindOrMiss(keyword, row.tabBit, "its part of the number field", "counts 0"))
                CheckNumbers(*feature, "its part of the number field counts 0");
        }
        const PpdFeature *const coarse = ppd_.Find(row.keyword), *const fine = ppd_.Find(rest);
        if (!coarse || !fine) return;
        std::set<int> coarseParts, restParts;
        std::vector<std::string> missing;
        for (int value = row.minimum; value <= row.maximum; value += row.increment) {
            const NumberParts parts = SplitNumber(row, value);
            if (coarseParts.insert(parts.coarse).second &&
                !ppd_.FindOption(Number(row.keyword), std::to_string(parts.coarse)))
                missing.push_back(std::string(row.keyword) + "=" + std::to_string(parts.coarse));
            if (restParts.insert(parts.rest).second &&
                !ppd_.FindOption(Number(rest), std::to_string(parts.rest)))
                missing.push_back(rest + "=" + std::to_string(parts.rest));
        }
        if (!missing.empty())
            Add(Severity::Error, row.keyword, "",
                "the number field writes options that are not there: " + Joined(missing));
    }

    std::size_t Number(std::string_view feature) const { return *ppd_.FindFeature(feature); }

    void CheckCheckBox(const CheckBoxBinding& row)
    {
        if (!IsPpdFeature(row)) return;
        const PpdFeature* const feature = FindOrMiss(row.keyword, row.tabBit, "its check box", "is hidden");
        if (!feature) return;
        CheckNumbers(*feature, "the check box hides");
        for (const char* option : {"0", "1"}) {
            if (!ppd_.FindOption(Number(row.keyword), option))
                Add(Severity::Error, row.keyword, "",
                    std::string("the check box writes ") + option + ", which is no option");
        }
    }

    void CheckPopup(const PopupBinding& row)
    {
        if (!row.keyword[0] || !row.controlId) return;
        const bool hides = row.controlId == kPopupTable[kPopupCartridge].controlId;
        const PpdFeature* const feature = FindOrMiss(WithoutAsterisk(row.keyword), row.tabBit, "its popup",
                                                     hides ? "is hidden" : "is empty");
        if (!feature) return;
        if (hides && feature->options.size() < 2)
            Add(Severity::Note, feature->keyword, "", "one option only: its popup is hidden");
        if (feature->options.size() > kMaxOptions)
            Add(Severity::Error, feature->keyword, feature->options[kMaxOptions].keyword,
                "the popup offers " + std::to_string(kMaxOptions) + " options; those from " +
                    std::string(feature->options[kMaxOptions].keyword) +
                    " on cannot be chosen, and one that is selected becomes " +
                    std::string(feature->options[0].keyword) + " when the page is applied");
        for (const PpdOption& option : feature->options) {
            if (option.text.size() > kLongestText && WideFromUtf8(option.text).size() > kLongestText)
                Add(Severity::Error, feature->keyword, option.keyword,
                    "the text has more than " + std::to_string(kLongestText) +
                        " characters; the popup shows an empty line");
        }
    }

    void CheckBorderless()
    {
        const PpdFeature* const feature = ppd_.Find("PageSize");
        std::vector<std::string_view> sizes;
        for (std::size_t i = 0; feature && i < std::min<std::size_t>(feature->options.size(), kMaxOptions);
             ++i)
            sizes.push_back(feature->options[i].keyword);
        std::vector<int> statuses(sizes.size());
        PairBorderlessSizes(sizes, statuses);
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            if (statuses[i] == kBorderlessOnlySize)
                Add(Severity::Warning, "PageSize", sizes[i],
                    std::string(sizes[i]) + " is the borderless twin of no size: it stands in the list " +
                        "by itself, with the borderless box checked and disabled");
        }
    }

    void CheckCartridgeColors()
    {
        const PpdFeature* const feature = ppd_.Find("halvCartridgeColors");
        if (!feature) return;
        const auto colors = ppd_.FindOption(Number("halvCartridgeColors"), "CartridgeColors");
        if (!colors) {
            Add(Severity::Error, feature->keyword, "",
                "the option CartridgeColors, whose text lists the colours, is missing");
            return;
        }
        const WideString list = WideFromUtf8(feature->options[*colors].text);
        CartridgeCodes codes(WideView(list).substr(0, kCartridgeColorUnits - 1));
        std::size_t count = 0;
        for (; codes.GoesOn(); ++count) {
            const WideString code(codes.Next());
            if (!FindCartridgeColor(code.c_str()))
                Add(Severity::Warning, feature->keyword, "CartridgeColors",
                    "the colour code \"" + Utf8FromWide(code) + "\" has no picture");
        }
        std::size_t slots = 0; // up to the last cartridge that is offered
        for (int row = 0; row < kCartridgeRows; ++row) {
            if (ppd_.Find(kCheckBoxTable[kCheckCartridge0 + row].keyword))
                slots = static_cast<std::size_t>(row) + 1;
        }
        if (count < slots)
            Add(Severity::Warning, feature->keyword, "CartridgeColors",
                std::to_string(count) + " colour codes for " + std::to_string(slots) +
                    " cartridges: the last code is repeated");
    }

    void CheckScreenModes()
    {
        const PpdFeature* const modes = ppd_.Find("halvScreenmode");
        if (modes && modes->options.size() < kScreenModes)
            Add(Severity::Error, modes->keyword, "",
                std::to_string(modes->options.size()) + " options; " + std::to_string(kScreenModes) +
                    " are written: off, and each of three halftones without and with multi-black");
    }

    void CheckLengths()
    {
        for (const PpdFeature& feature : ppd_.Features()) {
            if (feature.keyword.size() > kLongestFeature)
                Add(Severity::Error, feature.keyword, "",
                    "the keyword has " + std::to_string(feature.keyword.size()) +
                        " characters; it cannot be asked for");
            for (const PpdOption& option : feature.options) {
                if (feature.keyword.size() + option.keyword.size() > kLongestPair)
                    Add(Severity::Error, feature.keyword, option.keyword,
                        "feature and option have more than " + std::to_string(kLongestPair) +
                            " characters together; the option cannot be chosen");
                else if (option.keyword.size() > kLongestOption)
                    Add(Severity::Error, feature.keyword, option.keyword,
                        "the keyword has more than " + std::to_string(kLongestOption) +
                            " characters; it is not recognised when it is selected");
            }
        }
    }

    void CheckDefaults(const CoreDriver& core)
    {
        std::set<std::pair<std::string, std::string>> told; // PPDs state both directions
        for (const auto& [first, second] : core.Conflicts()) {
            if (told.insert(std::minmax(first, second)).second)
                Add(Severity::Warning, "", "",
                    "the defaults exclude each other: " + first + " and " + second);
        }
    }

    void CheckAdvancedPage(const CoreDriver& core)
    {
        const std::optional<std::set<std::string>> listed = AdvancedFeatures(core);
        if (!listed)
            Add(Severity::Error, "", "",
                "there is no advanced page: the features' keywords have more than " +
                    std::to_string(kFeatureListBytes) + " characters together");
        std::array<std::vector<std::string>, std::size(kAdvancedGroups)> groups;
        std::vector<std::string> leftOut;
        for (const PpdFeature& feature : ppd_.Features()) {
            const AdvancedGroup* const group = AdvancedGroupOf(feature.keyword);
            if (!group || !listed) continue;
            const std::string keyword(feature.keyword);
            (listed->contains(keyword) ? groups[static_cast<std::size_t>(group - kAdvancedGroups)] : leftOut)
                .push_back(keyword);
        }
        if (!leftOut.empty())
            Add(Severity::Error, leftOut.front(), "",
                "the advanced page is full (" + std::to_string(kMaxAdvancedStrings) +
                    " features and groups, or " + std::to_string(kAdvancedWorkBytes) +
                    " bytes of texts); it leaves out: " + Joined(leftOut));
        for (std::size_t group = 0; group < groups.size(); ++group) {
            if (!groups[group].empty())
                Add(Severity::Note, "", "",
                    std::string("the advanced page lists under \"") + kAdvancedGroups[group].title +
                        "\": " + Joined(groups[group], 20));
        }
    }

    const Ppd& ppd_;
    std::vector<Finding> findings_;
};

bool BeginsWith(std::string_view line, const std::string& start)
{
    return line.starts_with(start) &&
           (line.size() == start.size() || line[start.size()] == '/' || line[start.size()] == ':' ||
            line[start.size()] == ' ' || line[start.size()] == '\t');
}

} // namespace

std::string_view TextOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

std::vector<Finding> CheckPpd(const Ppd& ppd)
{
    return Checker(ppd).Run();
}

// A finding stands at its option's line; where the file spells that otherwise, at its feature's.
void LocateFindings(std::string_view text, std::vector<Finding>& findings)
{
    struct Wanted
    {
        Finding* finding;
        std::string start;
        bool isOption;
    };
    std::vector<Wanted> wanted;
    for (Finding& finding : findings) {
        if (finding.line || finding.feature.empty()) continue;
        const std::string feature = "*" + finding.feature;
        if (finding.option == kCustomPageSize)
            wanted.push_back({&finding, "*" + finding.option, true});
        else if (!finding.option.empty())
            wanted.push_back({&finding, feature + " " + finding.option, true});
        wanted.push_back({&finding, "*OpenUI " + feature, false});
        wanted.push_back({&finding, "*JCLOpenUI " + feature, false});
    }
    for (unsigned number = 1; !text.empty() && !wanted.empty(); ++number) {
        const std::size_t end = text.find_first_of("\r\n");
        const std::string_view line = text.substr(0, end);
        std::erase_if(wanted, [&](const Wanted& each) {
            const bool here = line.starts_with('*') && BeginsWith(line, each.start);
            if (here && (each.isOption || !each.finding->line)) each.finding->line = number;
            return here;
        });
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

} // namespace tintwerk
