// Module entry and the two exports, called by the loader and by the core driver.
#include "src/plugin/class_factory.h"
#include "src/plugin/heap_object.h"
#include "src/plugin/module_counters.h"
#include "src/records/process_values.h"
#include "src/trace/trace.h"

using namespace tintwerk;

EXTERN_C BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    switch (LOWORD(reason)) {
    case DLL_PROCESS_ATTACH:
        Trace(TEXT("UI:  Process attach.\r\n"));
        Process().module = module;
        break;
    case DLL_PROCESS_DETACH:
        Trace(TEXT("UI:  Process detach.\r\n"));
        break;
    case DLL_THREAD_ATTACH:
        Trace(TEXT("UI:  Thread attach.\r\n"));
        break;
    case DLL_THREAD_DETACH:
        Trace(TEXT("UI:  Thread detach.\r\n"));
        break;
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object)
{
    Trace(TEXT("UI:  DllGetClassObject:Create class factory.\r\n"));
    if (!IsEqualCLSID(classId, kPluginClassId)) return CLASS_E_CLASSNOTAVAILABLE;
    OemUIClassFactory* const factory = NewOnHeap<OemUIClassFactory>();
    if (!factory) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(interfaceId, object);
    factory->Release();
    return result;
}

STDAPI DllCanUnloadNow()
{
    return moduleCounters.liveObjects != 0 || moduleCounters.locks != 0 ? S_FALSE : S_OK;
}
