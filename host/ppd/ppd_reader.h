// Reads PPD files. A file that cannot be used gives one clear error; what is merely sloppy becomes a warning
// of the Ppd. Called by the host's commands, the core driver's tests, the benchmarks and the fuzzer.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/ppd/ppd.h"

namespace tintwerk {

inline constexpr std::size_t kMaxPpdBytes = 32u << 20; // no PPD is larger

struct PpdReadOptions
{
    // Takes the translations of this language ("de", "pt_BR") where the file has them; empty: the file's own
    // texts.
    std::string language;
    // For tintwerk check: goes on behind faults that otherwise end the reading, and keeps the statements.
    bool toCheck = false;
    // Feature and option: the option becomes the feature's first one and its default, as if the file had it
    // so.
    std::vector<std::pair<std::string, std::string>> pretended;
};

// Exactly one of the two is there: the description, or the error.
struct PpdResult
{
    std::unique_ptr<Ppd> ppd;
    PpdMessage error;

    explicit operator bool() const { return ppd != nullptr; }
};

// The keywords with a meaning of their own, without asterisk.
const std::vector<std::string_view>& PpdKeywords();

// Reads a file and the files of its folder that it includes.
PpdResult ReadPpd(const std::filesystem::path& path, const PpdReadOptions& options = {});

// Gives the text of an included file, or nothing when there is none.
using PpdIncluder = std::function<std::optional<std::string>(const std::string& name)>;

// Reads a text as if it were the file `name`.
PpdResult ReadPpdText(std::string text, const std::string& name, const PpdReadOptions& options = {},
                      const PpdIncluder& includer = {});

} // namespace tintwerk
