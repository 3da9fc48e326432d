#include "platform/plugin_module.h"

#include "platform/headless/resources.h"

// The plug-in's entry points, linked in.
EXTERN_C BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object);
STDAPI DllCanUnloadNow();

namespace tintwerk {

PluginModule::PluginModule()
    : module_(headless::PluginHandle()), getClassObject_(&DllGetClassObject), canUnloadNow_(&DllCanUnloadNow)
{
    DllMain(module_, DLL_PROCESS_ATTACH, nullptr);
}

PluginModule::~PluginModule()
{
    DllMain(module_, DLL_PROCESS_DETACH, nullptr);
}

} // namespace tintwerk
