#include "host/ppd/ppd_reader.h"

#include <algorithm>
#include <iterator>

#include "host/ppd/gunzip.h"
#include "host/ppd/ppd_draft.h"
#include "host/ppd/ppd_scanner.h"
#include "host/ppd/ppd_text.h"
#include "host/ppd/wide_text.h"
#include "platform/whole_file.h"

namespace tintwerk {
namespace {

constexpr std::size_t kMaxIncludeDepth = 8;
constexpr std::size_t kMaxFiles = 100;
constexpr std::size_t kMaxGroupDepth = 32;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct MainRow
{
    std::string_view keyword;
    PpdKeyword meaning;
    std::string_view Ppd::Header::*field = nullptr;
};

constexpr MainRow kMains[] = {
    {"OpenUI", PpdKeyword::OpenUI},
    {"CloseUI", PpdKeyword::CloseUI},
    {"JCLOpenUI", PpdKeyword::JclOpenUI},
    {"JCLCloseUI", PpdKeyword::JclCloseUI},
    {"OpenGroup", PpdKeyword::OpenGroup},
    {"CloseGroup", PpdKeyword::CloseGroup},
    {"OpenSubGroup", PpdKeyword::OpenSubGroup},
    {"CloseSubGroup", PpdKeyword::CloseSubGroup},
    {"OrderDependency", PpdKeyword::OrderDependency},
    {"NonUIOrderDependency", PpdKeyword::OrderDependency},
    {"UIConstraints", PpdKeyword::UIConstraints},
    {"NonUIConstraints", PpdKeyword::NonUIConstraints},
    {"Include", PpdKeyword::Include},
    {"SymbolValue", PpdKeyword::SymbolValue},
    {"PaperDimension", PpdKeyword::PaperDimension},
    {"ImageableArea", PpdKeyword::ImageableArea},
    {"CustomPageSize", PpdKeyword::CustomPageSize},
    {"ParamCustomPageSize", PpdKeyword::ParamCustomPageSize},
    {"MaxMediaWidth", PpdKeyword::MaxMediaWidth},
    {"MaxMediaHeight", PpdKeyword::MaxMediaHeight},
    {"LanguageEncoding", PpdKeyword::Header, &Ppd::Header::languageEncoding},
    {"LanguageLevel", PpdKeyword::Header},
    {"ColorDevice", PpdKeyword::Header},
    {"End", PpdKeyword::Other},
    {"SymbolEnd", PpdKeyword::Other},
    {"FormatVersion", PpdKeyword::Header},
    {"FileSystem", PpdKeyword::Header},
    {"FreeVM", PpdKeyword::Header},
    {"Throughput", PpdKeyword::Header},
    {"TTRasterizer", PpdKeyword::Header},
    {"LandscapeOrientation", PpdKeyword::Header},
    {"VariablePaperSize", PpdKeyword::Header},
    {"HWMargins", PpdKeyword::Header},
    {"PPD-Adobe", PpdKeyword::Header},
    {"FileVersion", PpdKeyword::Header},
    {"LanguageVersion", PpdKeyword::Header},
    {"Manufacturer", PpdKeyword::Header},
    {"ModelName", PpdKeyword::Header, &Ppd::Header::modelName},
    {"NickName", PpdKeyword::Header, &Ppd::Header::nickName},
    {"ShortNickName", PpdKeyword::Header, &Ppd::Header::shortNickName},
    {"PCFileName", PpdKeyword::Header},
    {"Product", PpdKeyword::Header, &Ppd::Header::product},
    {"PSVersion", PpdKeyword::Header},
};

const KeywordTable& MainTable()
{
    static const KeywordTable table = [] {
        KeywordTable made;
        for (std::size_t row = 0; row < std::size(kMains); ++row)
            made.Insert(kMains[row].keyword, row);
        return made;
    }();
    return table;
}

std::string Statements(std::string_view main, std::string_view feature)
{
    return Quoted(std::string(main) + " *" + std::string(feature));
}

// "de", "pt_BR", "zh_Hans": what stands before the full stop of a translated keyword.
bool IsLanguage(std::string_view tag)
{
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (tag.size() < 2 || tag.size() > 8 || !letter(tag[0]) || !letter(tag[1])) return false;
    return tag.size() == 2 || (tag.size() > 3 && (tag[2] == '_' || tag[2] == '-'));
}

} // namespace

class PpdReader
{
public:
    PpdReader(const std::string& name, const PpdReadOptions& options, const PpdIncluder& includer)
        : ppd_(draft_.ppd.get()), options_(options), includer_(includer)
    {
        ppd_->fileName_ = name;
        if (options.toCheck) draft_.maxWarnings = std::string::npos;
    }

