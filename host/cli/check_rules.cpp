#include "host/cli/check_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "host/cli/feature_use.h"
#include "host/core/core_driver.h"
#include "host/core/wide_text.h"
#include "host/sheet/script.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"

namespace tintwerk {

namespace {

constexpr std::size_t kLongestFeature = 254; // of one request to the core driver
constexpr std::size_t kLongestPair = 508;    // feature and option together, of one change
constexpr std::size_t kLongestOption = 255;  // that is recognised as the selected one
constexpr std::size_t kAdvancedStrings = 64;
constexpr int kScreenModes = 7; // off, and three halftones with and without multi-black

// An option keyword as the number that it stands for.
std::optional<int> NumberOf(std::string_view keyword)
{
    if (keyword.find("-off") != std::string_view::npos) return 0;
    if (keyword.find("-on") != std::string_view::npos) return 1;
    while (keyword.starts_with(' '))
        keyword.remove_prefix(1);
    if (keyword.starts_with('+') && !keyword.starts_with("+-")) keyword.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(keyword.data(), keyword.data() + keyword.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::string Joined(const std::vector<std::string>& texts, std::size_t most = 6)
{
    std::string joined;
    for (std::size_t i = 0; i < texts.size() && i < most; ++i)
        joined += (i ? ", " : "") + texts[i];
    if (texts.size() > most) joined += " and " + std::to_string(texts.size() - most) + " more";
    return joined;
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
        CheckBorderless();
        CheckCartridgeColors();
        CheckScreenModes();
        CheckLengths();
        CheckDefaults();
        CheckAdvancedPage();
        return std::move(findings_);
    }

private:
    void Add(Severity severity, std::string_view feature, std::string_view option, std::string text)
    {
        findings_.push_back({severity, std::string(feature), std::string(option), std::move(text)});
    }

    const PpdFeature* FindOrMiss(std::string_view feature, DWORD tabBit, const std::string& consequence)
    {
        const PpdFeature* const found = ppd_.Find(feature);
        if (!found)
            Add(Severity::Note, "", "",
                std::string(feature) + " is missing: " + consequence + " on the page " +
                    std::string(TextOf(PageOfTab(tabBit))));
        return found;
    }

    void CheckNumbers(const PpdFeature& feature, const std::string& control)
    {
        for (const PpdOption& option : feature.options) {
            if (!NumberOf(option.keyword))
                Add(Severity::Error, feature.keyword, option.keyword,
                    "the option " + std::string(option.keyword) + " is no number; " + control);
        }
    }

    void CheckSlider(const ControlBinding& row)
    {
        const PpdFeature* const feature =
            FindOrMiss(row.keyword, row.tabBit, "its slider writes nothing that is kept");
        if (!feature) return;
        CheckNumbers(*feature, "the slider cannot stand for it");
        std::set<int> offered;
        for (const PpdOption& option : feature->options) {
            const std::optional<int> value = NumberOf(option.keyword);
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
                    FindOrMiss(keyword, row.tabBit, "its part of the number field counts 0"))
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
        const PpdFeature* const feature = FindOrMiss(row.keyword, row.tabBit, "its check box is hidden");
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
        const PpdFeature* const feature =
            FindOrMiss(WithoutAsterisk(row.keyword), row.tabBit, "its popup is empty");
        if (!feature) return;
        if (feature->options.size() > kMaxOptions)
            Add(Severity::Error, feature->keyword, feature->options[kMaxOptions].keyword,
                "the popup offers " + std::to_string(kMaxOptions) + " options; those from " +
                    std::string(feature->options[kMaxOptions].keyword) +
                    " on cannot be chosen, and one that is selected becomes " +
                    std::string(feature->options[0].keyword) + " when the page is applied");
        constexpr std::array<int, 4> kConstrained{1073, 1072, 1111,
                                                  1273}; // popups that leave out what is forbidden
        if (std::ranges::find(kConstrained, row.controlId) != kConstrained.end())
            CheckEmptied(Number(feature->keyword));
    }

    // One selection elsewhere that forbids every option of a popup.
    void CheckEmptied(std::size_t popup)
    {
        std::map<std::pair<std::size_t, std::size_t>, std::set<std::size_t>> forbidden; // by the other side
        const std::size_t count = ppd_.Feature(popup).options.size();
        for (const PpdConstraint& constraint : ppd_.Constraints()) {
            const bool first = constraint.feature1 == popup;
            if (!first && constraint.feature2 != popup) continue;
            const auto other = first ? std::pair(constraint.feature2, constraint.option2)
                                     : std::pair(constraint.feature1, constraint.option1);
            const std::size_t own = first ? constraint.option1 : constraint.option2;
            if (own != kNoOption) {
                forbidden[other].insert(own);
                continue;
            }
            for (std::size_t option = 0; option < count; ++option) {
                const std::string_view keyword = ppd_.Feature(popup).options[option].keyword;
                if (keyword != "None" && keyword != "False" && keyword != "Off")
                    forbidden[other].insert(option);
            }
        }
        for (const auto& [other, options] : forbidden) {
            if (options.size() < count) continue;
            const PpdFeature& feature = ppd_.Feature(other.first);
            const std::string option =
                other.second == kNoOption ? "(any)" : std::string(feature.options[other.second].keyword);
            Add(Severity::Error, feature.keyword, other.second == kNoOption ? "" : option,
                std::string(feature.keyword) + "=" + option + " forbids every option of " +
                    std::string(ppd_.Feature(popup).keyword) + ": its popup is left empty");
        }
    }

    void CheckBorderless()
    {
        const PpdFeature* const sizes = ppd_.Find("PageSize");
        for (const PpdOption& size : sizes ? sizes->options : std::vector<PpdOption>()) {
            std::string normal(size.keyword);
            for (const std::string_view mark : {"Borderless", "borderless"}) {
                const std::size_t at = normal.find(mark);
                if (at != std::string::npos) normal.erase(at, mark.size());
            }
            if (normal == size.keyword || size.keyword.starts_with("Custom")) continue;
            const bool twin = std::ranges::any_of(sizes->options, [&](const PpdOption& other) {
                return EqualIgnoringCase(other.keyword, normal);
            });
            if (!twin)
                Add(Severity::Warning, "PageSize", size.keyword,
                    std::string(size.keyword) + " has no normal size " + normal +
                        ": it stands in the list by itself, with the borderless box checked and disabled");
        }
    }

    static bool EqualIgnoringCase(std::string_view a, std::string_view b)
    {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
        return std::ranges::equal(a, b, {}, lower, lower);
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
        std::size_t codes = 0;
        std::string_view rest = feature->options[*colors].text;
        for (bool more = true; more; ++codes) {
            const std::size_t comma = rest.find(',');
            const std::string code(rest.substr(0, comma));
            if (!FindCartridgeColor(WideFromUtf8(code).c_str()))
                Add(Severity::Warning, feature->keyword, "CartridgeColors",
                    "the colour code \"" + code + "\" has no picture");
            more = comma != std::string_view::npos;
            rest.remove_prefix(more ? comma + 1 : rest.size());
        }
        std::size_t slots = 0; // up to the last cartridge that is offered
        for (int row = 0; row < kCartridgeRows; ++row) {
            if (ppd_.Find(kCheckBoxTable[kCheckCartridge0 + row].keyword))
                slots = static_cast<std::size_t>(row) + 1;
        }
        if (codes < slots)
            Add(Severity::Warning, feature->keyword, "CartridgeColors",
                std::to_string(codes) + " colour codes for " + std::to_string(slots) +
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

    void CheckDefaults()
    {
        Selections none;
        const CoreDriver core(ppd_, none);
        std::set<std::pair<std::string, std::string>> told; // PPDs state both directions
        for (const auto& [first, second] : core.Conflicts()) {
            if (told.insert(std::minmax(first, second)).second)
                Add(Severity::Warning, "", "",
                    "the defaults exclude each other: " + first + " and " + second);
        }
    }

    void CheckAdvancedPage()
    {
        std::array<std::vector<std::string>, 4> groups;
        for (const PpdFeature& feature : ppd_.Features())
            groups[static_cast<std::size_t>(AdvancedGroupOf(feature.keyword))].emplace_back(feature.keyword);
        constexpr std::array<const char*, 4> kGroups{"", "Printer Options", "Advanced Settings",
                                                     "Special Settings DTF Printing"};
        std::size_t strings = 1 + 4; // the group that is always there, with its special features
        for (std::size_t group = 1; group < groups.size(); ++group) {
            if (groups[group].empty()) continue;
            strings += groups[group].size() + (group == 2 ? 0 : 1);
            Add(Severity::Note, "", "",
                std::string("the advanced page lists under \"") + kGroups[group] +
                    "\": " + Joined(groups[group], 20));
        }
        if (strings > kAdvancedStrings)
            Add(Severity::Error, "", "",
                "the advanced page shows " + std::to_string(kAdvancedStrings) +
                    " features and groups at most; the last ones are left out");
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
