// The installer's values in the registry, while they live.
#pragma once

#include <string>

#include "platform/owners.h"
#include "src/config/registry_values.h"

namespace tintwerk {

class InstalledValue
{
public:
    InstalledValue(const char* name, const std::string& text) : name_(name)
    {
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        key_.Receive(), nullptr);
        RegSetValueExA(key_.Get(), name_, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
    }
    ~InstalledValue() { RegDeleteValueA(key_.Get(), name_); }
    InstalledValue(const InstalledValue&) = delete;
    InstalledValue& operator=(const InstalledValue&) = delete;

private:
    const char* name_;
    RegistryKey key_;
};

} // namespace tintwerk
