// The rules of the driver's pages: whether their controls can stand for what the PPD offers. All that they
// know of the driver comes from its own tables.
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include "host/cli/check_rules.h"
#include "host/cli/feature_use.h"
#include "host/cli/near_names.h"
#include "host/core/core_driver.h"
#include "host/ppd/wide_text.h"
#include "host/sheet/page_controls.h"
#include "platform/owners.h"
#include "src/bindings/advanced_features.h"
#include "src/bindings/borderless_sizes.h"
#include "src/bindings/cartridge_codes.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/option_number.h"
#include "src/sheets/advanced_texts.h"

namespace tintwerk {

namespace {

constexpr std::size_t kLongestFeature = 254; // of one request to the core driver
constexpr std::size_t kLongestPair = 508;    // feature and option together, of one change
constexpr std::size_t kLongestOption = 255;  // that is recognised as the selected one
constexpr std::size_t kLongestText = 511;    // of an option, of one reply of the core driver
constexpr int kScreenModes = 7;              // off, and three halftones with and without multi-black

bool HasOption(const Ppd& ppd, std::string_view feature, std::string_view option)
{
    const auto number = ppd.FindFeature(feature);
    return number && ppd.FindOption(*number, option);
}

void CheckNumbers(PpdCheck& check, std::string_view code, const PpdFeature& feature,
                  const std::string& consequence)
{
    for (const PpdOption& option : feature.options) {
        if (!OptionNumber(option.keyword))
            check.Tell(code, {feature, option}, "the option ", option.keyword, " is no number; ",
                       consequence);
    }
}

} // namespace

void CheckFeatureNames(PpdCheck& check)
{
    std::vector<std::string> names = DriverFeatures();
    std::erase_if(names, [&](const std::string& name) { return check.ppd.Find(name) != nullptr; });
    for (const PpdFeature& feature : check.ppd.Features()) {
        if (UseOfFeature(feature.keyword).use != FeatureUse::None) continue;
        const bool own = EqualIgnoringCase(feature.keyword.substr(0, kFeaturePrefix.size()), kFeaturePrefix);
        const auto meant = std::ranges::find_if(names, [&](std::string_view name) {
            return own ? IsNearName(name, feature.keyword) : EqualIgnoringCase(name, feature.keyword);
        });
        if (meant != names.end())
            check.Tell("feature-misspelt", feature, "unknown feature of this driver, did you mean ", *meant,
                       "? No control stands for it");
    }
}

namespace {

// Without the screen printing page nothing is said of its controls.
void TellMissing(PpdCheck& check, std::string_view feature, DWORD tabBit, const std::string& consequence)
{
    if (check.ppd.Find(feature) || (tabBit == kScreenPrintingPage && !check.ppd.Find("halvScreenmode")))
        return;
    check.Tell("feature-missing", {nullptr, feature}, feature, " is missing: on the page ",
               TextOf(PageOfTab(tabBit)), " ", consequence);
}

int Fallback(const ControlBinding& slider)
{
    return std::clamp(PositionOf(slider, slider.initialValue), slider.minimum, slider.maximum);
}

bool HidesWithoutFeature(const PopupBinding& popup)
{
    return popup.controlId == kPopupTable[kPopupCartridge].controlId;
}

} // namespace

void CheckMissing(PpdCheck& check)
{
    if (!check.Wants("feature-missing")) return;
    for (const ControlBinding& row : kSliderTable)
        TellMissing(check, row.keyword, row.tabBit,
                    "its slider falls back to position " + std::to_string(Fallback(row)) +
                        " and writes nothing that is kept");
    for (const NumberFieldBinding& row : kNumberFieldTable) {
        const RestFeature rest(row);
        for (const char* keyword : {row.keyword, static_cast<const char*>(rest.name)})
            TellMissing(check, keyword, row.tabBit, "its part of the number field counts 0");
    }
    for (const CheckBoxBinding& row : kCheckBoxTable) {
        if (IsPpdFeature(row)) TellMissing(check, row.keyword, row.tabBit, "its check box is hidden");
    }
    for (const PopupBinding& row : kPopupTable) {
        if (row.keyword[0] && row.controlId)
            TellMissing(check, WithoutAsterisk(row.keyword), row.tabBit,
                        HidesWithoutFeature(row) ? "its popup is hidden" : "its popup is empty");
    }
    for (const Behaviour& row : Behaviours()) {
        if (!check.ppd.Find(row.feature))
            check.Tell("feature-missing", {nullptr, row.feature}, row.feature, " is missing: ", row.without);
    }
}

namespace {

// The first number of a text: "55 percent", "D65".
std::optional<int> FirstNumber(std::string_view text)
{
    const std::size_t at = text.find_first_of("0123456789");
    if (at == text.npos) return std::nullopt;
    const bool negative = at > 0 && text[at - 1] == '-';
    return OptionNumber(text.substr(negative ? at - 1 : at));
}

void CheckPosition(PpdCheck& check, const ControlBinding& row, const PpdFeature& feature,
                   const PpdOption& option, int value)
{
    const int position = PositionOf(row, value);
    if (position < row.minimum || position > row.maximum || PpdValue(row, position) != value)
        return check.Tell("slider-value", {feature, option}, "no slider position stands for ", option.keyword,
                          " (PPD values ", PpdValue(row, row.minimum), " to ", PpdValue(row, row.maximum),
                          " in steps of ", row.step, ")");
    const std::optional<int> said = FirstNumber(option.text);
    const int shown = DisplayValue(row, position);
    if (row.labelId && said && option.text != option.keyword && *said != shown && *said != value)
        check.Tell("slider-text", {feature, option}, "the text ", option.text,
                   " contradicts the page, which shows ", shown);
}

} // namespace

void CheckSliders(PpdCheck& check)
{
    for (const ControlBinding& row : kSliderTable) {
        const PpdFeature* const feature = check.ppd.Find(row.keyword);
        if (!feature) continue;
        CheckNumbers(check, "slider-number", *feature, "the slider cannot stand for it");
        std::set<int> offered;
        for (const PpdOption& option : feature->options) {
            const std::optional<int> value = OptionNumber(option.keyword);
            if (!value) continue;
            offered.insert(*value);
            CheckPosition(check, row, *feature, option, *value);
        }
        std::vector<std::string> missing;
        for (int position = row.minimum; position <= row.maximum; ++position) {
            if (!offered.contains(PpdValue(row, position)))
                missing.push_back(std::to_string(PpdValue(row, position)));
        }
        if (!missing.empty())
            check.Tell("slider-gap", *feature,
                       "slider positions write options that are not there, which changes nothing: ",
                       Joined(missing));
    }
}

void CheckNumberFields(PpdCheck& check)
{
    for (const NumberFieldBinding& row : kNumberFieldTable) {
        const std::string rest = RestFeature(row).name;
        const PpdFeature *const coarse = check.ppd.Find(row.keyword), *const fine = check.ppd.Find(rest);
        for (const PpdFeature* part : {coarse, fine}) {
            if (part) CheckNumbers(check, "field-number", *part, "its part of the number field counts 0");
        }
        if (!coarse || !fine) continue;
        std::set<int> coarseParts, restParts;
        std::vector<std::string> missing;
        for (int value = row.minimum; value <= row.maximum; value += row.increment) {
            const NumberParts parts = SplitNumber(row, value);
            if (coarseParts.insert(parts.coarse).second &&
                !HasOption(check.ppd, row.keyword, std::to_string(parts.coarse)))
                missing.push_back(std::string(row.keyword) + "=" + std::to_string(parts.coarse));
            if (restParts.insert(parts.rest).second &&
                !HasOption(check.ppd, rest, std::to_string(parts.rest)))
                missing.push_back(rest + "=" + std::to_string(parts.rest));
        }
        if (!missing.empty())
            check.Tell("field-gap", *coarse,
                       "the number field writes options that are not there: ", Joined(missing));
    }
}

void CheckCheckBoxes(PpdCheck& check)
{
    for (const CheckBoxBinding& row : kCheckBoxTable) {
        const PpdFeature* const feature = IsPpdFeature(row) ? check.ppd.Find(row.keyword) : nullptr;
        if (!feature) continue;
        CheckNumbers(check, "box-number", *feature, "the check box hides");
        for (const char* option : {"0", "1"}) {
            if (!HasOption(check.ppd, row.keyword, option))
                check.Tell("box-gap", *feature, "the check box writes ", option, ", which is no option");
        }
    }
}

void CheckPopups(PpdCheck& check)
{
    for (const PopupBinding& row : kPopupTable) {
        const PpdFeature* const feature =
            row.keyword[0] && row.controlId ? check.ppd.Find(WithoutAsterisk(row.keyword)) : nullptr;
        if (!feature) continue;
        if (HidesWithoutFeature(row) && feature->options.size() < 2)
            check.Tell("popup-hidden", *feature, "one option only: its popup is hidden");
        if (feature->options.size() > kMaxOptions)
            check.Tell("popup-full", {*feature, feature->options[kMaxOptions]}, "the popup offers ",
                       kMaxOptions, " options; those from ", feature->options[kMaxOptions].keyword,
                       " on cannot be chosen, and one that is selected becomes ", feature->options[0].keyword,
                       " when the page is applied");
        for (const PpdOption& option : feature->options) {
            if (option.text.size() > kLongestText && WideFromUtf8(option.text).size() > kLongestText)
                check.Tell("popup-text", {*feature, option}, "the text has more than ", kLongestText,
                           " characters; the popup shows an empty line");
        }
    }
}

void CheckBorderless(PpdCheck& check)
{
    const PpdFeature* const feature = check.ppd.Find("PageSize");
    if (!feature) return;
    std::vector<std::string_view> sizes;
    for (std::size_t i = 0; i < std::min<std::size_t>(feature->options.size(), kMaxOptions); ++i)
        sizes.push_back(feature->options[i].keyword);
    std::vector<int> statuses(sizes.size());
    PairBorderlessSizes(sizes, statuses);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (statuses[i] == kBorderlessOnlySize)
            check.Tell("borderless-alone", {*feature, feature->options[i]}, sizes[i],
                       " is the borderless twin of no size: it stands in the list by "
                       "itself, with the borderless box checked and disabled");
    }
}

