#include "src/sheets/activation_context.h"

#include "platform/owners.h"
#include "src/records/process_values.h"

namespace tintwerk {

namespace {

constexpr WORD kManifestResource = 2;
constexpr DWORD kFirstPathUnits = 260;
constexpr int kPathAttempts = 10; // each with twice the room

// The module's full file name, cut when it is longer than any attempt allows; null when there is none.
HeapBlock<WCHAR> ModulePath()
{
    HeapBlock<WCHAR> path;
    DWORD units = kFirstPathUnits;
    for (int attempt = 1; attempt <= kPathAttempts; ++attempt, units *= 2) {
        path = HeapBlock<WCHAR>(GetProcessHeap(), (units + 1) * sizeof(WCHAR));
        const DWORD length = path ? GetModuleFileNameW(Process().module, path.Get(), units) : 0;
        if (length == 0) return {};
        if (length < units) break;
    }
    return path;
}

HANDLE CreateContext()
{
    const HeapBlock<WCHAR> path = ModulePath();
    if (!path) return INVALID_HANDLE_VALUE;
    ACTCTXW context{};
    context.cbSize = sizeof(context);
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = path.Get();
    context.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
    return CreateActCtxW(&context);
}

// The process's context. Of two threads that make it at the same moment one is too late.
HANDLE ProcessContext()
{
    SharedValue<LONG_PTR>& kept = Process().activationContext;
    if (kept != kNoActivationContext) return reinterpret_cast<HANDLE>(LONG_PTR{kept});
    const HANDLE made = CreateContext();
    if (made == INVALID_HANDLE_VALUE || kept.Replace(kNoActivationContext, reinterpret_cast<LONG_PTR>(made)))
        return made;
    ReleaseActCtx(made);
    return reinterpret_cast<HANDLE>(LONG_PTR{kept});
}

} // namespace

void UseActivationContext(PropertySheetPage& page)
{
    const HANDLE context = ProcessContext();
    if (!context || context == INVALID_HANDLE_VALUE) return;
    page.hActCtx = context;
    page.dwFlags |= PSP_USEFUSIONCONTEXT;
}

} // namespace tintwerk
