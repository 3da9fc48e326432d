#include "host/ppd/ppd_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

#include "host/ppd/encoding.h"
#include "host/ppd/ppd_scanner.h"
#include "host/ppd/ppd_text.h"
#include "platform/whole_file.h"

namespace tintwerk {
namespace {

constexpr std::size_t kMaxFileBytes = 32u << 20;
constexpr std::size_t kMaxIncludeDepth = 8;
constexpr std::size_t kMaxFiles = 100;
constexpr std::size_t kMaxGroupDepth = 32;
constexpr std::size_t kMaxLanguages = 200;
constexpr std::size_t kMaxWarnings = 500;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The main keywords that mean something here; every other one is an option of a feature or is passed over.
enum class Main : std::uint32_t
{
    OpenUI,
    CloseUI,
    JclOpenUI,
    JclCloseUI,
    OpenGroup,
    CloseGroup,
    OpenSubGroup,
    CloseSubGroup,
    OrderDependency,
    UIConstraints,
    NonUIConstraints,
    Include,
    SymbolValue,
    PaperDimension,
    ImageableArea,
    CustomPageSize,
    ParamCustomPageSize,
    MaxMediaWidth,
    MaxMediaHeight,
    LanguageEncoding,
    LanguageLevel,
    ColorDevice,
    Header,
    Ignored,
};

struct MainRow
{
    std::string_view keyword;
    Main main;
    std::string_view Ppd::Header::*field = nullptr;
};

constexpr MainRow kMains[] = {
    {"OpenUI", Main::OpenUI},
    {"CloseUI", Main::CloseUI},
    {"JCLOpenUI", Main::JclOpenUI},
    {"JCLCloseUI", Main::JclCloseUI},
    {"OpenGroup", Main::OpenGroup},
    {"CloseGroup", Main::CloseGroup},
    {"OpenSubGroup", Main::OpenSubGroup},
    {"CloseSubGroup", Main::CloseSubGroup},
    {"OrderDependency", Main::OrderDependency},
    {"NonUIOrderDependency", Main::OrderDependency},
    {"UIConstraints", Main::UIConstraints},
    {"NonUIConstraints", Main::NonUIConstraints},
    {"Include", Main::Include},
    {"SymbolValue", Main::SymbolValue},
    {"PaperDimension", Main::PaperDimension},
    {"ImageableArea", Main::ImageableArea},
    {"CustomPageSize", Main::CustomPageSize},
    {"ParamCustomPageSize", Main::ParamCustomPageSize},
    {"MaxMediaWidth", Main::MaxMediaWidth},
    {"MaxMediaHeight", Main::MaxMediaHeight},
    {"LanguageEncoding", Main::LanguageEncoding},
    {"LanguageLevel", Main::LanguageLevel},
    {"ColorDevice", Main::ColorDevice},
    {"End", Main::Ignored},
    {"SymbolEnd", Main::Ignored},
    {"PPD-Adobe", Main::Header, &Ppd::Header::formatVersion},
    {"FileVersion", Main::Header, &Ppd::Header::fileVersion},
    {"LanguageVersion", Main::Header, &Ppd::Header::languageVersion},
    {"Manufacturer", Main::Header, &Ppd::Header::manufacturer},
    {"ModelName", Main::Header, &Ppd::Header::modelName},
    {"NickName", Main::Header, &Ppd::Header::nickName},
    {"ShortNickName", Main::Header, &Ppd::Header::shortNickName},
    {"PCFileName", Main::Header, &Ppd::Header::pcFileName},
    {"Product", Main::Header, &Ppd::Header::product},
    {"PSVersion", Main::Header, &Ppd::Header::psVersion},
};

const KeywordTable& MainTable()
{
    static const KeywordTable table = [] {
        KeywordTable made;
        for (std::uint32_t row = 0; row < std::size(kMains); ++row)
            made.Insert(kMains[row].keyword, row);
        return made;
    }();
    return table;
}

std::string_view WithoutAsterisk(std::string_view keyword)
{
    return keyword.starts_with('*') ? keyword.substr(1) : keyword;
}

double Number(std::string_view word)
{
    double number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

// PPDs measure in points of 1/72 inch, forms in thousandths of a millimetre.
int Micrometres(double points)
{
    const double length = points * 25400 / 72;
    return length > 0 && length < 1e9 ? static_cast<int>(std::lround(length)) : 0;
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
        : ppd_(std::make_unique<Ppd>()), language_(options.language), strict_(options.strict),
          pretended_(options.pretended), includer_(includer)
    {
        ppd_->fileName_ = name;
    }

    std::unique_ptr<Ppd> Read(std::string text)
    {
        ppd_->optionTable_.Reserve(text.size() / 128);
        ReadFile(ppd_->fileName_, std::move(text));
        if (!begun_) Fail(files_.front().EndOfText(), "\"*PPD-Adobe: \"4.3\"\" expected; the file is empty");
        if (open_)
            Slip(files_.front().EndOfText(), CloseStatement() + " expected before the end of the file");
        Finish();
        return std::move(ppd_);
    }

private:
    struct OpenFeature
    {
        std::size_t feature;
        bool jcl;
    };
    struct Group
    {
        std::string_view keyword;
        bool installable;
    };
    struct Pending // a statement that is settled when the whole file is known
    {
        const char* at;
        std::string_view main, option, value;
        Main kind;
    };
    struct Translation
    {
        std::string_view feature, option, text;
        bool regional;
    };

    // ---- messages

    PpdMessage At(const char* position, std::string text)
    {
        for (PpdScanner& file : files_) {
            if (file.Holds(position)) return file.At(position, std::move(text));
        }
        return {ppd_->fileName_, 0, std::move(text)};
    }

    [[noreturn]] void Fail(const char* position, std::string text)
    {
        throw PpdFailure{At(position, std::move(text))};
    }

    void Warn(const char* position, std::string text)
    {
        if (ppd_->warnings_.size() < kMaxWarnings) ppd_->warnings_.push_back(At(position, std::move(text)));
    }

    // A fault whose meaning is clear: real files have it, a file under development should not.
    void Slip(const char* position, std::string text)
    {
        if (strict_) Fail(position, std::move(text));
        Warn(position, std::move(text));
    }

    // ---- files

    void ReadFile(const std::string& name, std::string text)
    {
        if (text.size() > kMaxFileBytes)
            throw PpdFailure{{name, 0, "larger than 32 MB; no PPD is that large"}};
        if (text.starts_with("\x1F\x8B"))
            throw PpdFailure{{name, 0, "compressed; unpack it with gunzip first"}};
        while (!text.empty() &&
               (text.back() == '\0' || text.back() == '\x1A')) // what old systems end a file with
            text.pop_back();
        if (text.find('\0') != std::string::npos)
            throw PpdFailure{{name, 0, "holds zero bytes; a PPD is a text of 8-bit characters"}};

        std::string_view kept = ppd_->texts_.emplace_back(std::move(text));
        const bool marked = kept.starts_with(kByteOrderMark);
        if (marked) kept.remove_prefix(kByteOrderMark.size());
        PpdScanner& file = files_.emplace_back(name, kept);
        if (marked) Warn(kept.data(), "a byte order mark stands before the first statement");
        active_.push_back(&file);
        for (PpdStatement statement; file.Next(statement);)
            Handle(statement);
        active_.pop_back();
    }

    // ---- statements

    void Handle(const PpdStatement& statement)
    {
        if (statement.stray) {
            if (!begun_) Fail(statement.at, "\"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD");
            Warn(statement.at,
                 "\"*\" expected at the start of " + Quoted(statement.value) + "; the line is passed over");
            return;
        }
        // Most lines are options of the feature that is open.
        if (open_ && statement.main == ppd_->features_[open_->feature].keyword) {
            AddOption(open_->feature, statement);
            return;
        }
        if (!begun_) {
            if (statement.main != "PPD-Adobe")
                Fail(statement.at, "\"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD, not " +
                                       Quoted("*" + std::string(statement.main)));
            begun_ = true;
        }
        const std::uint32_t row = MainTable().Find(statement.main);
        if (row != KeywordTable::kNone)
            HandleMain(kMains[row], statement);
        else if (statement.main.starts_with("Default"))
            pending_.push_back(
                {statement.at, statement.main.substr(7), {}, DefaultOf(statement), Main::Ignored});
        else if (const auto feature =
                     statement.option.empty() ? std::nullopt : ppd_->FindFeature(statement.main))
            AddOption(*feature, statement);
        else
            AddTranslation(statement);
    }

    static std::string_view DefaultOf(const PpdStatement& statement)
    {
        return Trim(statement.value.substr(0, statement.value.find('/')));
    }

    void HandleMain(const MainRow& row, const PpdStatement& statement)
    {
        switch (row.main) {
        case Main::OpenUI:
        case Main::JclOpenUI:
            return OpenUI(statement, row.main == Main::JclOpenUI);
        case Main::CloseUI:
        case Main::JclCloseUI:
            return CloseUI(statement);
        case Main::OpenGroup:
        case Main::OpenSubGroup:
            return OpenGroup(statement);
        case Main::CloseGroup:
        case Main::CloseSubGroup:
            return CloseGroup(statement);
        case Main::Include:
            return Include(statement);
        case Main::SymbolValue:
            symbolTable_.Insert(statement.option, static_cast<std::uint32_t>(symbols_.size()));
            symbols_.push_back(statement.value);
            return;
        case Main::LanguageEncoding:
            ppd_->header_.languageEncoding = statement.value;
            encoding_ = PpdEncodingFromName(statement.value);
            return;
        case Main::LanguageLevel:
            ppd_->header_.languageLevel =
                static_cast<int>(std::clamp(Number(Trim(statement.value)), 0.0, 9.0));
            return;
        case Main::ColorDevice:
            ppd_->header_.colorDevice = statement.value == "True";
            return;
        case Main::Header:
            if (std::string_view& field = ppd_->header_.*row.field; field.empty())
                field = Trim(statement.value);
            return;
        case Main::Ignored:
            return;
        default:
            pending_.push_back({statement.at, statement.main, statement.option, statement.value, row.main});
        }
    }

    std::string CloseStatement() const
    {
        return Statements(open_->jcl ? "*JCLCloseUI:" : "*CloseUI:", ppd_->features_[open_->feature].keyword);
    }

    void OpenUI(const PpdStatement& statement, bool jcl)
    {
        const std::string_view keyword = WithoutAsterisk(statement.option);
        if (open_)
            Slip(statement.at, CloseStatement() + " expected before " +
                                   Statements(jcl ? "*JCLOpenUI" : "*OpenUI", keyword));
        if (keyword.empty()) Fail(statement.at, "the keyword of a feature expected after \"*OpenUI\"");
        const auto number = static_cast<std::uint32_t>(ppd_->features_.size());
        const std::uint32_t known = ppd_->featureTable_.Insert(keyword, number);
        open_ = OpenFeature{known, jcl};
        if (known != number) {
            Warn(statement.at,
                 Statements("*OpenUI", keyword) + " a second time; its options are added to the first");
            return;
        }
        PpdFeature feature;
        feature.keyword = keyword;
        feature.text = statement.hasText ? statement.text : keyword;
        feature.jcl = jcl;
        feature.type = TypeOf(statement);
        if (!groups_.empty()) {
            feature.group = groups_.back().keyword;
            feature.installable = groups_.back().installable;
        }
        ppd_->features_.push_back(std::move(feature));
    }

    PpdFeatureType TypeOf(const PpdStatement& statement)
    {
        if (statement.value == "PickMany") return PpdFeatureType::PickMany;
        if (statement.value == "Boolean") return PpdFeatureType::Boolean;
        if (statement.value != "PickOne")
            Warn(statement.at, "\"PickOne\", \"PickMany\" or \"Boolean\" expected, not " +
                                   Quoted(statement.value) + "; taken as \"PickOne\"");
        return PpdFeatureType::PickOne;
    }

    void CloseUI(const PpdStatement& statement)
    {
        std::string_view value = statement.hasValue ? statement.value : statement.option;
        value = WithoutAsterisk(Trim(value.substr(0, value.find('/'))));
        if (!open_) {
            Warn(statement.at, Statements("*CloseUI:", value) + " without its \"*OpenUI\"");
            return;
        }
        if (value != ppd_->features_[open_->feature].keyword)
            Fail(statement.at, CloseStatement() + " expected, not " + Statements("*CloseUI:", value));
        open_.reset();
    }

    static std::string_view GroupName(const PpdStatement& statement)
    {
        // "*OpenGroup: Name/Text", or sloppily "*OpenGroup Name/Text".
        const std::string_view name = statement.hasValue ? statement.value : statement.option;
        return Trim(name.substr(0, name.find('/')));
    }

    void OpenGroup(const PpdStatement& statement)
    {
        const std::string_view name = GroupName(statement);
        if (groups_.size() == kMaxGroupDepth)
            Fail(statement.at,
                 "groups stand in one another more than " + std::to_string(kMaxGroupDepth) + " deep");
        const bool installable =
            name == "InstallableOptions" || (!groups_.empty() && groups_.back().installable);
        groups_.push_back({name, installable});
    }

    void CloseGroup(const PpdStatement& statement)
    {
        const std::string_view name = GroupName(statement);
        if (open_) {
            Slip(statement.at,
                 CloseStatement() + " expected before " + Quoted("*CloseGroup: " + std::string(name)));
            open_.reset();
        }
        const auto open = std::find_if(groups_.rbegin(), groups_.rend(),
                                       [name](const Group& group) { return group.keyword == name; });
        if (open == groups_.rend()) {
            Warn(statement.at, Quoted("*CloseGroup: " + std::string(name)) + " without its \"*OpenGroup\"");
            return;
        }
        groups_.erase(open.base() - 1, groups_.end());
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
        if (files_.size() >= kMaxFiles)
            Fail(statement.at, "more than " + std::to_string(kMaxFiles) + " files are included");
        const std::string path = BesideOf(ppd_->fileName_, name);
        for (const PpdScanner* file : active_) {
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

    void AddOption(std::size_t number, const PpdStatement& statement)
    {
        if (statement.option.empty() || !statement.hasValue) {
            Warn(statement.at, "an option keyword and \":\" expected after " +
                                   Quoted("*" + std::string(statement.main)) + "; the line is passed over");
            return;
        }
        PpdFeature& feature = ppd_->features_[number];
        const auto option = static_cast<std::uint32_t>(feature.options.size());
        if (ppd_->optionTable_.Insert(statement.option, option, static_cast<std::uint32_t>(number)) !=
            option) {
            Warn(statement.at,
                 Quoted("*" + std::string(feature.keyword) + " " + std::string(statement.option)) +
                     " a second time; the first one counts");
            return;
        }
        feature.options.push_back(
            {statement.option, statement.hasText ? statement.text : statement.option, statement.value});
    }

    // "*de.Translation MediaType/Papiersorte: """ and "*de.MediaType Glossy/Glanz: """.
    void AddTranslation(const PpdStatement& statement)
    {
        const std::size_t stop = statement.main.find('.');
        if (stop == std::string_view::npos || !IsLanguage(statement.main.substr(0, stop))) return;
        const std::string_view tag = statement.main.substr(0, stop);
        if (tag != lastLanguage_) {
            lastLanguage_ = tag;
            if (ppd_->languages_.size() < kMaxLanguages &&
                std::find(ppd_->languages_.begin(), ppd_->languages_.end(), tag) == ppd_->languages_.end())
                ppd_->languages_.emplace_back(tag);
        }
        const bool exact = tag == language_;
        if (!statement.hasText || language_.empty() ||
            (!exact && tag != std::string_view(language_).substr(0, 2)))
            return;
        const std::string_view main = statement.main.substr(stop + 1);
        if (main == "Translation")
            translations_.push_back({statement.option, {}, statement.text, exact});
        else
            translations_.push_back({main, statement.option, statement.text, exact});
    }

    // ---- the end of the file

    void Finish()
    {
        DropEmptyFeatures();
        Pretend();
        for (PpdFeature& feature : ppd_->features_) {
            feature.text = Decoded(feature.text, feature.keyword, encoding_);
            for (PpdOption& option : feature.options) {
                option.text = Decoded(option.text, option.keyword, encoding_);
                ResolveSymbol(option);
                if (feature.jcl && option.value.find('<') != std::string_view::npos)
                    option.value = ppd_->texts_.emplace_back(ResolvePpdHex(option.value));
            }
        }
        Ppd::Header& header = ppd_->header_;
        for (std::string_view* text :
             {&header.manufacturer, &header.modelName, &header.nickName, &header.shortNickName})
            *text = Decoded(*text, *text, encoding_);
        if (header.product.starts_with('(') && header.product.ends_with(')'))
            header.product = header.product.substr(1, header.product.size() - 2);

        for (const bool regional : {false, true})
            Translate(regional);
        AddCustomPageSize();
        for (const Pending& pending : pending_)
            Settle(pending);
        SelectPretended();
    }

    std::string_view Decoded(std::string_view raw, std::string_view keyword, PpdEncoding encoding)
    {
        if (!IsPlainPpdText(raw)) {
            std::optional<std::string> text = DecodePpdText(raw, encoding);
            if (!text) return keyword;
            raw = ppd_->texts_.emplace_back(std::move(*text));
        }
        return raw.empty() ? keyword : raw;
    }

    void ResolveSymbol(PpdOption& option)
    {
        if (!option.value.starts_with('^')) return;
        const std::uint32_t symbol = symbolTable_.Find(option.value);
        if (symbol != KeywordTable::kNone) option.value = symbols_[symbol];
    }

    void DropEmptyFeatures()
    {
        std::vector<PpdFeature>& features = ppd_->features_;
        const auto empty = [](const PpdFeature& feature) { return feature.options.empty(); };
        if (std::none_of(features.begin(), features.end(), empty)) return;
        for (const PpdFeature& feature : features) {
            if (empty(feature))
                Warn(feature.keyword.data(),
                     Quoted("*" + std::string(feature.keyword)) + " has no options; it is left out");
        }
        std::erase_if(features, empty);
        RebuildTables();
    }

    void RebuildTables()
    {
        const std::vector<PpdFeature>& features = ppd_->features_;
        ppd_->featureTable_ = {};
        ppd_->optionTable_ = {};
        for (std::uint32_t number = 0; number < features.size(); ++number) {
            ppd_->featureTable_.Insert(features[number].keyword, number);
            for (std::uint32_t option = 0; option < features[number].options.size(); ++option)
                ppd_->optionTable_.Insert(features[number].options[option].keyword, option, number);
        }
    }

    void Pretend()
    {
        for (const auto& [keyword, option] : pretended_) {
            if (!ppd_->FindFeature(keyword)) {
                PpdFeature added;
                added.keyword = added.text = ppd_->texts_.emplace_back(keyword);
                ppd_->features_.push_back(std::move(added));
                RebuildTables();
            }
            std::vector<PpdOption>& options = ppd_->features_[*ppd_->FindFeature(keyword)].options;
            auto at = std::ranges::find(options, option, &PpdOption::keyword);
            if (at == options.end()) {
                const std::string_view text = ppd_->texts_.emplace_back(option);
                at = options.insert(options.end(), PpdOption{text, text, {}});
            }
            std::rotate(options.begin(), at, at + 1);
            RebuildTables();
        }
    }

    void SelectPretended()
    {
        for (const auto& [keyword, option] : pretended_)
            ppd_->features_[*ppd_->FindFeature(keyword)].defaultOption = 0;
    }

    void Translate(bool regional)
    {
        for (const Translation& translation : translations_) {
            const auto number = ppd_->FindFeature(translation.feature);
            if (translation.regional != regional || !number) continue;
            PpdFeature& feature = ppd_->features_[*number];
            if (translation.option.empty())
                feature.text = Decoded(translation.text, feature.text, PpdEncoding::Utf8);
            else if (const auto option = ppd_->FindOption(*number, translation.option))
                feature.options[*option].text =
                    Decoded(translation.text, feature.options[*option].text, PpdEncoding::Utf8);
        }
    }

    void AddCustomPageSize()
    {
        const auto custom = std::find_if(pending_.begin(), pending_.end(), [](const Pending& pending) {
            return pending.kind == Main::CustomPageSize && pending.option == "True";
        });
        const auto pageSize = ppd_->FindFeature("PageSize");
        if (custom == pending_.end() || !pageSize) return;
        ppd_->customSize_.emplace();
        PpdFeature& feature = ppd_->features_[*pageSize];
        const auto option = static_cast<std::uint32_t>(feature.options.size());
        if (ppd_->optionTable_.Insert(kCustomPageSize, option, static_cast<std::uint32_t>(*pageSize)) ==
            option)
            feature.options.push_back({kCustomPageSize, CustomText(), custom->value});
    }

    std::string_view CustomText() const
    {
        return language_.starts_with("de") ? "Eigene Gr\xC3\xB6\xC3\x9F"
                                             "e"
                                           : "Custom Size";
    }

    void Settle(const Pending& pending)
    {
        switch (pending.kind) {
        case Main::Ignored:
            return SetDefault(pending);
        case Main::OrderDependency:
            return SetOrder(pending);
        case Main::UIConstraints:
        case Main::NonUIConstraints:
            return AddConstraint(pending);
        case Main::PaperDimension:
        case Main::ImageableArea:
            return SetDimension(pending);
        case Main::ParamCustomPageSize:
        case Main::MaxMediaWidth:
        case Main::MaxMediaHeight:
            return SetCustomLimit(pending);
        default:
            return;
        }
    }

    void SetDefault(const Pending& pending)
    {
        const auto number = ppd_->FindFeature(pending.main);
        if (!number) return;
        PpdFeature& feature = ppd_->features_[*number];
        if (const auto option = ppd_->FindOption(*number, pending.value))
            feature.defaultOption = *option;
        else if (pending.value != "Unknown")
            Warn(pending.at, "the default " + Quoted(pending.value) + " is no option of " +
                                 Quoted("*" + std::string(feature.keyword)) + "; the first option " +
                                 Quoted(feature.options.front().keyword) + " is taken");
    }

    void SetOrder(const Pending& pending)
    {
        std::string_view rest = pending.value;
        const double order = Number(NextWord(rest));
        const std::string_view section = NextWord(rest);
        if (const auto number = ppd_->FindFeature(WithoutAsterisk(NextWord(rest)))) {
            ppd_->features_[*number].order = order;
            ppd_->features_[*number].section = section;
        }
    }

    // "*Duplex *MediaType Film", "*Duplex DuplexTumble *MediaType Film", "*Duplex DuplexTumble *MediaType",
    // "*A *B".
    void AddConstraint(const Pending& pending)
    {
        PpdConstraint constraint{0, kNoOption, 0, kNoOption};
        std::string_view rest = pending.value;
        std::string_view word = NextWord(rest);
        for (int side = 0; side < 2; ++side) {
            if (!word.starts_with('*')) {
                Warn(pending.at, "two features with their options expected after \"*" +
                                     std::string(pending.main) + ":\"; the constraint is passed over");
                return;
            }
            std::size_t& feature = side ? constraint.feature2 : constraint.feature1;
            std::size_t& option = side ? constraint.option2 : constraint.option1;
            std::string_view keyword = word.substr(1);
            if (keyword == kCustomPageSize) keyword = "PageSize";
            const auto number = ppd_->FindFeature(keyword);
            if (!number) return UnknownInConstraint(pending, word);
            feature = *number;
            const bool custom = word == "*CustomPageSize";
            word = NextWord(rest);
            if (custom && word == "True")
                option = ppd_->FindOption(feature, kCustomPageSize).value_or(kNoOption);
            else if (!word.empty() && !word.starts_with('*')) {
                const auto found = ppd_->FindOption(feature, word);
                if (!found) return UnknownInConstraint(pending, word);
                option = *found;
            }
            if (!word.empty() && !word.starts_with('*')) word = NextWord(rest);
        }
        if (constraint.feature1 != constraint.feature2) ppd_->constraints_.push_back(constraint);
    }

    void UnknownInConstraint(const Pending& pending, std::string_view word)
    {
        if (pending.kind == Main::UIConstraints &&
            unknownTable_.Insert(word, unknownCount_) == unknownCount_) {
            ++unknownCount_;
            Warn(pending.at,
                 Quoted(word) + " is not defined in the file; constraints that name it are passed over");
        }
    }

    void SetDimension(const Pending& pending)
    {
        const auto pageSize = ppd_->FindFeature("PageSize");
        const auto option = pageSize ? ppd_->FindOption(*pageSize, pending.option) : std::nullopt;
        if (!option) return;
        const auto slot = static_cast<std::uint32_t>(ppd_->forms_.size());
        const std::uint32_t at = formTable_.Insert(pending.option, slot);
        if (at == slot)
            ppd_->forms_.push_back({pending.option, ppd_->features_[*pageSize].options[*option].text});
        PpdForm& form = ppd_->forms_[at];
        std::array<int, 4> lengths{};
        std::string_view rest = pending.value;
        for (int& length : lengths)
            length = Micrometres(Number(NextWord(rest)));
        if (pending.kind == Main::PaperDimension) {
            form.width = lengths[0];
            form.height = lengths[1];
        } else {
            form.left = lengths[0];
            form.bottom = lengths[1];
            form.right = lengths[2];
            form.top = lengths[3];
        }
    }

    // "*ParamCustomPageSize Width: 1 points 36 1000"; "*MaxMediaWidth: "1000"".
    void SetCustomLimit(const Pending& pending)
    {
        if (!ppd_->customSize_) return;
        PpdCustomSize& size = *ppd_->customSize_;
        std::string_view rest = pending.value;
        if (pending.kind != Main::ParamCustomPageSize) {
            int& limit = pending.kind == Main::MaxMediaWidth ? size.maxWidth : size.maxHeight;
            if (limit == 0) limit = Micrometres(Number(NextWord(rest)));
            return;
        }
        NextWord(rest); // the position on the stack
        NextWord(rest); // "points"
        const int least = Micrometres(Number(NextWord(rest)));
        const int most = Micrometres(Number(NextWord(rest)));
        if (pending.option == "Width") {
            size.minWidth = least;
            size.maxWidth = most;
        } else if (pending.option == "Height") {
            size.minHeight = least;
            size.maxHeight = most;
        }
    }

    std::unique_ptr<Ppd> ppd_;
    std::string language_;
    bool strict_;
    std::vector<std::pair<std::string, std::string>> pretended_;
    const PpdIncluder& includer_;
    std::deque<PpdScanner> files_;
    std::vector<const PpdScanner*>
        active_; // the files that are being read, each included by the one before it
    bool begun_ = false;
    PpdEncoding encoding_ = PpdEncoding::Unknown;
    std::optional<OpenFeature> open_;
    std::vector<Group> groups_;
    std::vector<Pending> pending_;
    std::vector<Translation> translations_;
    std::string_view lastLanguage_;
    KeywordTable symbolTable_;
    std::vector<std::string_view> symbols_;
    KeywordTable formTable_;
    KeywordTable unknownTable_; // words of constraints that were told about
    std::uint32_t unknownCount_ = 0;
};

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

std::optional<std::string> FileText(const std::filesystem::path& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
    std::string text;
    if (!ReadWhole(path, text, kMaxFileBytes + 1)) return std::nullopt;
    return text;
}

} // namespace

PpdResult ReadPpd(const std::filesystem::path& path, const PpdReadOptions& options)
{
    const std::u8string name8 = path.u8string();
    const std::string name(name8.begin(), name8.end());
    std::optional<std::string> text = FileText(path);
    if (!text) return {nullptr, {name, 0, "the file cannot be read"}};
    return ReadPpdText(
        std::move(*text), name, options,
        [folder = path.parent_path()](const std::string& file) { return FileText(folder / file); });
}

} // namespace tintwerk
