#include "host/cli/product_registry.h"

#include <algorithm>

#include "host/ppd/wide_text.h"
#include "platform/owners.h"
#include "src/config/registry_values.h"

namespace tintwerk {

namespace {

// As the platform spells it: the driver puts backslashes and names behind it.
std::string AbsolutePath(const std::filesystem::path& path)
{
    std::filesystem::path absolute = std::filesystem::absolute(path).lexically_normal();
    if (!absolute.has_filename()) absolute = absolute.parent_path();
    std::string text = Utf8FromPath(absolute);
    std::ranges::replace(text, '/', static_cast<char>(std::filesystem::path::preferred_separator));
    return text;
}

LSTATUS WriteText(HKEY key, const char* name, const std::string& value)
{
    return RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>(value.size() + 1));
}

RegistryKey OpenForWriting()
{
    RegistryKey key;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_WOW64_64KEY, nullptr, key.Receive(), nullptr);
    return key;
}

} // namespace

ProductValue::ProductValue(const char* name, const std::string& value) : name_(name)
{
    if (value.size() > kRegistryTextBytes - 2)
        Misused(std::string(name) + ": at most " + std::to_string(kRegistryTextBytes - 2) +
                " bytes are accepted, these are " + std::to_string(value.size()));
    const RegistryKey key = OpenForWriting();
    char before[0x4000];
    DWORD type = 0, size = sizeof before - 1;
    const LSTATUS read =
        RegQueryValueExA(key.Get(), name, nullptr, &type, reinterpret_cast<BYTE*>(before), &size);
    if (read == ERROR_SUCCESS && type == REG_SZ) {
        before[size] = '\0';
        before_ = before;
    } else if (read == ERROR_SUCCESS || read == ERROR_MORE_DATA) {
        Fail(std::string(name) + ": the registry holds something else than a text there, which stays");
    }
    if (WriteText(key.Get(), name, value) != ERROR_SUCCESS)
        Fail(std::string(name) + " cannot be written to the registry");
}

ProductValue::~ProductValue()
{
    const RegistryKey key = OpenForWriting();
    if (before_)
        WriteText(key.Get(), name_, *before_);
    else
        RegDeleteValueA(key.Get(), name_);
}

void UseConfigDirectory(std::optional<ProductValue>& value, const Arguments& arguments,
                        const std::filesystem::path& folder)
{
    if (arguments.Has("config-dir")) {
        const std::filesystem::path given = PathFromUtf8(arguments.Value("config-dir"));
        if (!std::filesystem::is_directory(given))
            Misused("--config-dir " + arguments.Value("config-dir") + ": there is no such folder");
        value.emplace(kConfigDirValue, AbsolutePath(given));
        return;
    }
    char known[kRegistryTextBytes];
    if (ReadConfigDir(known) == 0) return;
    try {
        value.emplace(kConfigDirValue, AbsolutePath(folder));
    } catch (const CommandError&) { // without the right to write there the pages show no ink and no logo
    }
}

} // namespace tintwerk
