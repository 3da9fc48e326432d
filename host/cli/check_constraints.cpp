// Which selections leave a popup of the driver's pages empty: by the PPD's constraints, and by the driver's
// own rules for media types, rendering intents and colour models.

#include <algorithm>
#include <bitset>
#include <map>
#include <set>
#include <utility>

#include "host/cli/check_rules.h"
#include "src/bindings/media_modes.h"
#include "src/records/options.h"

namespace tintwerk {

namespace {

using Selection = std::pair<std::size_t, std::size_t>; // feature, option; kNoOption for any but "None"
using Options = std::bitset<kMaxOptions>;              // of a popup, that a selection forbids
using Forbidden = std::map<Selection, Options>;

bool IsNone(std::string_view option)
{
    return option == "None" || option == "False" || option == "Off";
}

std::size_t ShownOptions(const PpdFeature& feature)
{
    return std::min<std::size_t>(feature.options.size(), kMaxOptions);
}

Options AllOf(const PpdFeature& feature)
{
    return ~Options() >> (kMaxOptions - ShownOptions(feature));
}

// What each selection of another feature forbids of a popup.
Forbidden ForbiddenBy(const Ppd& ppd, std::size_t popup)
{
    Forbidden forbidden;
    const PpdFeature& feature = ppd.Feature(popup);
    for (const PpdConstraint& constraint : ppd.Constraints()) {
        const bool first = constraint.feature1 == popup;
        if (first == (constraint.feature2 == popup)) continue;
        Options& options = forbidden[first ? Selection(constraint.feature2, constraint.option2)
                                           : Selection(constraint.feature1, constraint.option1)];
        const std::size_t own = first ? constraint.option1 : constraint.option2;
        for (std::size_t option = 0; option < ShownOptions(feature); ++option) {
            if (option == own || (own == kNoOption && !IsNone(feature.options[option].keyword)))
                options.set(option);
        }
    }
    return forbidden;
}

std::string TextOf(const Ppd& ppd, const Selection& selection)
{
    const PpdFeature& feature = ppd.Feature(selection.first);
    return std::string(feature.keyword) + "=" +
           (selection.second == kNoOption ? "(any)" : std::string(feature.options[selection.second].keyword));
}

bool Concerns(const PpdConstraint& constraint, const Selection& a, const Selection& b)
{
    const auto meets = [](std::size_t feature, std::size_t option, const Selection& selection) {
        return feature == selection.first &&
               (option == kNoOption || selection.second == kNoOption || option == selection.second);
    };
    return meets(constraint.feature1, constraint.option1, a) &&
           meets(constraint.feature2, constraint.option2, b);
}

bool ExcludeEachOther(const Ppd& ppd, const Selection& a, const Selection& b)
{
    return std::ranges::any_of(ppd.Constraints(), [&](const PpdConstraint& constraint) {
        return Concerns(constraint, a, b) || Concerns(constraint, b, a);
    });
}

class PopupChecker
{
public:
    explicit PopupChecker(PpdCheck& check) : check_(check), ppd_(check.ppd) {}

    // The driver leaves out what is forbidden in two popups: media types, as far as the cartridge forbids
    // them, and resolutions, whatever forbids them.
    void CheckConstraints()
    {
        const auto media = ppd_.FindFeature("MediaType");
        const auto cartridge = ppd_.FindFeature("halvCartridgeType");
        if (media && cartridge) {
            Forbidden forbidden = ForbiddenBy(ppd_, *media);
            std::erase_if(forbidden, [&](const auto& each) { return each.first.first != *cartridge; });
            CheckSelections(*media, forbidden);
        }
        const auto resolution = ppd_.FindFeature("Resolution");
        if (!resolution) return;
        const Forbidden forbidden = ForbiddenBy(ppd_, *resolution);
        CheckSelections(*resolution, forbidden);
        CheckPairs(*resolution, forbidden);
    }

