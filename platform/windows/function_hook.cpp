#include "platform/function_hook.h"

#include <string>
#include <vector>

#include "platform/windows/import_hook.h"

namespace tintwerk {

namespace {

struct Replacement
{
    std::string name;
    void* original;
    void* current;
};

std::vector<Replacement>& Replacements()
{
    static std::vector<Replacement> replacements;
    return replacements;
}

Replacement& Remembered(const char* name)
{
    for (Replacement& replacement : Replacements()) {
        if (replacement.name == name) return replacement;
    }
    return Replacements().emplace_back(Replacement{name, nullptr, nullptr});
}

void Apply(HMODULE module, Replacement& replacement)
{
    void* const function = replacement.current ? replacement.current : replacement.original;
    if (!module || !function) return;
    void* const previous = HookImport(module, replacement.name.c_str(), function);
    if (!replacement.original) replacement.original = previous;
}

} // namespace

void* ReplaceFunction(const char* name, void* replacement)
{
    Replacement& remembered = Remembered(name);
    remembered.current = replacement;
    Apply(GetModuleHandleW(nullptr), remembered);
    Apply(GetModuleHandleW(L"PSTWUI.DLL"), remembered);
    return remembered.original;
}

void ApplyReplacements(HMODULE module)
{
    for (Replacement& replacement : Replacements()) {
        if (replacement.current) Apply(module, replacement);
    }
}

} // namespace tintwerk
