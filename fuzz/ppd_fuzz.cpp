// Any bytes as a PPD: the reader gives a description or one error, and everything a description offers can be
// used.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/ppd/ppd_reader.h"

using namespace tintwerk;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first byte chooses how to read; an included file is the same text once more.
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    PpdReadOptions options;
    options.language = data[0] & 1 ? "de_AT" : "";
    options.toCheck = data[0] & 4;
    const PpdIncluder includer = [&text](const std::string& name) -> std::optional<std::string> {
        return name.size() % 2 ? std::optional(text.substr(text.size() / 2)) : std::nullopt;
    };
    const PpdResult result = ReadPpdText(text, "fuzz.ppd", options, includer);
    if (static_cast<bool>(result) == !result.error.text.empty()) std::abort();
    if (!result) return 0;
    std::size_t features = 0;
    for (const PpdFeature& feature : result.ppd->Features()) {
        if (result.ppd->FindFeature(feature.keyword) != features ||
            feature.defaultOption >= feature.options.size())
            std::abort();
        for (std::size_t option = 0; option < feature.options.size(); ++option) {
            if (result.ppd->FindOption(features, feature.options[option].keyword) != option ||
                feature.options[option].text.empty())
                std::abort();
        }
        ++features;
    }
    for (const PpdConstraint& constraint : result.ppd->Constraints()) {
        if (constraint.feature1 >= features || constraint.feature2 >= features) std::abort();
    }
    return 0;
}
