#include "platform/plugin_module.h"

#include <string>

#include "platform/windows/import_hook.h"

namespace tintwerk {

namespace {

template <typename Function> void Find(HMODULE module, const char* name, Function*& function)
{
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace

PluginModule::PluginModule()
{
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH - 1);
    std::wstring path = program;
    path.resize(path.rfind(L'\\') + 1);
    module_ = LoadLibraryW((path + L"PSTWUI.DLL").c_str());
    if (!module_) return;
    ApplyReplacements(module_);
    Find(module_, "DllGetClassObject", getClassObject_);
    Find(module_, "DllCanUnloadNow", canUnloadNow_);
}

PluginModule::~PluginModule()
{
    if (module_) FreeLibrary(module_);
}

} // namespace tintwerk