namespace {

void CheckCartridgeColors(PpdCheck& check, const PpdFeature& feature)
{
    const auto colors = std::ranges::find(feature.options, "CartridgeColors", &PpdOption::keyword);
    if (colors == feature.options.end())
        return check.Tell("cartridge-colors", feature,
                          "the option CartridgeColors, whose text lists the colours, is missing");
    const WideString list = WideFromUtf8(colors->text);
    CartridgeCodes codes(WideView(list).substr(0, kCartridgeColorUnits - 1));
    std::size_t count = 0;
    for (; codes.GoesOn(); ++count) {
        const WideString code(codes.Next());
        if (!FindCartridgeColor(code.c_str()))
            check.Tell("cartridge-code", {feature, *colors}, "the colour code \"", Utf8FromWide(code),
                       "\" has no picture");
    }
    std::size_t slots = 0; // up to the last cartridge that is offered
    for (int row = 0; row < kCartridgeRows; ++row) {
        if (check.ppd.Find(kCheckBoxTable[kCheckCartridge0 + row].keyword))
            slots = static_cast<std::size_t>(row) + 1;
    }
    if (count < slots)
        check.Tell("cartridge-count", {feature, *colors}, count, " colour codes for ", slots,
                   " cartridges: the last code is repeated");
}

} // namespace

