// The class factory through which the core driver makes the plug-in object.
#pragma once

#include <atomic>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr GUID kPluginClassId{
    0xABCE80D7, 0x9F46, 0x11D1, {0x88, 0x2A, 0x00, 0xC0, 0x4F, 0xB9, 0x61, 0xEC}};

class OemUIClassFactory final : public IClassFactory
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    // Makes a plug-in object without helpers. Never aggregates.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    std::atomic<LONG> references_{1};
};

} // namespace tintwerk
