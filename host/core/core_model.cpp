#include "host/core/core_model.h"

#include <algorithm>

namespace tintwerk {
namespace {

// What the core driver offers for every printer, whatever its PPD says.
struct OwnFeature
{
    std::string_view keyword, text;
    std::initializer_list<std::pair<std::string_view, std::string_view>> options;
};

const OwnFeature kOwnFeatures[] = {
    {"%Orientation",
     "Orientation",
     {{"Portrait", "Portrait"}, {"Landscape", "Landscape"}, {"RotatedLandscape", "Rotated Landscape"}}},
    {"%PageOrder", "Page Order", {{"FrontToBack", "Front to Back"}, {"BackToFront", "Back to Front"}}},
    {"%PagePerSheet",
     "Pages per Sheet",
     {{"1", "1"}, {"2", "2"}, {"4", "4"}, {"6", "6"}, {"9", "9"}, {"16", "16"}, {"Booklet", "Booklet"}}},
};

} // namespace

CoreModel::CoreModel(const Ppd& ppd) : ppd_(ppd)
{
    features.reserve(ppd.Features().size() + std::size(kOwnFeatures));
    for (const PpdFeature& source : ppd.Features()) {
        Feature& feature = AddFeature(source.keyword, source.text);
        feature.hidden = source.keyword == "PageRegion"; // the driver's own way of selecting PageSize
        feature.defaultOption = source.defaultOption;
        for (const PpdOption& option : source.options)
            AddOption(option.keyword, option.text);
    }
    for (const OwnFeature& source : kOwnFeatures) {
        if (ppd.FindFeature(source.keyword)) continue;
        AddFeature(source.keyword, source.text);
        for (const auto& [keyword, name] : source.options)
            AddOption(keyword, name);
    }
    AddFeatureList();
    AddConstraints();
}

CoreModel::Feature& CoreModel::AddFeature(std::string_view keyword, std::string_view name)
{
    Feature& feature = features.emplace_back();
    feature.keyword = keyword;
    feature.firstName = names.size();
    AddName(name);
    return feature;
}

void CoreModel::AddOption(std::string_view keyword, std::string_view name)
{
    features.back().keywords.push_back(keyword);
    AddName(name);
}

void CoreModel::AddFeatureList()
{
    checksum = StableHash({});
    for (std::size_t number = 0; number < features.size(); ++number) {
        AddOptionList(number);
        checksum = StableHash(features[number].list, StableHash(features[number].keyword, checksum));
        if (!features[number].hidden) Append(featureList, features[number].keyword);
    }
    Append(featureList, {});
    PCSTR at = featureList.data();
    for (std::size_t number = 0; number < features.size(); ++number) {
        if (features[number].hidden) continue;
        features[number].keyword = at;
        featureTable_.Insert(at, number);
        at += features[number].keyword.size() + 1;
    }
}

void CoreModel::AddOptionList(std::size_t number)
{
    Feature& feature = features[number];
    for (const std::string_view option : feature.keywords)
        Append(feature.list, option);
    Append(feature.list, {});
    PCSTR at = feature.list.data();
    for (std::string_view& option : feature.keywords) {
        option = at;
        optionTable_.Insert(option, feature.options.size(), number);
        feature.options.push_back(at);
        at += option.size() + 1;
    }
}

void CoreModel::AddConstraints()
{
    const auto constraints = ppd_.Constraints();
    for (std::size_t number = 0; number < constraints.size(); ++number) {
        const PpdConstraint& constraint = constraints[number];
        if (features[constraint.feature1].hidden || features[constraint.feature2].hidden) continue;
        features[constraint.feature1].constraints.push_back(number);
        features[constraint.feature2].constraints.push_back(number);
    }
}

void CoreModel::AddName(std::string_view utf8)
{
    names.push_back(text.size());
    AppendWide(text, utf8);
    text += WCHAR{0};
}

WideView CoreModel::DisplayName(std::size_t feature, std::optional<std::size_t> option) const
{
    const std::size_t name = features[feature].firstName + (option ? *option + 1 : 0);
    const std::size_t end = name + 1 < names.size() ? names[name + 1] : text.size();
    return WideView(text).substr(names[name], end - names[name]);
}

bool CoreModel::Covers(Side side, std::size_t option) const
{
    return side.option == kNoOption ? !IsOff(features[side.feature].keywords[option]) : side.option == option;
}

namespace {

// The two halves of a constraint: the one of the feature, and the other.
std::pair<CoreModel::Side, CoreModel::Side> SidesOf(const PpdConstraint& constraint, std::size_t feature)
{
    const CoreModel::Side first{constraint.feature1, constraint.option1};
    const CoreModel::Side second{constraint.feature2, constraint.option2};
    return first.feature == feature ? std::pair{first, second} : std::pair{second, first};
}

} // namespace

std::vector<CoreModel::Side> CoreModel::WhyConstrained(Selection selected, std::size_t feature,
                                                       std::size_t option) const
{
    std::vector<Side> reasons;
    for (const std::size_t number : features[feature].constraints) {
        const auto [mine, other] = SidesOf(ppd_.Constraints()[number], feature);
        if (!Covers(mine, option) || !Covers(other, selected[other.feature])) continue;
        if (std::ranges::find(reasons, other.feature, &Side::feature) == reasons.end())
            reasons.push_back({other.feature, selected[other.feature]});
    }
    return reasons;
}

std::vector<bool> CoreModel::ConstrainedOptions(Selection selected, std::size_t feature) const
{
    std::vector<bool> constrained(features[feature].keywords.size());
    for (const std::size_t number : features[feature].constraints) {
        const auto [mine, other] = SidesOf(ppd_.Constraints()[number], feature);
        if (!Covers(other, selected[other.feature])) continue;
        if (mine.option != kNoOption) {
            constrained[mine.option] = true;
            continue;
        }
        for (std::size_t option = 0; option < constrained.size(); ++option)
            constrained[option] = constrained[option] || Covers(mine, option);
    }
    return constrained;
}

std::vector<const PpdConstraint*> CoreModel::Conflicts(Selection selected) const
{
    std::vector<const PpdConstraint*> conflicts;
    for (const PpdConstraint& constraint : ppd_.Constraints()) {
        const Side first{constraint.feature1, constraint.option1};
        const Side second{constraint.feature2, constraint.option2};
        const bool hidden = features[first.feature].hidden || features[second.feature].hidden;
        if (!hidden && Covers(first, selected[first.feature]) && Covers(second, selected[second.feature]))
            conflicts.push_back(&constraint);
    }
    return conflicts;
}

bool CoreModel::ResolveOne(std::vector<std::size_t>& selected, std::size_t feature) const
{
    const std::vector<bool> constrained = ConstrainedOptions(selected, feature);
    const std::size_t preferred = features[feature].defaultOption;
    if (!constrained[preferred]) {
        selected[feature] = preferred;
        return true;
    }
    const auto free = std::find(constrained.begin(), constrained.end(), false);
    if (free == constrained.end()) return false;
    selected[feature] = static_cast<std::size_t>(free - constrained.begin());
    return true;
}

bool CoreModel::Resolve(std::vector<std::size_t>& selected, const std::vector<bool>& kept) const
{
    // A feature is moved once at most, so this ends; an option that is free when chosen brings no new
    // conflict.
    std::vector<bool> moved(features.size());
    for (;;) {
        bool progress = false;
        const auto conflicts = Conflicts(selected);
        for (const PpdConstraint* conflict : conflicts) {
            for (const std::size_t feature : {conflict->feature2, conflict->feature1}) {
                if (!progress && !kept[feature] && !moved[feature] && ResolveOne(selected, feature)) {
                    moved[feature] = true;
                    progress = true;
                }
            }
        }
        if (!progress) return conflicts.empty();
    }
}

} // namespace tintwerk