    std::unique_ptr<Ppd> Read(std::string text)
    {
        ppd_->optionTable_.Reserve(text.size() / 128);
        ReadFile(ppd_->fileName_, std::move(text));
        const std::string_view whole = ppd_->files_.front().Text();
        const char* const end = whole.data() + (whole.find_last_not_of(" \t\r\n") + 1); // none: 0
        if (!begun_) Fail(end, "\"*PPD-Adobe: \"4.3\"\" expected; the file is empty");
        if (open_) TellOpen(end, "the end of the file");
        CloseGroupsAbove(0);
        SettlePpd(draft_, options_);
        ppd_->warnings_ = std::move(draft_.warnings);
        return std::move(draft_.ppd);
    }

private:
    struct Group
    {
        std::string_view keyword;
        bool installable;
        const char* at;
    };

    // ---- messages

    [[noreturn]] void Fail(const char* place, std::string text) const
    {
        throw PpdFailure{ppd_->At(place, std::move(text))};
    }

    // A fault that loses some of the meaning.
    void Fault(const char* place, std::string_view code, const std::string& text,
               std::string_view feature = {}, std::string_view option = {})
    {
        if (!options_.toCheck) Fail(place, text);
        draft_.Warn(place, code, text, feature, option);
    }

    // A feature is not closed; nobody else minds, and its end is clear.
    void TellOpen(const char* place, const std::string& before)
    {
        draft_.Warn(place, "feature-not-closed", CloseStatement() + " expected before " + before,
                    ppd_->features_[*open_].keyword);
    }

    // ---- files

    void ReadFile(const std::string& name, std::string text)
    {
        if (IsPacked(text)) {
            if (std::string problem = Unpack(text, kMaxPpdBytes); !problem.empty())
                throw PpdFailure{{name, 0, std::move(problem)}};
        }
        if (text.size() > kMaxPpdBytes)
            throw PpdFailure{{name, 0, "larger than 32 MB; no PPD is that large"}};
        while (!text.empty() &&
               (text.back() == '\0' || text.back() == '\x1A')) // what old systems end a file with
            text.pop_back();
        if (text.find('\0') != std::string::npos)
            throw PpdFailure{{name, 0, "holds zero bytes; a PPD is a text of 8-bit characters"}};

        std::string_view kept = ppd_->texts_.emplace_back(std::move(text));
        const bool marked = kept.starts_with(kByteOrderMark);
        if (marked) kept.remove_prefix(kByteOrderMark.size());
        const PpdFile& file = ppd_->files_.emplace_back(name, kept);
        if (marked)
            draft_.Warn(kept.data(), "byte-order-mark",
                        "a byte order mark stands before the first statement");
        active_.push_back(&file);
        PpdScanner scanner(kept);
        for (PpdStatement statement; scanner.Next(statement);) {
            Handle(statement);
            if (options_.toCheck) ppd_->statements_.push_back(statement);
        }
        active_.pop_back();
    }

    // ---- statements

