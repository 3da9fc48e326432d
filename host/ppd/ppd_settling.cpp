// Settles what only the whole file can tell.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "host/ppd/ppd_draft.h"
#include "host/ppd/ppd_text.h"

namespace tintwerk {
namespace {

// PPDs measure in points of 1/72 inch, forms in thousandths of a millimetre.
int Micrometres(double points)
{
    const double length = points * 25400 / 72;
    return length > 0 && length < 1e9 ? static_cast<int>(std::lround(length)) : 0;
}

int NextLength(std::string_view& words)
{
    return Micrometres(PpdNumber(NextWord(words)));
}

} // namespace

double PpdNumber(std::string_view word)
{
    double number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

class PpdSettling
{
public:
    PpdSettling(PpdDraft& draft, const PpdReadOptions& options)
        : draft_(draft), ppd_(draft.ppd.get()), options_(options)
    {
    }

    void Finish()
    {
        DropEmptyFeatures();
        Pretend();
        for (PpdFeature& feature : ppd_->features_) {
            feature.text = Decoded(feature.text, feature.keyword, draft_.encoding);
            for (PpdOption& option : feature.options) {
                option.text = Decoded(option.text, option.keyword, draft_.encoding);
                ResolveSymbol(option);
                if (feature.jcl && option.value.find('<') != std::string_view::npos)
                    option.value = ppd_->texts_.emplace_back(ResolvePpdHex(option.value));
            }
        }
        Ppd::Header& header = ppd_->header_;
        for (std::string_view* text :
             {&header.manufacturer, &header.modelName, &header.nickName, &header.shortNickName})
            *text = Decoded(*text, *text, draft_.encoding);
        if (header.product.starts_with('(') && header.product.ends_with(')'))
            header.product = header.product.substr(1, header.product.size() - 2);

        for (const bool regional : {false, true})
            Translate(regional);
        AddCustomPageSize();
        for (const PpdStatement& pending : draft_.pending)
            Settle(pending);
        SelectPretended();
    }

private:
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
        const std::uint32_t symbol = draft_.symbolTable.Find(option.value);
        if (symbol != KeywordTable::kNone) option.value = draft_.symbols[symbol];
    }

    void DropEmptyFeatures()
    {
        std::vector<PpdFeature>& features = ppd_->features_;
        const auto empty = [](const PpdFeature& feature) { return feature.options.empty(); };
        if (std::none_of(features.begin(), features.end(), empty)) return;
        for (const PpdFeature& feature : features) {
            if (empty(feature))
                draft_.Warn(feature.keyword.data(), "no-options",
                            Quoted(Starred(feature.keyword)) + " has no options; it is left out",
                            feature.keyword);
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
        for (const auto& [keyword, option] : options_.pretended) {
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
        for (const auto& [keyword, option] : options_.pretended)
            ppd_->features_[*ppd_->FindFeature(keyword)].defaultOption = 0;
    }

    void Translate(bool regional)
    {
        for (const PpdDraft::Translation& translation : draft_.translations) {
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
        const auto custom =
            std::find_if(draft_.pending.begin(), draft_.pending.end(), [](const PpdStatement& pending) {
                return pending.keyword == PpdKeyword::CustomPageSize && pending.option == "True";
            });
        const auto pageSize = ppd_->FindFeature("PageSize");
        if (custom == draft_.pending.end() || !pageSize) return;
        ppd_->customSize_.emplace();
        PpdFeature& feature = ppd_->features_[*pageSize];
        const auto option = static_cast<std::uint32_t>(feature.options.size());
        if (ppd_->optionTable_.Insert(kCustomPageSize, option, static_cast<std::uint32_t>(*pageSize)) ==
            option)
            feature.options.push_back({kCustomPageSize, CustomText(), custom->value});
    }

    std::string_view CustomText() const
    {
        return options_.language.starts_with("de") ? "Eigene Gr\xC3\xB6\xC3\x9F"
                                                     "e"
                                                   : "Custom Size";
    }

    void Settle(const PpdStatement& pending)
    {
        switch (pending.keyword) {
        case PpdKeyword::Default:
            return SetDefault(pending);
        case PpdKeyword::OrderDependency:
            return SetOrder(pending);
        case PpdKeyword::UIConstraints:
        case PpdKeyword::NonUIConstraints:
            return AddConstraint(pending);
        case PpdKeyword::PaperDimension:
        case PpdKeyword::ImageableArea:
            return SetDimension(pending);
        case PpdKeyword::ParamCustomPageSize:
        case PpdKeyword::MaxMediaWidth:
        case PpdKeyword::MaxMediaHeight:
            return SetCustomLimit(pending);
        default:
            return;
        }
    }

    // The first one counts, here and below: so a file can override what it includes.
    void SetDefault(const PpdStatement& pending)
    {
        const auto number = ppd_->FindFeature(pending.main);
        if (!number) return;
        PpdFeature& feature = ppd_->features_[*number];
        if (std::exchange(feature.hasDefault, true) || !pending.hasValue) return;
        const std::string_view value = Trim(pending.value.substr(0, pending.value.find('/')));
        if (const auto option = ppd_->FindOption(*number, value))
            feature.defaultOption = *option;
        else if (value != "Unknown")
            draft_.Warn(pending.at, "default-unknown",
                        "the default " + Quoted(value) + " is no option of " +
                            Quoted(Starred(feature.keyword)) + "; the first option " +
                            Quoted(feature.options.front().keyword) + " is taken",
                        feature.keyword);
    }

    void SetOrder(const PpdStatement& pending)
    {
        std::string_view rest = pending.value;
        const double order = PpdNumber(NextWord(rest));
        const std::string_view section = NextWord(rest);
        const auto number = ppd_->FindFeature(WithoutAsterisk(NextWord(rest)));
        if (!number || !ppd_->features_[*number].section.empty()) return;
        ppd_->features_[*number].order = order;
        ppd_->features_[*number].section = section;
    }

    // "*Duplex *MediaType Film", "*Duplex DuplexTumble *MediaType Film", "*Duplex DuplexTumble *MediaType",
    // "*A *B".
    void AddConstraint(const PpdStatement& pending)
    {
        PpdConstraint constraint{0, kNoOption, 0, kNoOption};
        std::string_view rest = pending.value;
        std::string_view word = NextWord(rest);
        for (int side = 0; side < 2; ++side) {
            if (!word.starts_with('*')) {
                draft_.Warn(pending.at, "constraint-form",
                            "two features with their options expected after \"*" + std::string(pending.main) +
                                ":\"; the constraint is passed over");
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

    void UnknownInConstraint(const PpdStatement& pending, std::string_view word)
    {
        if (pending.keyword == PpdKeyword::UIConstraints &&
            unknownTable_.Insert(word, unknownCount_) == unknownCount_) {
            ++unknownCount_;
            draft_.Warn(pending.at, "constraint-unknown",
                        Quoted(word) +
                            " is not defined in the file; constraints that name it are passed over",
                        word.starts_with('*') ? word.substr(1) : std::string_view());
        }
    }

    void SetDimension(const PpdStatement& pending)
    {
        const auto pageSize = ppd_->FindFeature("PageSize");
        const auto option = pageSize ? ppd_->FindOption(*pageSize, pending.option) : std::nullopt;
        if (!option) return;
        const auto slot = static_cast<std::uint32_t>(ppd_->forms_.size());
        const std::uint32_t at = formTable_.Insert(pending.option, slot);
        if (at == slot)
            ppd_->forms_.push_back({pending.option, ppd_->features_[*pageSize].options[*option].text});
        PpdForm& form = ppd_->forms_[at];
        const bool isSize = pending.keyword == PpdKeyword::PaperDimension;
        if (isSize ? form.width : form.right) return;
        std::string_view rest = pending.value;
        if (isSize) {
            form.width = NextLength(rest);
            form.height = NextLength(rest);
        } else {
            for (int PpdForm::*side : {&PpdForm::left, &PpdForm::bottom, &PpdForm::right, &PpdForm::top})
                form.*side = NextLength(rest);
        }
    }

    // "*ParamCustomPageSize Width: 1 points 36 1000"; "*MaxMediaWidth: "1000"".
    void SetCustomLimit(const PpdStatement& pending)
    {
        if (!ppd_->customSize_) return;
        PpdCustomSize& size = *ppd_->customSize_;
        std::string_view rest = pending.value;
        if (pending.keyword != PpdKeyword::ParamCustomPageSize) {
            int& limit = pending.keyword == PpdKeyword::MaxMediaWidth ? size.maxWidth : size.maxHeight;
            if (limit == 0) limit = NextLength(rest);
            return;
        }
        NextWord(rest); // the position on the stack
        NextWord(rest); // "points"
        const int least = NextLength(rest);
        const int most = NextLength(rest);
        if (pending.option == "Width" && !std::exchange(hasWidth_, true)) {
            size.minWidth = least;
            size.maxWidth = most;
        } else if (pending.option == "Height" && !std::exchange(hasHeight_, true)) {
            size.minHeight = least;
            size.maxHeight = most;
        }
    }

    PpdDraft& draft_;
    Ppd* const ppd_;
    const PpdReadOptions& options_;
    KeywordTable formTable_;
    KeywordTable unknownTable_; // words of constraints that were told about
    std::uint32_t unknownCount_ = 0;
    bool hasWidth_ = false, hasHeight_ = false; // of custom sizes
};

void SettlePpd(PpdDraft& draft, const PpdReadOptions& options)
{
    PpdSettling(draft, options).Finish();
}

} // namespace tintwerk
