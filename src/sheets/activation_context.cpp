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

std::optional<HANDLE> CreateContext()
{
    const HeapBlock<WCHAR> path = ModulePath();
    if (!path) return std::nullopt;
    ACTCTXW context{};
    context.cbSize = sizeof(context);
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = path.Get();
    context.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
    const HANDLE made = CreateActCtxW(&context);
    return made == INVALID_HANDLE_VALUE ? std::nullopt : std::optional(made);
}

} // namespace

void UseActivationContext(PropertySheetPage& page)
{
    std::optional<HANDLE>& context = Process().activationContext;
    if (!context) context = CreateContext();
    if (!context.value_or(nullptr)) return;
    page.hActCtx = *context;
    page.dwFlags |= PSP_USEFUSIONCONTEXT;
}

} // namespace tintwerk