    // Also tells the statement what it is.
    void Handle(PpdStatement& statement)
    {
        if (statement.keyword == PpdKeyword::Stray) {
            if (!begun_) Fail(statement.at, "\"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD");
            if (!std::exchange(strayed_, true)) // once for several lines
                draft_.Warn(statement.at, "stray-line",
                            "\"*\" expected at the start of " + Quoted(statement.value) +
                                "; the line is passed over");
            return;
        }
        strayed_ = false;
        if (statement.unclosed)
            Fault(statement.at, "closing-quote",
                  "the closing quote of the value that begins here is missing before the next statement",
                  statement.option.empty() ? std::string_view() : statement.main, statement.option);
        // Most lines are options of the feature that is open.
        if (open_ && statement.main == ppd_->features_[*open_].keyword) return AddOption(*open_, statement);
        if (!begun_) Begin(statement);
        if (const auto row = MainTable().Find(statement.main)) {
            statement.keyword = kMains[*row].meaning;
            HandleMain(kMains[*row], statement);
        } else if (statement.main.starts_with("Default")) {
            statement.keyword = PpdKeyword::Default;
            statement.main.remove_prefix(7);
            draft_.pending.push_back(statement);
        } else if (const auto feature =
                       statement.option.empty() ? std::nullopt : ppd_->FindFeature(statement.main)) {
            AddOption(*feature, statement);
        } else {
            AddTranslation(statement);
        }
    }

    void Begin(const PpdStatement& first)
    {
        begun_ = true;
        const PpdFile& file = ppd_->files_.back();
        if (first.main != "PPD-Adobe") {
            const std::string text = "\"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD, not " +
                                     Quoted(Starred(first.main));
            if (file.Text().find("\n*PPD-Adobe:") == std::string_view::npos) Fail(first.at, text);
            Fault(first.at, "first-line", text);
        } else if (first.at != file.Text().data()) {
            draft_.Warn(
                first.at, "first-line",
                "\"*PPD-Adobe: \"4.3\"\" is not the first line of the file, by which programs know a PPD");
        }
    }

    void HandleMain(const MainRow& row, const PpdStatement& statement)
    {
        switch (row.meaning) {
        case PpdKeyword::OpenUI:
        case PpdKeyword::JclOpenUI:
            return OpenUI(statement, row.meaning == PpdKeyword::JclOpenUI);
        case PpdKeyword::CloseUI:
        case PpdKeyword::JclCloseUI:
            return CloseUI(statement);
        case PpdKeyword::OpenGroup:
        case PpdKeyword::OpenSubGroup:
            return OpenGroup(statement);
        case PpdKeyword::CloseGroup:
        case PpdKeyword::CloseSubGroup:
            return CloseGroup(statement);
        case PpdKeyword::Include:
            return Include(statement);
        case PpdKeyword::SymbolValue:
            draft_.symbols.emplace(statement.option, statement.value); // the first one counts
            return;
        case PpdKeyword::Header:
            if (row.field && (ppd_->header_.*row.field).empty())
                ppd_->header_.*row.field = Trim(statement.value);
            return;
        case PpdKeyword::Other:
            return;
        default:
            draft_.pending.push_back(statement);
        }
    }

    std::string CloseStatement() const
    {
        const PpdFeature& open = ppd_->features_[*open_];
        return Statements(open.jcl ? "*JCLCloseUI:" : "*CloseUI:", open.keyword);
    }

    void OpenUI(const PpdStatement& statement, bool jcl)
    {
        const std::string_view keyword = WithoutAsterisk(statement.option);
        if (open_) TellOpen(statement.at, Statements(jcl ? "*JCLOpenUI" : "*OpenUI", keyword));
        if (keyword.empty()) Fail(statement.at, "the keyword of a feature expected after \"*OpenUI\"");
        const std::size_t number = ppd_->features_.size();
        const std::size_t known = ppd_->featureTable_.Insert(keyword, number);
        open_ = known;
        if (known != number) {
            draft_.Warn(statement.at, "feature-twice",
                        Statements("*OpenUI", keyword) + " a second time; its options are added to the first",
                        keyword);
            return;
        }
        PpdFeature feature;
        feature.keyword = keyword;
        feature.text = statement.hasText ? statement.text : keyword;
        feature.jcl = jcl;
        feature.type = TypeOf(statement, keyword);
        if (!groups_.empty()) {
            feature.group = groups_.back().keyword;
            feature.installable = groups_.back().installable;
        }
        ppd_->features_.push_back(std::move(feature));
    }

