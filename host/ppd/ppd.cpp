#include "host/ppd/ppd.h"

namespace tintwerk {

std::string PpdMessage::Full() const
{
    return line ? file + ":" + std::to_string(line) + ": " + text : file + ": " + text;
}

std::string_view Ppd::PrinterName() const
{
    for (const std::string_view name : {header_.nickName, header_.modelName, header_.product}) {
        if (!name.empty()) return name;
    }
    return fileName_;
}

std::optional<std::size_t> Ppd::FindFeature(std::string_view keyword) const
{
    const std::uint32_t feature = featureTable_.Find(keyword);
    return feature == KeywordTable::kNone ? std::nullopt : std::optional<std::size_t>(feature);
}

std::optional<std::size_t> Ppd::FindOption(std::size_t feature, std::string_view keyword) const
{
    const std::uint32_t option = optionTable_.Find(keyword, static_cast<std::uint32_t>(feature));
    return option == KeywordTable::kNone ? std::nullopt : std::optional<std::size_t>(option);
}

const PpdFeature* Ppd::Find(std::string_view keyword) const
{
    const auto feature = FindFeature(keyword);
    return feature ? &features_[*feature] : nullptr;
}

} // namespace tintwerk