    // Rendering intents and colour models follow from the digit at the end of the media type.
    void CheckMediaModes()
    {
        const auto media = ppd_.FindFeature("MediaType");
        if (!media) return;
        std::vector<std::size_t> withoutIntent, withoutModel;
        const std::vector<PpdOption>& options = ppd_.Feature(*media).options;
        for (std::size_t option = 0; option < options.size(); ++option) {
            const MediaRules rules{MediaMode(options[option].keyword), Models(), ""};
            if (!OffersIntent(rules)) withoutIntent.push_back(option);
            if (!OffersModel(rules)) withoutModel.push_back(option);
        }
        AddMedia(*media, withoutIntent, "no option of halvIntent goes with this media mode");
        AddMedia(*media, withoutModel,
                 "a profile without colour data takes RGB or CMYKproof, which halvColorModel lacks");
        const MediaRules unmanaged{9, Models(), kNoIntent};
        const auto intents = ppd_.FindFeature("halvIntent");
        const auto none = intents ? ppd_.FindOption(*intents, kNoIntent) : std::nullopt;
        if (none && unmanaged.AllowIntent(kNoIntent) && !OffersModel(unmanaged))
            Add("popup-empty", *intents, *none,
                "none_0 leaves neither RGB nor CMYKproof in halvColorModel: its popup is left empty");
    }

private:
    void Add(std::string_view code, std::size_t feature, std::size_t option, std::string text)
    {
        const PpdFeature& found = ppd_.Feature(feature);
        if (option == kNoOption)
            check_.Tell(code, found, text);
        else
            check_.Tell(code, {found, found.options[option]}, text);
    }

    // Told once, at the first of the media types.
    void AddMedia(std::size_t feature, const std::vector<std::size_t>& media, const std::string& reason)
    {
        if (media.empty()) return;
        const std::string more = media.size() > 1
                                     ? " and " + std::to_string(media.size() - 1) + " more media types"
                                     : std::string();
        Add("popup-empty", feature, media[0],
            std::string(ppd_.Feature(feature).options[media[0]].keyword) + more + ": " + reason +
                "; its popup is left empty");
    }

    void CheckSelections(std::size_t popup, const Forbidden& forbidden)
    {
        const PpdFeature& feature = ppd_.Feature(popup);
        for (const auto& [selection, options] : forbidden) {
            if (options != AllOf(feature)) continue;
            Add("popup-empty", selection.first, selection.second,
                TextOf(ppd_, selection) + " forbids every option of " + std::string(feature.keyword) +
                    ": its popup is left empty");
        }
    }

    // Two selections that only together forbid everything; one example for each pair of features.
    void CheckPairs(std::size_t popup, const Forbidden& forbidden)
    {
        const PpdFeature& feature = ppd_.Feature(popup);
        const Options all = AllOf(feature);
        std::set<std::pair<std::size_t, std::size_t>> told;
        for (auto a = forbidden.begin(); a != forbidden.end(); ++a) {
            for (auto b = std::next(a); b != forbidden.end() && a->second != all; ++b) {
                const std::pair features(a->first.first, b->first.first);
                if ((a->second | b->second) != all || b->second == all || features.first == features.second ||
                    told.contains(features) || ExcludeEachOther(ppd_, a->first, b->first))
                    continue;
                told.insert(features);
                Add("popup-empty-pair", b->first.first, b->first.second,
                    TextOf(ppd_, a->first) + " and " + TextOf(ppd_, b->first) +
                        " together forbid every option of " + std::string(feature.keyword) +
                        ": its popup is left empty");
            }
        }
    }

    int Models() const
    {
        const PpdFeature* const models = ppd_.Find("halvColorModel");
        return models ? static_cast<int>(ShownOptions(*models)) : 0;
    }

    // Whether a popup keeps an option; one without a feature has nothing to lose.
    template <typename Allowed> bool Offers(std::string_view feature, Allowed allowed) const
    {
        const PpdFeature* const found = ppd_.Find(feature);
        return !found || std::ranges::any_of(found->options, allowed, &PpdOption::keyword);
    }

    bool OffersIntent(const MediaRules& rules) const
    {
        return Offers("halvIntent", [&](std::string_view intent) { return rules.AllowIntent(intent); });
    }
    bool OffersModel(const MediaRules& rules) const
    {
        return Offers("halvColorModel", [&](std::string_view model) { return rules.AllowModel(model); });
    }

    PpdCheck& check_;
    const Ppd& ppd_;
};

} // namespace

void CheckEmptyPopups(PpdCheck& check)
{
    PopupChecker checker(check);
    checker.CheckConstraints();
    checker.CheckMediaModes();
}

} // namespace tintwerk
