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
#include "src/bindings/screen_modes.h"
#include "src/records/options.h"
#include "src/sheets/advanced_texts.h"

namespace tintwerk {

namespace {

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
        if (!UseOfFeature(feature.keyword).control.empty()) continue;
        const auto meant = std::ranges::find_if(names, [&](std::string_view name) {
            return name.starts_with(kFeaturePrefix) ? IsNearName(name, feature.keyword)
                                                    : EqualIgnoringCase(name, feature.keyword);
        });
        if (meant != names.end())
            check.Tell("feature-misspelt", feature, "unknown feature of this driver, did you mean ", *meant,
                       "? No control stands for it");
    }
}

namespace {

bool HidesWithoutChoice(const PageControl& control)
{
    return control.popup == &kPopupTable[kPopupCartridge];
}

std::string WithoutFeature(const PageControl& control)
{
    if (const ControlBinding* const slider = control.slider)
        return "its slider falls back to position " +
               std::to_string(
                   std::clamp(PositionOf(*slider, slider->initialValue), slider->minimum, slider->maximum)) +
               " and writes nothing that is kept";
    if (control.number) return "its part of the number field counts 0";
    if (control.checkBox) return "its check box is hidden";
    return HidesWithoutChoice(control) ? "its popup is hidden" : "its popup is empty";
}

// Without the screen printing page nothing is said of its controls.
void TellMissing(PpdCheck& check, std::string_view feature, const PageControl& control)
{
    if (control.page == PageName::Screen && !check.ppd.Find("halvScreenmode")) return;
    check.Tell("feature-missing", {nullptr, feature}, feature, " is missing: on the page ",
               TextOf(control.page), " ", WithoutFeature(control));
}

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

void CheckSlider(PpdCheck& check, const ControlBinding& row, const PpdFeature& feature)
{
    CheckNumbers(check, "slider-number", feature, "the slider cannot stand for it");
    std::set<int> offered;
    for (const PpdOption& option : feature.options) {
        const std::optional<int> value = OptionNumber(option.keyword);
        if (!value) continue;
        offered.insert(*value);
        CheckPosition(check, row, feature, option, *value);
    }
    std::vector<std::string> missing;
    for (int position = row.minimum; position <= row.maximum; ++position) {
        if (!offered.contains(PpdValue(row, position)))
            missing.push_back(std::to_string(PpdValue(row, position)));
    }
    if (!missing.empty())
        check.Tell(
            "slider-gap", feature,
            "slider positions write options that are not there, which changes nothing: ", FirstOf(missing));
}

void CheckNumberField(PpdCheck& check, const PageControl& control)
{
    const NumberFieldBinding& row = *control.number;
    const RestFeature rest(row);
    const PpdFeature *const coarse = check.ppd.Find(row.keyword), *const fine = check.ppd.Find(rest.name);
    for (const PpdFeature* part : {coarse, fine}) {
        if (part) CheckNumbers(check, "field-number", *part, "its part of the number field counts 0");
    }
    if (!fine) TellMissing(check, rest.name, control);
    if (!coarse || !fine) return;
    std::vector<std::string> missing;
    std::set<std::string> seen;
    for (int value = row.minimum; value <= row.maximum; value += row.increment) {
        const NumberParts parts = SplitNumber(row, value);
        for (const auto& [feature, part] : {std::pair(coarse, parts.coarse), std::pair(fine, parts.rest)}) {
            const std::string option = std::to_string(part);
            std::string setting = std::string(feature->keyword) + "=" + option;
            if (!check.ppd.Find(feature->keyword, option) && seen.insert(setting).second)
                missing.push_back(std::move(setting));
        }
    }
    if (!missing.empty())
        check.Tell("field-gap", *coarse,
                   "the number field writes options that are not there: ", FirstOf(missing));
}

void CheckCheckBox(PpdCheck& check, const PpdFeature& feature)
{
    CheckNumbers(check, "box-number", feature, "the check box hides");
    for (const std::string_view option : {"0", "1"}) {
        if (!check.ppd.Find(feature.keyword, option))
            check.Tell("box-gap", feature, "the check box writes ", option, ", which is no option");
    }
}

void CheckPopup(PpdCheck& check, const PageControl& control, const PpdFeature& feature)
{
    if (HidesWithoutChoice(control) && feature.options.size() < 2)
        check.Tell("popup-hidden", feature, "one option only: its popup is hidden");
    if (feature.options.size() > kMaxOptions)
        check.Tell("popup-full", {feature, feature.options[kMaxOptions]}, "the popup offers ", kMaxOptions,
                   " options; those from ", feature.options[kMaxOptions].keyword,
                   " on cannot be chosen, and one that is selected becomes ", feature.options[0].keyword,
                   " when the page is applied");
    for (const PpdOption& option : feature.options) {
        if (option.text.size() > kLongestName && WideFromUtf8(option.text).size() > kLongestName)
            check.Tell("popup-text", {feature, option}, "the text has more than ", kLongestName,
                       " characters; the popup shows an empty line");
    }
}

} // namespace

