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

// An attribute's value; the bytes belong to the model.
struct CoreAttribute
{
    DWORD type = kADT_UNKNOWN;
    const void* data = nullptr;
    std::size_t size = 0;
};

struct CoreModel
{
    struct Feature
    {
        std::string list;                       // the option list as EnumOptions gives it
        std::vector<PCSTR> options;             // each into `list`
        std::vector<std::string_view> keywords; // the same with their lengths
        std::size_t firstName = 0; // of the options in `names`; the feature's own stands before them
        std::size_t defaultOption = 0;
        std::string_view keyword;             // zero-terminated, into `featureList` unless hidden
        bool hidden = false;                  // answers no call: nobody chooses it directly
        std::vector<std::size_t> constraints; // numbers of those that name the feature
    };
    struct Name
    {
        std::size_t start = 0;  // in `text`
        std::size_t length = 0; // without its zero
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

    std::optional<std::size_t> FindFeature(std::string_view keyword) const;
    std::optional<std::size_t> FindOption(std::size_t feature, std::string_view keyword) const;

    // Of those that a core driver has, this plug-in asks for "DisplayName" only.
    std::optional<CoreAttribute> FeatureAttribute(std::size_t feature, std::string_view name) const;
    std::optional<CoreAttribute> OptionAttribute(std::size_t feature, std::size_t option,
                                                 std::string_view name) const;

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
    WideString text; // all display names, each with its zero
    std::vector<Name> names;
    DWORD checksum = 0; // of all keywords in order: DEVMODEs of another PPD are foreign

private:
    void AddPpdFeatures();
    void AddOwnFeatures();
    void AddFeatureList();
    void AddOptionList(std::size_t number);
    void AddConstraints();
    void AddName(std::string_view utf8);
    CoreAttribute NameAttribute(std::size_t name) const;
    bool ResolveOne(std::vector<std::size_t>& selected, std::size_t feature) const;

    const Ppd& ppd_;
    KeywordTable featureTable_;
    KeywordTable optionTable_;
};

} // namespace tintwerk