void CheckScreenPrinting(PpdCheck& check)
{
    if (const PpdFeature* colors = check.ppd.Find("halvCartridgeColors"))
        CheckCartridgeColors(check, *colors);
    const PpdFeature* const modes = check.ppd.Find("halvScreenmode");
    if (modes && modes->options.size() < kScreenModes)
        check.Tell("screen-modes", *modes, modes->options.size(), " options; ", kScreenModes,
                   " are written: off, and each of three halftones without and with multi-black");
}

void CheckLengths(PpdCheck& check)
{
    for (const PpdFeature& feature : check.ppd.Features()) {
        if (feature.keyword.size() > kLongestFeature)
            check.Tell("too-long", feature, "the keyword has ", feature.keyword.size(),
                       " characters; it cannot be asked for");
        for (const PpdOption& option : feature.options) {
            if (feature.keyword.size() + option.keyword.size() > kLongestPair)
                check.Tell("too-long", {feature, option}, "feature and option have more than ", kLongestPair,
                           " characters together; the option cannot be chosen");
            else if (option.keyword.size() > kLongestOption)
                check.Tell("too-long", {feature, option}, "the keyword has more than ", kLongestOption,
                           " characters; it is not recognised when it is selected");
        }
    }
}

void CheckConflicts(PpdCheck& check)
{
    if (check.ppd.Constraints().empty()) return;
    Selections none;
    const CoreDriver core(check.ppd, none);
    std::set<std::pair<std::string, std::string>> told; // PPDs state both directions
    for (const auto& [first, second] : core.Conflicts()) {
        if (!told.insert(std::minmax(first, second)).second) continue;
        const std::string keyword = first.substr(0, first.find_first_of(" ="));
        const auto isDefault = [&](const PpdStatement& statement) {
            return statement.keyword == PpdKeyword::Default && statement.main == keyword;
        };
        const auto place = std::ranges::find_if(check.ppd.Statements(), isDefault);
        check.Tell("defaults-conflict",
                   {place == check.ppd.Statements().end() ? nullptr : place->at, keyword},
                   "the defaults exclude each other: ", first, " and ", second);
    }
}

