#include "src/config/module_versions.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "platform/code_pages.h"
#include "platform/owners.h"
#include "src/records/spooler_record.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kDriverLevel = 4;
constexpr int kVersionUnits = 32;
constexpr WCHAR kUnknown[] = TEXT("unknown");

bool EndsWith(const WCHAR* path, const WCHAR* suffix)
{
    const int length = lstrlenW(path);
    const int suffixLength = lstrlenW(suffix);
    // File names know no language: for a Turkish user "i" is not the small letter of "I".
    return length >= suffixLength && CompareStringOrdinal(path + length - suffixLength, suffixLength, suffix,
                                                          suffixLength, TRUE) == CSTR_EQUAL;
}

const WCHAR* FileNameOf(const WCHAR* path)
{
    const WCHAR* name = path;
    for (; *path; ++path)
        if (*path == '\\') name = path + 1;
    return name;
}

void CopyDataFileName(const WCHAR* path, DriverVersions* versions)
{
    char* const name = versions->dataFileName;
    if (WideCharToMultiByte(kLatin1CodePage, WC_NO_BEST_FIT_CHARS, FileNameOf(path), -1, name,
                            sizeof(versions->dataFileName), nullptr, nullptr) == 0)
        name[0] = 0;
}

// Takes a module of the driver's dependent files when it is one of ours.
void TakeModule(const WCHAR* path, DriverVersions* versions)
{
    if (EndsWith(path, TEXT("\\PSTWUI.DLL")))
        GetFileVersionText(path, versions->plugin);
    else if (EndsWith(path, TEXT("\\PSTWDRV.DLL")))
        GetFileVersionText(path, versions->renderingPlugin);
}

// The text of the file version in the resource's first language; null when it has none.
const WCHAR* FileVersion(const void* resource, UINT* units)
{
    struct Translation
    {
        WORD language, codePage;
    };
    void* value = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(resource, TEXT("\\VarFileInfo\\Translation"), &value, &size) ||
        size < sizeof(Translation))
        return nullptr;
    const auto* const translation = static_cast<const Translation*>(value);
    char name[64] = {};
    std::snprintf(name, sizeof(name), "\\StringFileInfo\\%04x%04x\\FileVersion", translation->language,
                  translation->codePage);
    WCHAR wideName[std::size(name)];
    std::copy(std::begin(name), std::end(name), wideName);
    return VerQueryValueW(resource, wideName, &value, units) && *units ? static_cast<const WCHAR*>(value)
                                                                       : nullptr;
}

// Cuts a version at the first blank from the second character after its third dot on: "5.0.123.3 (build)"
// becomes "5.0.123.3".
void ShortenVersion(WCHAR* text)
{
    int dots = 0;
    while (*text && dots < 3)
        if (*text++ == '.') ++dots;
    if (dots < 3 || !text[0] || !text[1]) return;
    for (++text; *text; ++text) {
        if (*text != ' ') continue;
        *text = 0;
        return;
    }
}

} // namespace

int GetDriverVersions(HANDLE printer, DriverVersions* versions)
{
    for (WCHAR* const version :
         {versions->coreUi, versions->coreDriver, versions->plugin, versions->renderingPlugin})
        lstrcpyW(version, kUnknown);
    const SpoolerRecord<DRIVER_INFO_4W> driver([printer](LPBYTE buffer, DWORD size, DWORD* needed) {
        return GetPrinterDriverW(printer, nullptr, kDriverLevel, buffer, size, needed);
    });
    if (!driver) return 0;

    const auto text = [&driver](const WCHAR* field) { return OrEmpty(driver.Text(field)); };
    CopyDataFileName(text(driver->pDataFile), versions);
    GetFileVersionText(text(driver->pDriverPath), versions->coreDriver);
    GetFileVersionText(text(driver->pConfigFile), versions->coreUi);
    const WCHAR* path = text(driver->pDependentFiles);
    for (; *path; path = text(path + lstrlenW(path) + 1))
        TakeModule(path, versions);
    return 1;
}

void GetFileVersionText(const WCHAR* path, WCHAR* text)
{
    text[0] = 0;
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    if (size == 0) return;
    const HeapBlock<BYTE> resource(GetProcessHeap(), size);
    if (!resource || !GetFileVersionInfoW(path, 0, size, resource.Get())) return;
    UINT units = 0;
    const WCHAR* const version = FileVersion(resource.Get(), &units);
    if (!version) return;
    lstrcpynW(text, version, static_cast<int>(std::min<UINT>(units, kVersionUnits - 1)) + 1);
    ShortenVersion(text);
}

} // namespace tintwerk