void CheckControls(PpdCheck& check)
{
    for (const PageControl& control : PageControls()) {
        if (control.PpdFeatureName().empty()) continue;
        const PpdFeature* const feature = check.ppd.Find(control.feature);
        if (!feature) TellMissing(check, control.feature, control);
        if (control.number)
            CheckNumberField(check, control);
        else if (feature && control.slider)
            CheckSlider(check, *control.slider, *feature);
        else if (feature && control.checkBox)
            CheckCheckBox(check, *feature);
        else if (feature)
            CheckPopup(check, control, *feature);
    }
    for (const Behaviour& row : kBehaviours) {
        if (!check.ppd.Find(row.feature))
            check.Tell("feature-missing", {nullptr, row.feature}, row.feature, " is missing: ", row.without);
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
    const PpdOption* const colors = check.ppd.Find(feature.keyword, "CartridgeColors");
    if (!colors)
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
        check.Tell("cartridge-count", {feature, *colors}, Counted(count, "colour code"), " for ",
                   Counted(slots, "cartridge"), ": the last code is repeated");
}

} // namespace

void CheckScreenPrinting(PpdCheck& check)
{
    if (const PpdFeature* colors = check.ppd.Find("halvCartridgeColors"))
        CheckCartridgeColors(check, *colors);
    const PpdFeature* const modes = check.ppd.Find("halvScreenmode");
    if (modes && modes->options.size() < kScreenModes)
        check.Tell("screen-modes", *modes, Counted(modes->options.size(), "option"), "; ", kScreenModes,
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
    const auto isDefault = [&](const PpdFeature& feature, std::size_t option) {
        return option == kNoOption ? !IsOff(feature.options[feature.defaultOption].keyword)
                                   : option == feature.defaultOption;
    };
    std::set<std::pair<std::size_t, std::size_t>> told; // PPDs state both directions
    for (const PpdConstraint& each : check.ppd.Constraints()) {
        const PpdFeature &first = check.ppd.Feature(each.feature1),
                         &second = check.ppd.Feature(each.feature2);
        const bool hidden = first.keyword == "PageRegion" || second.keyword == "PageRegion";
        if (hidden || !isDefault(first, each.option1) || !isDefault(second, each.option2) ||
            !told.insert(std::minmax(each.feature1, each.feature2)).second)
            continue;
        const auto place = std::ranges::find_if(check.ppd.Statements(), [&](const PpdStatement& statement) {
            return statement.keyword == PpdKeyword::Default && statement.main == first.keyword;
        });
        check.Tell("defaults-conflict",
                   {place == check.ppd.Statements().end() ? nullptr : place->at, first.keyword},
                   "the defaults exclude each other: ", first.keyword, " ",
                   first.options[first.defaultOption].keyword, " and ", second.keyword, " ",
                   second.options[second.defaultOption].keyword);
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
                       kAdvancedGroups[group].title, "\": ", FirstOf(groups[group], 20));
    }
}

} // namespace tintwerk
