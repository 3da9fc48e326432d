// A PPD in the shape in which the helper interfaces hand it out: keyword lists, pointer arrays and 16-bit
// names, all made once, so that an answer is one copy. Behind CoreDriver; used by nobody else.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/ppd/keyword_table.h"
#include "host/ppd/ppd.h"
#include "host/ppd/wide_text.h"
#include "platform/coredriver.h"

namespace tintwerk {

// Adds one keyword to a list; the list's own end is one more zero.
inline void Append(std::string& list, std::string_view keyword)
{
    list.append(keyword).append(1, '\0');
}

struct CoreModel
{
    struct Feature
    {
        std::string list;                       // the option list as EnumOptions gives it
        std::vector<PCSTR> options;             // each into `list`
        std::vector<std::string_view> keywords; // the same with their lengths
        std::size_t firstName = 0; // of the feature in `names`; those of its options stand behind it
        std::size_t defaultOption = 0;
        std::string_view keyword;             // zero-terminated, into `featureList` unless hidden
        bool hidden = false;                  // answers no call: nobody chooses it directly
        std::vector<std::size_t> constraints; // numbers of those that name the feature
    };
    // One half of a constraint as seen from a feature.
    struct Side
    {
        std::size_t feature, option;
    };
    using Selection = std::span<const std::size_t>; // the selected option of every feature

    explicit CoreModel(const Ppd& ppd);
    CoreModel(const CoreModel&) = delete;
    CoreModel& operator=(const CoreModel&) = delete;

    std::optional<std::size_t> FindFeature(std::string_view keyword) const
    {
        return featureTable_.Find(keyword);
    }
    std::optional<std::size_t> FindOption(std::size_t feature, std::string_view keyword) const
    {
        return optionTable_.Find(keyword, feature);
    }

    // What people see, with its zero: of a feature, or of the option with this number.
    WideView DisplayName(std::size_t feature, std::optional<std::size_t> option = {}) const;

    // Whether a half of a constraint holds for an option.
    bool Covers(Side side, std::size_t option) const;
    // The selections that forbid an option, each feature once.
    std::vector<Side> WhyConstrained(Selection selected, std::size_t feature, std::size_t option) const;
    // One flag an option.
    std::vector<bool> ConstrainedOptions(Selection selected, std::size_t feature) const;
    std::vector<const PpdConstraint*> Conflicts(Selection selected) const;
    // Changes features that are not `kept` until no conflict is left; false when some remain.
    bool Resolve(std::vector<std::size_t>& selected, const std::vector<bool>& kept) const;

    std::vector<Feature> features;
    std::string featureList;
    WideString text;                // all display names, each with its zero
    std::vector<std::size_t> names; // where each begins in `text`
    DWORD checksum = 0;             // of all keywords in order: DEVMODEs of another PPD are foreign

private:
    Feature& AddFeature(std::string_view keyword, std::string_view name);
    void AddOption(std::string_view keyword, std::string_view name);
    void AddFeatureList();
    void AddOptionList(std::size_t number);
    void AddConstraints();
    void AddName(std::string_view utf8);
    bool ResolveOne(std::vector<std::size_t>& selected, std::size_t feature) const;

    const Ppd& ppd_;
    KeywordTable featureTable_;
    KeywordTable optionTable_;
};

} // namespace tintwerk
