// The configuration directory in the registry, while it lives.
#pragma once

#include <string>

#include "platform/owners.h"
#include "src/config/registry_values.h"

namespace tintwerk {

class ConfigDirValue
{
public:
    explicit ConfigDirValue(const std::string& directory)
    {
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        key.Receive(), nullptr);
        RegSetValueExA(key.Get(), "ConfigDir", 0, REG_SZ, reinterpret_cast<const BYTE*>(directory.c_str()),
                       static_cast<DWORD>(directory.size() + 1));
    }
    ~ConfigDirValue() { RegDeleteValueA(key.Get(), "ConfigDir"); }

private:
    RegistryKey key;
};

} // namespace tintwerk