    PpdFeatureType TypeOf(const PpdStatement& statement, std::string_view feature)
    {
        if (statement.value == "PickMany") return PpdFeatureType::PickMany;
        if (statement.value == "Boolean") return PpdFeatureType::Boolean;
        if (statement.value != "PickOne")
            draft_.Warn(statement.at, "feature-type",
                        "\"PickOne\", \"PickMany\" or \"Boolean\" expected, not " + Quoted(statement.value) +
                            "; taken as \"PickOne\"",
                        feature);
        return PpdFeatureType::PickOne;
    }

    void CloseUI(const PpdStatement& statement)
    {
        const std::string_view value = WithoutAsterisk(statement.Named());
        if (!open_) {
            draft_.Warn(statement.at, "feature-not-open",
                        Statements("*CloseUI:", value) + " without its \"*OpenUI\"", value);
            return;
        }
        if (const std::string_view open = ppd_->features_[*open_].keyword; value != open)
            Fault(statement.at, "feature-closed-as",
                  CloseStatement() + " expected, not " + Statements("*CloseUI:", value), open);
        open_.reset();
    }

    void OpenGroup(const PpdStatement& statement)
    {
        const std::string_view name = statement.Named();
        if (groups_.size() == kMaxGroupDepth)
            Fail(statement.at,
                 "groups stand in one another more than " + std::to_string(kMaxGroupDepth) + " deep");
        const bool installable =
            name == "InstallableOptions" || (!groups_.empty() && groups_.back().installable);
        groups_.push_back({name, installable, statement.at});
    }

    void CloseGroup(const PpdStatement& statement)
    {
        const std::string_view name = statement.Named();
        if (open_) {
            TellOpen(statement.at, Quoted("*CloseGroup: " + std::string(name)));
            open_.reset();
        }
        const auto open = std::find_if(groups_.rbegin(), groups_.rend(),
                                       [name](const Group& group) { return group.keyword == name; });
        if (open != groups_.rend()) {
            CloseGroupsAbove(static_cast<std::size_t>(groups_.rend() - open));
            groups_.pop_back();
        } else if (groups_.empty()) {
            draft_.Warn(statement.at, "group-not-open",
                        Quoted("*CloseGroup: " + std::string(name)) + " without its \"*OpenGroup\"");
        } else {
            draft_.Warn(statement.at, "group-closed-as",
                        Quoted("*CloseGroup: " + std::string(groups_.back().keyword)) + " expected, not " +
                            Quoted("*CloseGroup: " + std::string(name)));
            groups_.pop_back();
        }
    }

    // Tells of the groups that stand open within others.
    void CloseGroupsAbove(std::size_t depth)
    {
        for (; groups_.size() > depth; groups_.pop_back())
            draft_.Warn(groups_.back().at, "group-not-closed",
                        "the group " + Quoted(groups_.back().keyword) + " is not closed");
    }

    void Include(const PpdStatement& statement)
    {
        std::string name(Trim(statement.value));
        if (name.starts_with('<') && name.ends_with('>')) name = name.substr(1, name.size() - 2);
        if (name.empty() || name.find_first_of("/\\:") != std::string::npos || name == "..")
            Fail(statement.at, "the name of a file in the PPD's folder expected, not " + Quoted(name));
        if (active_.size() >= kMaxIncludeDepth)
            Fail(statement.at,
                 "files include one another more than " + std::to_string(kMaxIncludeDepth) + " deep");
        if (ppd_->files_.size() >= kMaxFiles)
            Fail(statement.at, "more than " + std::to_string(kMaxFiles) + " files are included");
        const std::string path = BesideOf(ppd_->fileName_, name);
        for (const PpdFile* file : active_) {
            if (file->Name() == path) Fail(statement.at, Quoted(name) + " includes itself");
        }
        std::optional<std::string> text = includer_ ? includer_(name) : std::nullopt;
        if (!text) Fail(statement.at, "the included file " + Quoted(name) + " cannot be read");
        ReadFile(path, std::move(*text));
    }

    static std::string BesideOf(const std::string& file, const std::string& name)
    {
        const std::size_t folder = file.find_last_of("/\\");
        return folder == std::string::npos ? name : file.substr(0, folder + 1) + name;
    }

