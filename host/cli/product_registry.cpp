#include "host/cli/product_registry.h"

#include <algorithm>
#include <filesystem>

#include "host/cli/arguments.h"
#include "host/ppd/wide_text.h"
#include "platform/owners.h"
#include "src/config/registry_values.h"

namespace tintwerk {

namespace {

// As the platform spells it: the driver puts backslashes and names behind it.
std::string AbsolutePath(const std::string& path)
{
    std::filesystem::path absolute = std::filesystem::absolute(PathFromUtf8(path)).lexically_normal();
    if (!absolute.has_filename()) absolute = absolute.parent_path();
    std::string text = Utf8FromPath(absolute);
    std::ranges::replace(text, '/', static_cast<char>(std::filesystem::path::preferred_separator));
    return text;
}

} // namespace

void WriteProductValue(const char* name, const std::string& value)
{
    if (value.size() > kRegistryTextBytes - 2)
        Misused(std::string(name) + ": at most " + std::to_string(kRegistryTextBytes - 2) +
                " bytes are accepted, these are " + std::to_string(value.size()));
    RegistryKey key;
    const LSTATUS opened =
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE | KEY_WOW64_64KEY, nullptr, key.Receive(), nullptr);
    if (opened != ERROR_SUCCESS ||
        RegSetValueExA(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>(value.size() + 1)) != ERROR_SUCCESS)
        Fail(std::string(name) + " cannot be written to the registry");
}

void UseConfigDirectory(const std::string& path)
{
    if (!std::filesystem::is_directory(PathFromUtf8(path)))
        Misused("--config-dir " + path + ": there is no such folder");
    WriteProductValue("ConfigDir", AbsolutePath(path));
}

DefaultConfigDirectory::DefaultConfigDirectory(const std::filesystem::path& folder)
{
    char known[kRegistryTextBytes];
    if (ReadConfigDir(known) == 0) return;
    try {
        WriteProductValue("ConfigDir", AbsolutePath(Utf8FromPath(folder)));
        written_ = true;
    } catch (const CommandError&) { // without the right to write there the pages show no ink and no logo
    }
}

DefaultConfigDirectory::~DefaultConfigDirectory()
{
    RegistryKey key;
    if (written_ && RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, KEY_SET_VALUE | KEY_WOW64_64KEY,
                                  key.Receive()) == ERROR_SUCCESS)
        RegDeleteValueA(key.Get(), "ConfigDir");
}

} // namespace tintwerk
