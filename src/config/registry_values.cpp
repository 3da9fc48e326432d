#include "src/config/registry_values.h"

#include "platform/owners.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

RegistryKey OpenProductKey()
{
    RegistryKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, KEY_READ | KEY_WOW64_64KEY, key.Receive()) !=
        ERROR_SUCCESS)
        key.Release(); // whatever a failed open left there is no key
    return key;
}

// Reads a text value into room bytes of a buffer of kRegistryTextBytes. The registry does not promise that a
// text ends with its zero.
bool QueryText(const RegistryKey& key, const char* valueName, char* buffer, DWORD room)
{
    DWORD type = 0;
    DWORD size = room;
    if (RegQueryValueExA(key.Get(), valueName, nullptr, &type, reinterpret_cast<LPBYTE>(buffer), &size) !=
            ERROR_SUCCESS ||
        type != REG_SZ || size >= kRegistryTextBytes) {
        Trace(TEXT("reg value %S not found\n"), valueName);
        return false;
    }
    buffer[size] = 0;
    return true;
}

} // namespace

int ReadRegistryString(const char* valueName, char* buffer)
{
    const RegistryKey key = OpenProductKey();
    if (!key) {
        Trace(TEXT("reg key %S not found\n"), kRegistryKey);
        return 1;
    }
    return QueryText(key, valueName, buffer, kRegistryTextBytes) ? 0 : 1;
}

int ReadConfigDir(char* buffer)
{
    const RegistryKey key = OpenProductKey();
    if (!key) {
        Trace(TEXT("reg key for OEM cofiguration path not found\n"));
        return 1;
    }
    return QueryText(key, kConfigDirValue, buffer, kRegistryTextBytes - 1) ? 0 : 1;
}

} // namespace tintwerk
