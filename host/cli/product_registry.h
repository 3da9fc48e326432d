// Writes the registry values that the product's installer would leave, for commands that let a user pretend
// an installation.
#pragma once

#include <filesystem>
#include <string>

namespace tintwerk {

// A text value of the product's key; at most 254 bytes. Throws a CommandError when it is too long or cannot
// be written.
void WriteProductValue(const char* name, const std::string& value);

// The driver's configuration directory, given as a path from the current folder or an absolute one; as above
// when there is none.
void UseConfigDirectory(const std::string& path);

// While it lives the driver has a configuration directory: this one, where the registry names none.
class DefaultConfigDirectory
{
public:
    explicit DefaultConfigDirectory(const std::filesystem::path& folder);
    ~DefaultConfigDirectory();
    DefaultConfigDirectory(const DefaultConfigDirectory&) = delete;
    DefaultConfigDirectory& operator=(const DefaultConfigDirectory&) = delete;

private:
    bool written_ = false;
};

} // namespace tintwerk
