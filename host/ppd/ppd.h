// A printer description: what the core driver stand-in knows of a printer. Made by the PPD reader, never
// changed afterwards. All texts are UTF-8; keywords are as in the file, features without their leading
// asterisk.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/ppd/keyword_table.h"
#include "host/ppd/ppd_statement.h"

namespace tintwerk {

inline constexpr std::size_t kNoOption = static_cast<std::size_t>(-1);

// Something to tell about a PPD file, at a line counted from 1.
struct PpdMessage
{
    std::string file;
    unsigned line = 0;
    std::string text;
    std::string_view code = {};            // of the rule of tintwerk check that tells it
    std::string feature = {}, option = {}; // that it concerns

    std::string Full() const; // "file:line: text"
};

// The text of one file that a PPD consists of; what stands in it has a line.
class PpdFile
{
public:
    PpdFile(std::string name, std::string_view text) : name_(std::move(name)), text_(text) {}

    const std::string& Name() const { return name_; }
    std::string_view Text() const { return text_; }
    bool Holds(const char* place) const
    {
        return place >= text_.data() && place <= text_.data() + text_.size();
    }
    unsigned LineOf(const char* place) const;

private:
    std::string name_;
    std::string_view text_;
    mutable std::vector<const char*> lines_; // their beginnings, once somebody asked
};

struct PpdOption
{
    std::string_view keyword;
    std::string_view text;  // what people see; the keyword when the file has no translation
    std::string_view value; // the code that selects it in the printer
};

enum class PpdFeatureType
{
    PickOne,
    PickMany,
    Boolean
};

struct PpdFeature
{
    std::string_view keyword;
    std::string_view text;
    std::string_view group; // keyword of the group or subgroup it stands in; empty outside all groups
    PpdFeatureType type = PpdFeatureType::PickOne;
    bool installable = false; // describes what is built into the printer, not what a document wants
    bool hasDefault = false;  // the file says which option is the default
    bool jcl = false;         // selected by the job control language, outside the PostScript code
    double order = 0;         // of *OrderDependency, with its section ("AnySetup"); empty without one
    std::string_view section;
    std::size_t defaultOption = 0;
    std::vector<PpdOption> options; // never empty, in the file's order
};

// What a feature has selected when it is not used.
inline bool IsOff(std::string_view option)
{
    return option == "None" || option == "False" || option == "Off";
}

// Two selections that exclude each other. kNoOption stands for every option that is not off.
struct PpdConstraint
{
    std::size_t feature1, option1, feature2, option2;
};

// A page size with its dimensions, in thousandths of a millimetre; the printable area is counted from the
// lower left corner.
struct PpdForm
{
    std::string_view keyword;
    std::string_view text;
    int width = 0, height = 0;
    int left = 0, bottom = 0, right = 0, top = 0;
};

// What *CustomPageSize allows, in thousandths of a millimetre.
struct PpdCustomSize
{
    int minWidth = 0, maxWidth = 0, minHeight = 0, maxHeight = 0;
};

// The option of PageSize that stands for sizes of the user's own; present when the PPD has *CustomPageSize.
inline constexpr std::string_view kCustomPageSize = "CustomPageSize";

class Ppd
{
public:
    // What the file says about the printer and itself; empty where it says nothing.
    struct Header
    {
        std::string_view languageEncoding, modelName, nickName, shortNickName, product;
    };

    Ppd() = default;
    Ppd(const Ppd&) = delete;
    Ppd& operator=(const Ppd&) = delete;

    const std::string& FileName() const { return fileName_; }
    const Header& About() const { return header_; }
    std::string_view
    PrinterName() const; // the first of nick name, model name, product and file name that there is

    std::span<const PpdFeature> Features() const { return features_; }
    const PpdFeature& Feature(std::size_t feature) const { return features_[feature]; }
    // Numbers of a feature and of its options; nothing when there is no such keyword.
    std::optional<std::size_t> FindFeature(std::string_view keyword) const
    {
        return featureTable_.Find(keyword);
    }
    std::optional<std::size_t> FindOption(std::size_t feature, std::string_view keyword) const
    {
        return optionTable_.Find(keyword, feature);
    }
    // Null when there is none.
    const PpdFeature* Find(std::string_view keyword) const;
    const PpdOption* Find(std::string_view feature, std::string_view option) const;

    std::span<const PpdConstraint> Constraints() const { return constraints_; }
    std::span<const PpdForm> Forms() const { return forms_; }
    const std::optional<PpdCustomSize>& CustomSize() const { return customSize_; }
    std::span<const PpdMessage> Warnings() const { return warnings_; }
    // As they stand in the file and those that it includes; only kept when the reader was asked to.
    std::span<const PpdStatement> Statements() const { return statements_; }
    const std::deque<PpdFile>& Files() const { return files_; }
    // A message about something that lies in one of the files: a keyword, a value. Without a line when it
    // does not.
    PpdMessage At(const char* place, std::string text, std::string_view code = {},
                  std::string_view feature = {}, std::string_view option = {}) const;

private:
    friend class PpdReader;
    friend class PpdSettling;

    std::string fileName_;
    std::deque<std::string> texts_; // the files and the decoded texts that all views point into
    std::deque<PpdFile> files_;
    std::vector<PpdStatement> statements_;
    Header header_;
    std::vector<PpdFeature> features_;
    KeywordTable featureTable_;
    KeywordTable optionTable_; // scope: the feature's number
    std::vector<PpdConstraint> constraints_;
    std::vector<PpdForm> forms_;
    std::optional<PpdCustomSize> customSize_;
    std::vector<PpdMessage> warnings_;
};

} // namespace tintwerk
