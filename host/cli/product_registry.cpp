#include "host/cli/product_registry.h"

#include <algorithm>
#include <mutex>
#include <vector>

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

// Those that are to be put back, the oldest first.
struct LiveValues
{
    std::mutex mutex;
    std::vector<const ProductValue*> values;
};

LiveValues& TheLiveValues()
{
    static LiveValues live;
    return live;
}

std::optional<ProductValue::Content> Read(const RegistryKey& key, const char* name)
{
    ProductValue::Content content;
    DWORD type = 0, size = 0;
    if (RegQueryValueExA(key.Get(), name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    content.bytes.resize(size);
    if (RegQueryValueExA(key.Get(), name, nullptr, &type, reinterpret_cast<BYTE*>(content.bytes.data()),
                         &size) != ERROR_SUCCESS)
        return std::nullopt;
    content.bytes.resize(size);
    content.type = type;
    return content;
}

bool Write(const RegistryKey& key, const char* name, const ProductValue::Content& content)
{
    return RegSetValueExA(key.Get(), name, 0, content.type,
                          reinterpret_cast<const BYTE*>(content.bytes.c_str()),
                          static_cast<DWORD>(content.bytes.size())) == ERROR_SUCCESS;
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
    before_ = Read(key, name);
    if (!Write(key, name, {REG_SZ, {value.c_str(), value.size() + 1}}))
        Fail(std::string(name) + " cannot be written to the registry");
    written_ = Read(key, name); // the platform may keep it otherwise
    LiveValues& live = TheLiveValues();
    const std::lock_guard lock(live.mutex);
    live.values.push_back(this);
}

ProductValue::~ProductValue()
{
    LiveValues& live = TheLiveValues();
    const std::lock_guard lock(live.mutex);
    if (std::erase(live.values, this)) PutBack();
}

void ProductValue::PutAllBack()
{
    LiveValues& live = TheLiveValues();
    const std::lock_guard lock(live.mutex);
    for (; !live.values.empty(); live.values.pop_back())
        live.values.back()->PutBack();
}

// What another run wrote meanwhile is that one's to put back.
void ProductValue::PutBack() const
{
    const RegistryKey key = OpenForWriting();
    if (Read(key, name_) != written_) return;
    if (before_)
        Write(key, name_, *before_);
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