namespace {

// What the driver itself would list; nothing when it makes no advanced page. The plug-in's texts belong to
// one thread at a time.
std::optional<std::set<std::string>> AdvancedFeatures(const CoreDriver& core)
{
    static std::mutex plugin;
    const std::lock_guard lock(plugin);
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

} // namespace

void CheckAdvancedPage(PpdCheck& check)
{
    std::size_t length = 0;
    bool any = false;
    for (const PpdFeature& feature : check.ppd.Features()) {
        length += feature.keyword.size() + 1;
        any |= AdvancedGroupOf(feature.keyword) != nullptr;
    }
    if (!any && length < kFeatureListBytes / 2) return; // nothing to list, and no doubt of its place
    Selections none;
    const CoreDriver core(check.ppd, none);
    const std::optional<std::set<std::string>> listed = AdvancedFeatures(core);
    if (!listed)
        return check.Tell("advanced-none", Place(),
                          "there is no advanced page: the features' keywords have more than ",
                          kFeatureListBytes, " characters together");
    std::vector<std::string> groups[std::size(kAdvancedGroups)];
    std::vector<const PpdFeature*> leftOut;
    for (const PpdFeature& feature : check.ppd.Features()) {
        const AdvancedGroup* const group = AdvancedGroupOf(feature.keyword);
        if (!group) continue;
        std::string keyword(feature.keyword);
        if (listed->contains(keyword))
            groups[group - kAdvancedGroups].push_back(std::move(keyword));
        else
            leftOut.push_back(&feature);
    }
    if (!leftOut.empty())
        check.Tell("advanced-full", *leftOut.front(), "the advanced page is full (", kMaxAdvancedStrings,
                   " features and groups, or ", kAdvancedWorkBytes, " bytes of texts); it leaves out ",
                   leftOut.front()->keyword,
                   (leftOut.size() > 1 ? " and " + std::to_string(leftOut.size() - 1) + " more" : ""));
    for (std::size_t group = 0; group < std::size(groups); ++group) {
        if (!groups[group].empty())
            check.Tell("advanced-lists", Place(), "the advanced page lists under \"",
                       kAdvancedGroups[group].title, "\": ", Joined(groups[group], 20));
    }
}

} // namespace tintwerk
