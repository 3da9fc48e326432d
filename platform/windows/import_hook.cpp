#include "platform/windows/import_hook.h"

#include <cstring>

namespace tintwerk {

void* HookImport(HMODULE module, const char* function, void* replacement)
{
    BYTE* const base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (!directory.VirtualAddress)
        return nullptr;

    void* previous = nullptr;
    auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name; ++library) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                continue;
            const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) != 0)
                continue;
            DWORD protection = 0;
            VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
            previous = reinterpret_cast<void*>(slot->u1.Function);
            slot->u1.Function = reinterpret_cast<ULONGLONG>(replacement);
            VirtualProtect(slot, sizeof *slot, protection, &protection);
        }
    }
    return previous;
}

} // namespace tintwerk
