#include "host/cli/product_registry.h"

#include <filesystem>

#include "host/cli/arguments.h"
#include "platform/owners.h"
#include "src/config/registry_values.h"

namespace tintwerk {

namespace {

// As the platform spells it: the driver puts backslashes and names behind it.
std::string AbsolutePath(const std::string& path)
{
    std::filesystem::path absolute =
        std::filesystem::absolute(std::u8string(path.begin(), path.end())).lexically_normal();
    if (!absolute.has_filename()) absolute = absolute.parent_path();
    const std::u8string text = absolute.make_preferred().u8string();
    return std::string(text.begin(), text.end());
}

} // namespace

void WriteProductValue(const char* name, const std::string& value)
{
    if (value.size() > kRegistryTextBytes - 2)
        throw CommandError(kExitUsage, std::string(name) + ": at most " +
                                           std::to_string(kRegistryTextBytes - 2) +
                                           " bytes are accepted, these are " + std::to_string(value.size()));
    RegistryKey key;
    const LSTATUS opened =
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE | KEY_WOW64_64KEY, nullptr, key.Receive(), nullptr);
    if (opened != ERROR_SUCCESS ||
        RegSetValueExA(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>(value.size() + 1)) != ERROR_SUCCESS)
        throw CommandError(kExitFailed, std::string(name) + " cannot be written to the registry");
}

void UseConfigDirectory(const std::string& path)
{
    if (!std::filesystem::is_directory(std::u8string(path.begin(), path.end())))
        throw CommandError(kExitUsage, "--config-dir " + path + ": there is no such folder");
    WriteProductValue("ConfigDir", AbsolutePath(path));
}

} // namespace tintwerk
