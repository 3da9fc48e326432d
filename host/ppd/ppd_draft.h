// A PPD while it is being read. PpdReader goes through the statements and leaves here what only the whole
// file can settle; PpdSettling does that.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/ppd/ppd.h"
#include "host/ppd/ppd_reader.h"

namespace tintwerk {

// Thrown where a file cannot be read on; caught by ReadPpdText.
struct PpdFailure
{
    PpdMessage message;
};

inline std::string_view WithoutAsterisk(std::string_view keyword)
{
    return keyword.starts_with('*') ? keyword.substr(1) : keyword;
}

inline std::string Starred(std::string_view keyword)
{
    return std::string(1, '*').append(keyword);
}

// The number at the start of a word, 0 without one.
double PpdNumber(std::string_view word);

class PpdDraft
{
public:
    struct Translation
    {
        std::string_view feature, option, text;
        bool regional;
    };

    void Warn(const char* place, std::string_view code, std::string text, std::string_view feature = {},
              std::string_view option = {})
    {
        if (warnings.size() < maxWarnings)
            warnings.push_back(ppd->At(place, std::move(text), code, feature, option));
    }

    std::size_t maxWarnings = 500; // tintwerk check wants all

    std::unique_ptr<Ppd> ppd = std::make_unique<Ppd>();
    std::vector<PpdStatement> pending; // in the file's order
    std::vector<Translation> translations;
    std::map<std::string_view, std::string_view> symbols; // empty in most files
    std::vector<PpdMessage> warnings;
};

// What stands for the end of the file: defaults, orders, constraints, sizes, translations.
void SettlePpd(PpdDraft& draft, const PpdReadOptions& options);

} // namespace tintwerk
