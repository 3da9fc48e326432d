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

std::size_t ShownOptions(const PpdFeature& feature)
{
    return std::min<std::size_t>(feature.options.size(), kMaxOptions);
}

// What each selection of another feature forbids of a popup.
Forbidden ForbiddenBy(const Ppd& ppd, std::size_t popup)
{
    Forbidden forbidden;
    const PpdFeature& feature = ppd.Feature(popup);
    for (const PpdConstraint& constraint : ppd.Constraints()) {
        Selection own(constraint.feature1, constraint.option1),
            other(constraint.feature2, constraint.option2);
        if (own.first != popup) std::swap(own, other);
        if (own.first != popup || other.first == popup) continue;
        Options& options = forbidden[other];
        for (std::size_t option = 0; option < ShownOptions(feature); ++option) {
            if (option == own.second || (own.second == kNoOption && !IsOff(feature.options[option].keyword)))
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

bool ExcludeEachOther(const Ppd& ppd, const Selection& a, const Selection& b)
{
    const auto meets = [](std::size_t feature, std::size_t option, const Selection& selection) {
        return feature == selection.first &&
               (option == kNoOption || selection.second == kNoOption || option == selection.second);
    };
    return std::ranges::any_of(ppd.Constraints(), [&](const PpdConstraint& each) {
        const auto concerns = [&](const Selection& one, const Selection& two) {
            return meets(each.feature1, each.option1, one) && meets(each.feature2, each.option2, two);
        };
        return concerns(a, b) || concerns(b, a);
    });
}

// Selections that forbid everything, alone or two together; of these one example for each pair of features.
void CheckForbidden(PpdCheck& check, std::size_t popup, const Forbidden& forbidden)
{
    const PpdFeature& feature = check.ppd.Feature(popup);
    const Options all = ~Options() >> (kMaxOptions - ShownOptions(feature));
    const auto tell = [&](std::string_view code, const Selection& at, const std::string& what) {
        const PpdFeature& its = check.ppd.Feature(at.first);
        check.Tell(code, at.second == kNoOption ? Place(its) : Place(its, its.options[at.second]), what,
                   " every option of ", feature.keyword, ": its popup is left empty");
    };
    std::set<std::pair<std::size_t, std::size_t>> told;
    for (auto a = forbidden.begin(); a != forbidden.end(); ++a) {
        if (a->second == all) {
            tell("popup-empty", a->first, TextOf(check.ppd, a->first) + " forbids");
            continue;
        }
        for (auto b = std::next(a); b != forbidden.end(); ++b) {
            const std::pair features(a->first.first, b->first.first);
            if ((a->second | b->second) != all || b->second == all || features.first == features.second ||
                told.contains(features) || ExcludeEachOther(check.ppd, a->first, b->first))
                continue;
            told.insert(features);
            tell("popup-empty-pair", b->first,
                 TextOf(check.ppd, a->first) + " and " + TextOf(check.ppd, b->first) + " together forbid");
        }
    }
}

// The driver leaves out what is forbidden in two popups: media types, as far as the cartridge forbids them,
// and resolutions, whatever forbids them.
void CheckConstraints(PpdCheck& check)
{
    const auto media = check.ppd.FindFeature("MediaType"), resolution = check.ppd.FindFeature("Resolution");
    const auto cartridge = check.ppd.FindFeature("halvCartridgeType");
    if (media && cartridge) {
        Forbidden forbidden = ForbiddenBy(check.ppd, *media);
        std::erase_if(forbidden, [&](const auto& each) { return each.first.first != *cartridge; });
        CheckForbidden(check, *media, forbidden);
    }
    if (resolution) CheckForbidden(check, *resolution, ForbiddenBy(check.ppd, *resolution));
}

// Rendering intents and colour models follow from the digit at the end of the media type.
void CheckMediaModes(PpdCheck& check)
{
    const PpdFeature *const media = check.ppd.Find("MediaType"),
                            *const intents = check.ppd.Find("halvIntent"),
                            *const models = check.ppd.Find("halvColorModel");
    if (!media) return;
    const int modelCount = models ? static_cast<int>(ShownOptions(*models)) : 0;
    // Whether a popup keeps an option; one without a feature has nothing to lose.
    const auto offers = [](const PpdFeature* popup, const auto& allowed) {
        return !popup || std::ranges::any_of(popup->options, allowed, &PpdOption::keyword);
    };
    const auto offersIntent = [&](const MediaRules& rules) {
        return offers(intents, [&](std::string_view intent) { return rules.AllowIntent(intent); });
    };
    const auto offersModel = [&](const MediaRules& rules) {
        return offers(models, [&](std::string_view model) { return rules.AllowModel(model); });
    };
    // Told once, at the first of the media types.
    const auto tell = [&](const auto& keepsOption, std::string_view reason) {
        std::vector<const PpdOption*> without;
        for (const PpdOption& option : media->options) {
            if (!keepsOption(MediaRules{MediaMode(option.keyword), modelCount, ""}))
                without.push_back(&option);
        }
        if (without.empty()) return;
        const std::size_t more = without.size() - 1;
        check.Tell("popup-empty", {*media, *without[0]}, without[0]->keyword,
                   more ? " and " + Counted(more, "more media type") + ": " : ": ", reason,
                   "; its popup is left empty");
    };
    tell(offersIntent, "no option of halvIntent goes with this media mode");
    tell(offersModel, "a profile without colour data takes RGB or CMYKproof, which halvColorModel lacks");
    const MediaRules unmanaged{9, modelCount, kNoIntent};
    const PpdOption* const none = check.ppd.Find("halvIntent", kNoIntent);
    if (none && unmanaged.AllowIntent(kNoIntent) && !offersModel(unmanaged))
        check.Tell("popup-empty", {*intents, *none},
                   "none_0 leaves neither RGB nor CMYKproof in halvColorModel: its popup is left empty");
}

} // namespace

void CheckEmptyPopups(PpdCheck& check)
{
    CheckConstraints(check);
    CheckMediaModes(check);
}

} // namespace tintwerk
