// The registry values that the product's installer would leave, for commands that let a user pretend an
// installation.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "host/cli/arguments.h"

namespace tintwerk {

// A text value of the product's key, at most 254 bytes, while this lives; then what was there before. Throws
// a CommandError when it is too long or cannot be written.
class ProductValue
{
public:
    struct Content
    {
        std::uint32_t type = 0;
        std::string bytes;
        bool operator==(const Content&) const = default;
    };

    ProductValue(const char* name, const std::string& value);
    ~ProductValue();
    ProductValue(const ProductValue&) = delete;
    ProductValue& operator=(const ProductValue&) = delete;

    // For a run that ends without its destructors.
    static void PutAllBack();

private:
    void PutBack() const;

    const char* name_;
    std::optional<Content> before_, written_;
};

// The driver's configuration directory: that of --config-dir, else the registry's, else `folder`. Throws when
// there is no such folder as is given.
void UseConfigDirectory(std::optional<ProductValue>& value, const Arguments& arguments,
                        const std::filesystem::path& folder);

} // namespace tintwerk
