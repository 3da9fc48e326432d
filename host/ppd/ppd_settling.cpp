// Settles what only the whole file can tell.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <utility>

#include "host/ppd/encoding.h"
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
            feature.text = Decoded(feature.text, feature.keyword, encoding_);
            for (PpdOption& option : feature.options) {
                option.text = Decoded(option.text, option.keyword, encoding_);
                ResolveSymbol(option);
                if (feature.jcl && option.value.find('<') != std::string_view::npos)
                    option.value = ppd_->texts_.emplace_back(ResolvePpdHex(option.value));
            }
        }
        Ppd::Header& header = ppd_->header_;
        for (std::string_view* text : {&header.modelName, &header.nickName, &header.shortNickName})
            *text = Decoded(*text, *text, encoding_);
        if (header.product.starts_with('(') && header.product.ends_with(')'))
            header.product = header.product.substr(1, header.product.size() - 2);

        for (const bool regional : {false, true})
            Translate(regional);
        AddCustomPageSize();
        for (const PpdStatement& pending : draft_.pending)
            Settle(pending);
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
        const auto symbol = draft_.symbols.find(option.value);
        if (symbol != draft_.symbols.end()) option.value = symbol->second;
    }

    void DropEmptyFeatures()
    {
        const std::size_t dropped = std::erase_if(ppd_->features_, [this](const PpdFeature& feature) {
            if (!feature.options.empty()) return false;
            draft_.Warn(feature.keyword.data(), "no-options",
                        Quoted(Starred(feature.keyword)) + " has no options; it is left out",
                        feature.keyword);
            return true;
        });
        if (dropped) RebuildTables();
    }

    void RebuildTables()
    {
        const std::vector<PpdFeature>& features = ppd_->features_;
        ppd_->featureTable_ = {};
        ppd_->optionTable_ = {};
        for (std::size_t number = 0; number < features.size(); ++number) {
            ppd_->featureTable_.Insert(features[number].keyword, number);
            for (std::size_t option = 0; option < features[number].options.size(); ++option)
                ppd_->optionTable_.Insert(features[number].options[option].keyword, option, number);
        }
    }

    // As if the file said so before everything else.
    void Pretend()
    {
        for (const auto& [keyword, option] : options_.pretended) {
            auto feature = std::ranges::find(ppd_->features_, keyword, &PpdFeature::keyword);
            if (feature == ppd_->features_.end()) {
                PpdFeature added;
                added.keyword = added.text = ppd_->texts_.emplace_back(keyword);
                feature = ppd_->features_.insert(feature, std::move(added));
            }
            feature->hasDefault = true;
            auto at = std::ranges::find(feature->options, option, &PpdOption::keyword);
            if (at == feature->options.end()) {
                const std::string_view text = ppd_->texts_.emplace_back(option);
                at = feature->options.insert(at, {text, text, {}});
            }
            std::rotate(feature->options.begin(), at, at + 1);
        }
        if (!options_.pretended.empty()) RebuildTables();
    }

    void Translate(bool regional)
    {
        // Backwards, so that the first one counts.
        for (auto each = draft_.translations.rbegin(); each != draft_.translations.rend(); ++each) {
            const PpdDraft::Translation& translation = *each;
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
        const std::size_t option = feature.options.size();
        if (ppd_->optionTable_.Insert(kCustomPageSize, option, *pageSize) != option) return;
        const bool german = options_.language.starts_with("de");
        feature.options.push_back(
            {kCustomPageSize, german ? "Eigene Gr\u00F6\u00DFe" : "Custom Size", custom->value});
        ResolveSymbol(feature.options.back());
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
        const std::string_view value = WithoutText(pending.value);
        if (const auto option = ppd_->FindOption(*number, value))
            feature.defaultOption = *option;
        else
            draft_.Warn(pending.at, value == "Unknown" ? "default-no-option" : "default-unknown",
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
    // "*A *B"; "*CustomPageSize", with or without "True", is the size of the user's own.
    void AddConstraint(const PpdStatement& pending)
    {
        if (!pending.hasValue) return;
        std::pair<std::size_t, std::size_t> sides[2];
        std::string_view rest = pending.value;
        std::string_view word = NextWord(rest);
        for (auto& [feature, option] : sides) {
            if (!word.starts_with('*'))
                return draft_.Warn(pending.at, "constraint-form",
                                   "two features with their options expected after \"*" +
                                       std::string(pending.main) + ":\"; the constraint is passed over");
            std::string_view keyword = word.substr(1);
            word = NextWord(rest);
            std::string_view its = word.starts_with('*') ? std::string_view() : word;
            if (!its.empty()) word = NextWord(rest);
            if (keyword == kCustomPageSize) {
                its = keyword;
                keyword = "PageSize";
            }
            const auto number = ppd_->FindFeature(keyword);
            const auto found = number && !its.empty() ? ppd_->FindOption(*number, its) : std::nullopt;
            if (!number || (!its.empty() && !found)) return TellUnknown(pending, keyword, number ? its : "");
            feature = *number;
            option = found.value_or(kNoOption);
        }
        const auto& [first, second] = sides;
        if (first.first == second.first)
            return draft_.Warn(pending.at, "constraint-self",
                               "the constraint names " + Starred(ppd_->features_[first.first].keyword) +
                                   " twice",
                               ppd_->features_[first.first].keyword);
        ppd_->constraints_.push_back({first.first, first.second, second.first, second.second});
    }

    // Once for each feature or option.
    void TellUnknown(const PpdStatement& pending, std::string_view feature, std::string_view option)
    {
        if (pending.keyword != PpdKeyword::UIConstraints || !unknown_.insert({feature, option}).second)
            return;
        const std::string name = Starred(feature) + (option.empty() ? "" : " " + std::string(option));
        draft_.Warn(pending.at, "constraint-unknown",
                    Quoted(name) + " is not defined in the file; constraints that name it are passed over",
                    feature, option);
    }

    void SetDimension(const PpdStatement& pending)
    {
        const auto pageSize = ppd_->FindFeature("PageSize");
        const auto option = pageSize ? ppd_->FindOption(*pageSize, pending.option) : std::nullopt;
        if (!option) return;
        const std::size_t slot = ppd_->forms_.size();
        const std::size_t at = formTable_.Insert(pending.option, slot);
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
        const bool isWidth = pending.option == "Width";
        if ((!isWidth && pending.option != "Height") || std::exchange(isWidth ? hasWidth_ : hasHeight_, true))
            return;
        NextWord(rest); // the position on the stack
        NextWord(rest); // "points"
        (isWidth ? size.minWidth : size.minHeight) = NextLength(rest);
        (isWidth ? size.maxWidth : size.maxHeight) = NextLength(rest);
    }

    PpdDraft& draft_;
    Ppd* const ppd_;
    const PpdReadOptions& options_;
    const PpdEncoding encoding_ = PpdEncodingFromName(ppd_->header_.languageEncoding);
    KeywordTable formTable_;
    std::set<std::pair<std::string_view, std::string_view>> unknown_; // in constraints, told already
    bool hasWidth_ = false, hasHeight_ = false;                       // of custom sizes
};

void SettlePpd(PpdDraft& draft, const PpdReadOptions& options)
{
    PpdSettling(draft, options).Finish();
}

} // namespace tintwerk
