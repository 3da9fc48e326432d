#include "src/plugin/class_factory.h"

#include "src/plugin/heap_object.h"
#include "src/plugin/module_counters.h"
#include "src/plugin/oem_ui.h"

namespace tintwerk {

HRESULT OemUIClassFactory::QueryInterface(REFIID interfaceId, void** object)
{
    if (!object) return E_POINTER;
    if (!IsEqualIID(interfaceId, IID_IUnknown) && !IsEqualIID(interfaceId, IID_IClassFactory)) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG OemUIClassFactory::AddRef()
{
    return static_cast<ULONG>(++references_);
}

ULONG OemUIClassFactory::Release()
{
    const LONG left = --references_;
    if (left == 0) DeleteOnHeap(this);
    return static_cast<ULONG>(left);
}

HRESULT OemUIClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object)
{
    if (outer) return CLASS_E_NOAGGREGATION;
    IOemUI* const plugin = NewOnHeap<IOemUI>();
    if (!plugin) return E_OUTOFMEMORY;
    const HRESULT result = plugin->QueryInterface(interfaceId, object);
    plugin->Release();
    return result;
}

HRESULT OemUIClassFactory::LockServer(BOOL lock)
{
    moduleCounters.locks += lock ? 1 : -1;
    return S_OK;
}

} // namespace tintwerk