    void AddOption(std::size_t number, PpdStatement& statement)
    {
        PpdFeature& feature = ppd_->features_[number];
        if (statement.option.empty() || !statement.hasValue) {
            draft_.Warn(statement.at, "option-form",
                        "an option keyword and \":\" expected after " + Quoted(Starred(statement.main)) +
                            "; the line is passed over",
                        feature.keyword);
            return;
        }
        statement.keyword = PpdKeyword::Option;
        const std::size_t option = feature.options.size();
        if (ppd_->optionTable_.Insert(statement.option, option, number) != option) {
            draft_.Warn(statement.at, "option-twice",
                        Quoted(Starred(feature.keyword) + " " + std::string(statement.option)) +
                            " a second time; the first one counts",
                        feature.keyword, statement.option);
            return;
        }
        feature.options.push_back(
            {statement.option, statement.hasText ? statement.text : statement.option, statement.value});
    }

    // "*de.Translation MediaType/Papiersorte: """ and "*de.MediaType Glossy/Glanz: """.
    void AddTranslation(PpdStatement& statement)
    {
        const std::size_t stop = statement.main.find('.');
        if (stop == std::string_view::npos || !IsLanguage(statement.main.substr(0, stop))) return;
        statement.keyword = PpdKeyword::Translation;
        const std::string_view tag = statement.main.substr(0, stop);
        const bool exact = tag == options_.language;
        if (!statement.hasText || options_.language.empty() ||
            (!exact && tag != std::string_view(options_.language).substr(0, 2)))
            return;
        const std::string_view main = statement.main.substr(stop + 1);
        const bool ofOption = main != "Translation";
        draft_.translations.push_back({ofOption ? main : statement.option,
                                       ofOption ? statement.option : std::string_view(), statement.text,
                                       exact});
    }

    PpdDraft draft_;
    Ppd* const ppd_;
    const PpdReadOptions& options_;
    const PpdIncluder& includer_;
    std::vector<const PpdFile*> active_; // that are being read, each included by the one before it
    bool begun_ = false;
    bool strayed_ = false;            // the statement before was a stray line
    std::optional<std::size_t> open_; // the number of the feature that is open
    std::vector<Group> groups_;
};

const std::vector<std::string_view>& PpdKeywords()
{
    static const std::vector<std::string_view> keywords = [] {
        std::vector<std::string_view> made;
        std::ranges::transform(kMains, std::back_inserter(made), &MainRow::keyword);
        return made;
    }();
    return keywords;
}

PpdResult ReadPpdText(std::string text, const std::string& name, const PpdReadOptions& options,
                      const PpdIncluder& includer)
{
    PpdResult result;
    try {
        result.ppd = PpdReader(name, options, includer).Read(std::move(text));
    } catch (PpdFailure& failure) {
        result.error = std::move(failure.message);
    }
    return result;
}

namespace {

// The file's bytes; nothing, and why, when it cannot be read.
std::optional<std::string> FileText(const std::filesystem::path& path, std::string& problem)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    std::string text;
    if (std::filesystem::is_regular_file(
            status)) // a block for all of it, and for the end that reading looks for
        text.reserve(std::min<std::uintmax_t>(std::filesystem::file_size(path, error), kMaxPpdBytes) +
                     0x10001);
    if (!std::filesystem::exists(status))
        problem = error && status.type() == std::filesystem::file_type::none ? error.message()
                                                                             : "there is no such file";
    else if (std::filesystem::is_directory(status))
        problem = "it is a folder";
    else if (!ReadWhole(path, text, kMaxPpdBytes + 1))
        problem = "reading is not permitted, or the disk fails";
    else if (text.empty())
        problem = "it is empty";
    else
        return text;
    return std::nullopt;
}

} // namespace

PpdResult ReadPpd(const std::filesystem::path& path, const PpdReadOptions& options)
{
    const std::string name = Utf8FromPath(path);
    std::string problem;
    std::optional<std::string> text = FileText(path, problem);
    if (!text) return {nullptr, {name, 0, "the file cannot be read: " + problem}};
    return ReadPpdText(std::move(*text), name, options,
                       [folder = path.parent_path()](const std::string& file) {
                           std::string ignored;
                           return FileText(folder / file, ignored);
                       });
}

} // namespace tintwerk
