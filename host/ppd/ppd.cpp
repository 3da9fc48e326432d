#include "host/ppd/ppd.h"

#include <algorithm>
#include <utility>

namespace tintwerk {

std::string PpdMessage::Full() const
{
    return line ? file + ":" + std::to_string(line) + ": " + text : file + ": " + text;
}

unsigned PpdFile::LineOf(const char* place) const
{
    const char* const end = text_.data() + text_.size();
    if (lines_.empty()) {
        lines_.push_back(text_.data());
        for (const char* at = text_.data(); at < end; ++at) {
            if (*at == '\n' || (*at == '\r' && (at + 1 == end || at[1] != '\n'))) lines_.push_back(at + 1);
        }
    }
    return static_cast<unsigned>(std::ranges::upper_bound(lines_, place) - lines_.begin());
}

PpdMessage Ppd::At(const char* place, std::string text, std::string_view code, std::string_view feature,
                   std::string_view option) const
{
    const auto file = std::ranges::find_if(files_, [&](const PpdFile& each) { return each.Holds(place); });
    const bool holds = file != files_.end();
    return {holds ? file->Name() : fileName_,
            holds ? file->LineOf(place) : 0,
            std::move(text),
            code,
            std::string(feature),
            std::string(option)};
}

std::string_view Ppd::PrinterName() const
{
    for (const std::string_view name : {header_.nickName, header_.modelName, header_.product}) {
        if (!name.empty()) return name;
    }
    return fileName_;
}

const PpdFeature* Ppd::Find(std::string_view keyword) const
{
    const auto feature = FindFeature(keyword);
    return feature ? &features_[*feature] : nullptr;
}

const PpdOption* Ppd::Find(std::string_view feature, std::string_view option) const
{
    const auto number = FindFeature(feature), its = number ? FindOption(*number, option) : std::nullopt;
    return its ? &features_[*number].options[*its] : nullptr;
}

} // namespace tintwerk
