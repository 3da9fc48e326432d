#include "host/core/core_driver.h"

#include "host/core/core_helper.h"
#include "host/core/core_model.h"

namespace tintwerk {

CoreDriver::CoreDriver(const Ppd& ppd, Selections& selections)
    : ppd_(ppd), selections_(selections), model_(std::make_unique<CoreModel>(ppd))
{
    for (const CoreModel::Feature& feature : model_->features)
        selected_.push_back(feature.defaultOption);
    for (const auto& [feature, option] : selections_.Chosen()) {
        if (feature == kCustomPageSize) continue; // the measures of that option, no feature
        const auto number = model_->FindFeature(feature);
        const auto choice = number ? model_->FindOption(*number, option) : std::nullopt;
        if (choice)
            selected_[*number] = *choice;
        else
            refused_.push_back(
                std::string(feature) + "=" + std::string(option) +
                (number ? ": the feature has no such option" : ": the printer has no such feature"));
    }
    helper_ = new CoreHelper(*this);
}

CoreDriver::~CoreDriver()
{
    helper_->Disconnect();
    helper_->Release();
}

// The plug-in must not look behind it; its address alone is the proof that a call comes from this driver's
// sheets.
POEMUIOBJ CoreDriver::CoreObject() const
{
    return reinterpret_cast<POEMUIOBJ>(const_cast<CoreModel*>(model_.get()));
}

IUnknown* CoreDriver::Helper() const
{
    return static_cast<IPrintCoreUI2*>(helper_);
}

std::vector<std::string_view> CoreDriver::Features() const
{
    std::vector<std::string_view> keywords;
    for (const CoreModel::Feature& feature : model_->features) {
        if (!feature.hidden) keywords.push_back(feature.keyword);
    }
    return keywords;
}

std::vector<std::string_view> CoreDriver::Options(std::string_view feature) const
{
    const auto number = model_->FindFeature(feature);
    return number ? model_->features[*number].keywords : std::vector<std::string_view>{};
}

std::string_view CoreDriver::Selected(std::string_view feature) const
{
    const auto number = model_->FindFeature(feature);
    return number ? model_->features[*number].keywords[selected_[*number]] : std::string_view{};
}

SelectedOptions CoreDriver::AllSelected() const
{
    SelectedOptions all;
    for (const std::string_view feature : Features())
        all.emplace_back(feature, Selected(feature));
    return all;
}

std::vector<SelectionChange> ChangesBetween(const SelectedOptions& before, const SelectedOptions& after)
{
    std::vector<SelectionChange> changes;
    for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
        if (before[i] != after[i]) changes.push_back({before[i].first, before[i].second, after[i].second});
    }
    return changes;
}

bool CoreDriver::Select(std::string_view feature, std::string_view option)
{
    const auto number = model_->FindFeature(feature);
    const auto choice = number ? model_->FindOption(*number, option) : std::nullopt;
    if (!choice) return false;
    selected_[*number] = *choice;
    selections_.Set(feature, option);
    return true;
}

std::size_t CoreDriver::Conflicts() const
{
    return model_->Conflicts(selected_).size();
}

} // namespace tintwerk
