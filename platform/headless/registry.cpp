// The registry of the headless platform. Keys and values live in memory; with TINTWERK_REGISTRY set they are
// read from that file when a key is opened for the first time, and every change is written back to it.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/handles.h"
#include "platform/headless/registry_file.h"

using namespace tintwerk::headless;
using tintwerk::HandleTable;

namespace {

struct OpenKey
{
    std::string path; // "HKEY_LOCAL_MACHINE\SOFTWARE\..."
    REGSAM access;
};

// One lock for everything: the registry is small and rarely asked.
struct Registry
{
    std::mutex mutex;
    RegistryContent content;
    std::string file; // the file that the content came from
    HandleTable<OpenKey> open;

    // Follows the environment variable, which tests and the host set while the program runs.
    void Refresh()
    {
        const char* const name = std::getenv("TINTWERK_REGISTRY");
        const std::string wanted = name ? name : "";
        if (wanted == file) return;
        file = wanted;
        content = file.empty() ? RegistryContent() : ReadRegistryFile(file);
    }
    void Save() const
    {
        if (!file.empty()) WriteRegistryFile(file, content);
    }
};

Registry& TheRegistry()
{
    static Registry& registry = *new Registry;
    return registry;
}

std::string Join(const std::string& path, LPCSTR subKey)
{
    std::string joined = path;
    for (const char* at = subKey ? subKey : ""; *at;) {
        const char* const end = std::strchr(at, '\\');
        const std::string part = end ? std::string(at, end) : std::string(at);
        if (!part.empty()) joined += '\\' + part;
        at += part.size() + (end ? 1 : 0);
    }
    return joined;
}

// The key that a handle stands for; false when it stands for none.
bool Resolve(HKEY key, OpenKey& resolved)
{
    if (key == HKEY_LOCAL_MACHINE || key == HKEY_CURRENT_USER) {
        TheRegistry().Refresh();
        resolved = {key == HKEY_LOCAL_MACHINE ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER", KEY_ALL_ACCESS};
        return true;
    }
    const std::shared_ptr<OpenKey> open = TheRegistry().open.Get(key);
    if (open) resolved = *open;
    return open != nullptr;
}

bool Exists(const std::string& path)
{
    return path.find('\\') == std::string::npos || TheRegistry().content.contains(path);
}

bool IsText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

} // namespace

LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD, REGSAM access, PHKEY result)
{
    OpenKey parent;
    const std::lock_guard lock(TheRegistry().mutex);
    if (!result) return ERROR_INVALID_PARAMETER;
    if (!Resolve(key, parent)) return ERROR_INVALID_HANDLE;
    const std::string path = Join(parent.path, subKey);
    if (!Exists(path)) return ERROR_FILE_NOT_FOUND;
    *result = static_cast<HKEY>(TheRegistry().open.Open(std::make_shared<OpenKey>(OpenKey{path, access})));
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    OpenKey open;
    const std::lock_guard lock(TheRegistry().mutex);
    if (reserved || (data && !size)) return ERROR_INVALID_PARAMETER;
    if (!Resolve(key, open)) return ERROR_INVALID_HANDLE;
    if (!(open.access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
    const auto& values = TheRegistry().content[open.path];
    const auto at = values.find(name ? name : "");
    if (at == values.end()) return ERROR_FILE_NOT_FOUND;
    const RegistryValue& value = at->second;
    const DWORD needed = static_cast<DWORD>(value.data.size());
    if (type) *type = value.type;
    if (!size) return ERROR_SUCCESS;
    const DWORD room = std::exchange(*size, needed);
    if (!data) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    std::ranges::copy(value.data, data);
    // A text that was stored without its terminator gets one where there is room.
    if (IsText(value.type) && needed > 0 && value.data.back() != 0 && room > needed) data[needed] = 0;
    return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY key)
{
    const bool predefined = key == HKEY_LOCAL_MACHINE || key == HKEY_CURRENT_USER;
    return predefined || TheRegistry().open.Close(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LSTATUS RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD, LPSTR, DWORD, REGSAM access, LPSECURITY_ATTRIBUTES,
                        PHKEY result, LPDWORD)
{
    OpenKey parent;
    const std::lock_guard lock(TheRegistry().mutex);
    if (!Resolve(key, parent)) return ERROR_INVALID_HANDLE;
    const std::string path = Join(parent.path, subKey);
    if (!Exists(path)) {
        AddKey(TheRegistry().content, path);
        TheRegistry().Save();
    }
    *result = static_cast<HKEY>(TheRegistry().open.Open(std::make_shared<OpenKey>(OpenKey{path, access})));
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    OpenKey open;
    const std::lock_guard lock(TheRegistry().mutex);
    if (!Resolve(key, open)) return ERROR_INVALID_HANDLE;
    if (!(open.access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
    // Callers forget to count the terminator; the platform forgives it.
    if (IsText(type) && size > 0 && data[size - 1] != 0 && data[size] == 0) ++size;
    TheRegistry().content[open.path].insert_or_assign(name ? name : "",
                                                      RegistryValue{type, {data, data + size}});
    TheRegistry().Save();
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteValueA(HKEY key, LPCSTR name)
{
    OpenKey open;
    const std::lock_guard lock(TheRegistry().mutex);
    if (!Resolve(key, open)) return ERROR_INVALID_HANDLE;
    if (!(open.access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
    if (TheRegistry().content[open.path].erase(name ? name : "") == 0) return ERROR_FILE_NOT_FOUND;
    TheRegistry().Save();
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteTreeA(HKEY key, LPCSTR subKey)
{
    OpenKey open;
    const std::lock_guard lock(TheRegistry().mutex);
    if (!Resolve(key, open)) return ERROR_INVALID_HANDLE;
    const std::string path = Join(open.path, subKey);
    if (!Exists(path)) return ERROR_FILE_NOT_FOUND;
    std::erase_if(TheRegistry().content, [&path](const auto& entry) { return LiesIn(entry.first, path); });
    TheRegistry().Save();
    return ERROR_SUCCESS;
}
