// Modules of the headless platform: the program itself, and the plug-in that is linked into it; the Windows
// version; activation contexts.
#include <unistd.h>

#include <algorithm>
#include <string>

#include "platform/handles.h"
#include "platform/headless/hookable.h"
#include "platform/headless/resources.h"
#include "platform/headless/wide.h"

using namespace tintwerk::headless;
using tintwerk::Refuse;

namespace {

// Their addresses are the handles.
int programModule;
int pluginModule;

HMODULE Handle(int& module)
{
    return reinterpret_cast<HMODULE>(&module);
}

std::string ProgramPath()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

BOOL SystemVersion(LPOSVERSIONINFOW information)
{
    if (information->dwOSVersionInfoSize != sizeof(OSVERSIONINFOW) &&
        information->dwOSVersionInfoSize != sizeof(OSVERSIONINFOEXW))
        return Refuse(ERROR_INSUFFICIENT_BUFFER);
    // What a program without a compatibility manifest is told at most.
    information->dwMajorVersion = 6;
    information->dwMinorVersion = 2;
    information->dwBuildNumber = 9200;
    information->dwPlatformId = VER_PLATFORM_WIN32_NT;
    information->szCSDVersion[0] = 0;
    return TRUE;
}

HANDLE NewActivationContext(PCACTCTXW context)
{
    if (!context || context->cbSize != sizeof(ACTCTXW)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    // A module that is named, by handle or path, must carry the manifest.
    const LPCWSTR name =
        context->dwFlags & ACTCTX_FLAG_RESOURCE_NAME_VALID ? context->lpResourceName : nullptr;
    if (name && !FindResourceW(context->hModule, name, RT_MANIFEST)) return INVALID_HANDLE_VALUE;
    static int everyContext; // looks do not change here, so one stands for all
    return &everyContext;
}

DWORD FileNameOf(HMODULE module, LPWSTR path, DWORD size)
{
    std::string file = ProgramPath();
    if (module == Handle(pluginModule)) file = file.substr(0, file.rfind('/') + 1) + "PSTWUI.DLL";
    const std::basic_string<WCHAR> wide = Wide(file);
    if (size == 0 || wide.size() >= size) {
        std::copy_n(wide.begin(), size, path);
        if (size > 0) path[size - 1] = 0;
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return size;
    }
    *std::ranges::copy(wide, path).out = 0;
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(wide.size());
}

Hookable<FileNameOf> getModuleFileName{"GetModuleFileNameW"};
Hookable<SystemVersion> getVersion{"GetVersionExW"};
Hookable<NewActivationContext> createActivationContext{"CreateActCtxW"};

} // namespace

HMODULE tintwerk::headless::PluginHandle()
{
    return Handle(pluginModule);
}

HMODULE GetModuleHandleW(LPCWSTR name)
{
    return name ? Refuse<HMODULE>(ERROR_MOD_NOT_FOUND) : Handle(programModule);
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size)
{
    return getModuleFileName(module, path, size);
}

BOOL GetVersionExW(LPOSVERSIONINFOW information)
{
    return getVersion(information);
}

HANDLE CreateActCtxW(PCACTCTXW context)
{
    return createActivationContext(context);
}

void ReleaseActCtx(HANDLE)
{
}

extern "C" {
const IID IID_IUnknown{0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const IID IID_IClassFactory{0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
