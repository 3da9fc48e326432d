// The plug-in as a module: loaded, reached through its two entry points, and unloaded. The host and the tests
// use it in the way the core driver does.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

class PluginModule
{
public:
    // PSTWUI.DLL beside the program on Windows; the plug-in that is linked into the program elsewhere. Last
    // error says why when it is not loaded.
    PluginModule();
    ~PluginModule();
    PluginModule(const PluginModule&) = delete;
    PluginModule& operator=(const PluginModule&) = delete;

    explicit operator bool() const { return module_ != nullptr; }
    HMODULE Handle() const { return module_; }
    HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** object) const
    {
        return getClassObject_(classId, interfaceId, object);
    }
    HRESULT CanUnloadNow() const { return canUnloadNow_(); }

private:
    HMODULE module_ = nullptr;
    HRESULT(STDAPICALLTYPE* getClassObject_)(REFCLSID, REFIID, void**) = nullptr;
    HRESULT(STDAPICALLTYPE* canUnloadNow_)() = nullptr;
};

} // namespace tintwerk
