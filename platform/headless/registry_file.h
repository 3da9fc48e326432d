// The registry's content and the text file that keeps it (docs/registry-file.md).
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

// Names of keys and values keep their case but are found in any.
struct IgnoreCase
{
    bool operator()(const std::string& a, const std::string& b) const
    {
        return lstrcmpiA(a.c_str(), b.c_str()) < 0;
    }
};

struct RegistryValue
{
    DWORD type;
    std::vector<BYTE> data;
};

using RegistryValues = std::map<std::string, RegistryValue, IgnoreCase>;
using RegistryContent = std::map<std::string, RegistryValues, IgnoreCase>;

// Whether a key is the root or stands below it.
bool LiesIn(std::string_view path, std::string_view root);
// Adds a key and those above it, all but the root.
void AddKey(RegistryContent& content, const std::string& path);

// A file that cannot be read is empty; a line that says nothing is passed over.
RegistryContent ReadRegistryFile(const std::string& path);
// False when the file cannot be written.
bool WriteRegistryFile(const std::string& path, const RegistryContent& content);

} // namespace tintwerk::headless
