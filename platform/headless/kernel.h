// The system services of the headless platform: last error, heaps, text and the wide printf dialect, modules
// and their resources, version information, activation contexts, processes, files, the clock, and the base of
// COM. Each function behaves as the platform's own does as far as the plug-in, the host and the tests can
// see.
#pragma once

#include "platform/headless/types.h"

// --- Errors

constexpr LONG ERROR_SUCCESS = 0;
constexpr LONG NO_ERROR = 0;
constexpr LONG ERROR_INVALID_FUNCTION = 1;
constexpr LONG ERROR_FILE_NOT_FOUND = 2;
constexpr LONG ERROR_PATH_NOT_FOUND = 3;
constexpr LONG ERROR_ACCESS_DENIED = 5;
constexpr LONG ERROR_INVALID_HANDLE = 6;
constexpr LONG ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr LONG ERROR_BAD_FORMAT = 11;
constexpr LONG ERROR_OUTOFMEMORY = 14;
constexpr LONG ERROR_SHARING_VIOLATION = 32;
constexpr LONG ERROR_NOT_SUPPORTED = 50;
constexpr LONG ERROR_FILE_EXISTS = 80;
constexpr LONG ERROR_INVALID_PARAMETER = 87;
constexpr LONG ERROR_DISK_FULL = 112;
constexpr LONG ERROR_INSUFFICIENT_BUFFER = 122;
constexpr LONG ERROR_INVALID_NAME = 123;
constexpr LONG ERROR_INVALID_LEVEL = 124;
constexpr LONG ERROR_MOD_NOT_FOUND = 126;
constexpr LONG ERROR_PROC_NOT_FOUND = 127;
constexpr LONG ERROR_DIR_NOT_EMPTY = 145;
constexpr LONG ERROR_ALREADY_EXISTS = 183;
constexpr LONG ERROR_MORE_DATA = 234;
constexpr LONG ERROR_NO_MORE_ITEMS = 259;
constexpr LONG ERROR_INVALID_FLAGS = 1004;
constexpr LONG ERROR_KEY_DELETED = 1018;
constexpr LONG ERROR_NO_UNICODE_TRANSLATION = 1113;
constexpr LONG ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr LONG ERROR_CONTROL_ID_NOT_FOUND = 1421;
constexpr LONG ERROR_UNKNOWN_PRINTER_DRIVER = 1797;
constexpr LONG ERROR_INVALID_PRINTER_NAME = 1801;
constexpr LONG ERROR_PRINTER_ALREADY_EXISTS = 1802;
constexpr LONG ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
constexpr LONG ERROR_RESOURCE_TYPE_NOT_FOUND = 1813;
constexpr LONG ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
constexpr LONG ERROR_RESOURCE_LANG_NOT_FOUND = 1815;
constexpr LONG ERROR_INVALID_FORM_NAME = 1902;
constexpr LONG ERROR_SXS_KEY_NOT_FOUND = 14007;

constexpr HRESULT HRESULT_FROM_WIN32(DWORD error)
{
    return error ? static_cast<HRESULT>((error & 0xffff) | 0x80070000) : S_OK;
}

DWORD GetLastError();
void SetLastError(DWORD error);

// --- Heaps

constexpr DWORD HEAP_NO_SERIALIZE = 0x1;
constexpr DWORD HEAP_GENERATE_EXCEPTIONS = 0x4;
constexpr DWORD HEAP_ZERO_MEMORY = 0x8;
constexpr UINT LMEM_FIXED = 0x0;
constexpr UINT LMEM_ZEROINIT = 0x40;
constexpr UINT LPTR = 0x40;

HANDLE GetProcessHeap();
HANDLE HeapCreate(DWORD options, SIZE_T initialSize, SIZE_T maximumSize);
BOOL HeapDestroy(HANDLE heap);
LPVOID HeapAlloc(HANDLE heap, DWORD flags, SIZE_T bytes);
LPVOID HeapReAlloc(HANDLE heap, DWORD flags, LPVOID block, SIZE_T bytes);
BOOL HeapFree(HANDLE heap, DWORD flags, LPVOID block);
SIZE_T HeapSize(HANDLE heap, DWORD flags, LPCVOID block);
HLOCAL LocalAlloc(UINT flags, SIZE_T bytes);
HLOCAL LocalFree(HLOCAL block);

#define ZeroMemory(destination, bytes) std::memset((destination), 0, (bytes))
#define CopyMemory(destination, source, bytes) std::memcpy((destination), (source), (bytes))

LONG InterlockedIncrement(LONG volatile* value);
LONG InterlockedDecrement(LONG volatile* value);
LONG InterlockedExchange(LONG volatile* target, LONG value);
LONG InterlockedCompareExchange(LONG volatile* target, LONG value, LONG comparand);

struct SRWLOCK
{
    PVOID Ptr;
};
void AcquireSRWLockExclusive(SRWLOCK* lock);
void ReleaseSRWLockExclusive(SRWLOCK* lock);

// --- Text

constexpr UINT CP_ACP = 0;
constexpr UINT CP_UTF8 = 65001;
constexpr DWORD MB_PRECOMPOSED = 0x1;
constexpr DWORD MB_ERR_INVALID_CHARS = 0x8;
constexpr DWORD WC_ERR_INVALID_CHARS = 0x80;
constexpr DWORD WC_NO_BEST_FIT_CHARS = 0x400;
constexpr int CSTR_LESS_THAN = 1;
constexpr int CSTR_EQUAL = 2;
constexpr int CSTR_GREATER_THAN = 3;

int lstrlenA(LPCSTR text);
int lstrlenW(LPCWSTR text);
int lstrcmpA(LPCSTR a, LPCSTR b);
int lstrcmpW(LPCWSTR a, LPCWSTR b);
int lstrcmpiA(LPCSTR a, LPCSTR b);
int lstrcmpiW(LPCWSTR a, LPCWSTR b);
LPSTR lstrcpyA(LPSTR destination, LPCSTR source);
LPWSTR lstrcpyW(LPWSTR destination, LPCWSTR source);
LPSTR lstrcpynA(LPSTR destination, LPCSTR source, int size);
LPWSTR lstrcpynW(LPWSTR destination, LPCWSTR source, int size);
LPSTR lstrcatA(LPSTR destination, LPCSTR source);
LPWSTR lstrcatW(LPWSTR destination, LPCWSTR source);
int CompareStringOrdinal(LPCWSTR a, int lengthA, LPCWSTR b, int lengthB, BOOL ignoreCase);
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int bytes, LPWSTR wide, int units);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR text, int bytes,
                        LPCSTR defaultCharacter, LPBOOL usedDefault);
int MulDiv(int number, int numerator, int denominator);

// The wide printf dialect of the system's runtime: "%s" is 16-bit and "%S" 8-bit text. They return the number
// of characters, -1 when the text does not fit (the buffer is then full and without terminator).
int _vsnwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments);
int _snwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, ...);
int _vscwprintf(const WCHAR* format, va_list arguments);
int wsprintfW(WCHAR* buffer, const WCHAR* format, ...);

// Receives every diagnostic line of the process; platform/debug_sink.h listens.
void OutputDebugStringW(LPCWSTR line);

// --- Modules, resources, version information

constexpr DWORD DLL_PROCESS_DETACH = 0;
constexpr DWORD DLL_PROCESS_ATTACH = 1;
constexpr DWORD DLL_THREAD_ATTACH = 2;
constexpr DWORD DLL_THREAD_DETACH = 3;

#define RT_CURSOR MAKEINTRESOURCEW(1)
#define RT_BITMAP MAKEINTRESOURCEW(2)
#define RT_ICON MAKEINTRESOURCEW(3)
#define RT_MENU MAKEINTRESOURCEW(4)
#define RT_DIALOG MAKEINTRESOURCEW(5)
#define RT_STRING MAKEINTRESOURCEW(6)
#define RT_RCDATA MAKEINTRESOURCEW(10)
#define RT_VERSION MAKEINTRESOURCEW(16)
#define RT_MANIFEST MAKEINTRESOURCEW(24)

constexpr LANGID MAKELANGID(WORD primary, WORD sub)
{
    return static_cast<LANGID>((sub << 10) | primary);
}
constexpr WORD LANG_NEUTRAL = 0;
constexpr WORD SUBLANG_NEUTRAL = 0;

HMODULE GetModuleHandleW(LPCWSTR name);
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size);

using ENUMRESNAMEPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR parameter);
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL data);
DWORD SizeofResource(HMODULE module, HRSRC resource);
BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW procedure, LONG_PTR parameter);

constexpr DWORD VS_FFI_SIGNATURE = 0xFEEF04BD;
struct VS_FIXEDFILEINFO
{
    DWORD dwSignature;
    DWORD dwStrucVersion;
    DWORD dwFileVersionMS;
    DWORD dwFileVersionLS;
    DWORD dwProductVersionMS;
    DWORD dwProductVersionLS;
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};

// The version resource of a Windows module on disk, of a compiled resource file (.res), or, for a path that
// ends in
// "\PSTWUI.DLL" where no such file is, of the plug-in that is linked into this process.
DWORD GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD ignored);
BOOL GetFileVersionInfoW(LPCWSTR path, DWORD ignored, DWORD size, LPVOID data);
BOOL VerQueryValueW(LPCVOID block, LPCWSTR subBlock, LPVOID* value, PUINT length);

constexpr DWORD VER_PLATFORM_WIN32_NT = 2;
struct OSVERSIONINFOW
{
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
};
using LPOSVERSIONINFOW = OSVERSIONINFOW*;
struct OSVERSIONINFOEXW
{
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
};
BOOL GetVersionExW(LPOSVERSIONINFOW information);

// --- Activation contexts

constexpr DWORD ACTCTX_FLAG_PROCESSOR_ARCHITECTURE_VALID = 0x1;
constexpr DWORD ACTCTX_FLAG_LANGID_VALID = 0x2;
constexpr DWORD ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID = 0x4;
constexpr DWORD ACTCTX_FLAG_RESOURCE_NAME_VALID = 0x8;
constexpr DWORD ACTCTX_FLAG_SET_PROCESS_DEFAULT = 0x10;
constexpr DWORD ACTCTX_FLAG_APPLICATION_NAME_VALID = 0x20;
constexpr DWORD ACTCTX_FLAG_HMODULE_VALID = 0x80;

struct ACTCTXW
{
    ULONG cbSize;
    DWORD dwFlags;
    LPCWSTR lpSource;
    USHORT wProcessorArchitecture;
    LANGID wLangId;
    LPCWSTR lpAssemblyDirectory;
    LPCWSTR lpResourceName;
    LPCWSTR lpApplicationName;
    HMODULE hModule;
};
using PCACTCTXW = const ACTCTXW*;
HANDLE CreateActCtxW(PCACTCTXW context);
void AddRefActCtx(HANDLE context);
void ReleaseActCtx(HANDLE context);
BOOL ActivateActCtx(HANDLE context, ULONG_PTR* cookie);
BOOL DeactivateActCtx(DWORD flags, ULONG_PTR cookie);

// --- Processes, time, files

constexpr DWORD DETACHED_PROCESS = 0x8;
constexpr DWORD INFINITE = 0xFFFFFFFF;

struct SECURITY_ATTRIBUTES
{
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
using PSECURITY_DESCRIPTOR = PVOID;
using ACCESS_MASK = DWORD;

struct STARTUPINFOA
{
    DWORD cb;
    LPSTR lpReserved;
    LPSTR lpDesktop;
    LPSTR lpTitle;
    DWORD dwX, dwY, dwXSize, dwYSize;
    DWORD dwXCountChars, dwYCountChars, dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput, hStdOutput, hStdError;
};
using LPSTARTUPINFOA = STARTUPINFOA*;
struct PROCESS_INFORMATION
{
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

// Starts a program of this system: the first word of the command line (in quotes or up to a blank), its
// backslashes read as slashes; nobody waits for it.
BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES processAttributes,
                    LPSECURITY_ATTRIBUTES threadAttributes, BOOL inheritHandles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startup,
                    LPPROCESS_INFORMATION information);
BOOL CloseHandle(HANDLE handle);
DWORD GetCurrentThreadId();
HANDLE GetCurrentProcess(); // a value that stands for this process; never closed
DWORD GetCurrentProcessId();

union LARGE_INTEGER {
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;
ULONGLONG GetTickCount64();
DWORD GetTickCount();
BOOL QueryPerformanceCounter(LARGE_INTEGER* count);
BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency);
void Sleep(DWORD milliseconds);

constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 0x1;
constexpr DWORD FILE_SHARE_WRITE = 0x2;
constexpr DWORD FILE_SHARE_DELETE = 0x4;
constexpr DWORD MOVEFILE_REPLACE_EXISTING = 0x1;
constexpr DWORD MOVEFILE_WRITE_THROUGH = 0x8;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD OPEN_ALWAYS = 4;
constexpr DWORD TRUNCATE_EXISTING = 5;
constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;

struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;

// Paths may be written with backslashes, which are read as slashes; case counts.
HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD flags, HANDLE pattern);
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD flags, HANDLE pattern);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD bytes, LPDWORD read, LPOVERLAPPED overlapped);
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped);
BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method);
BOOL SetEndOfFile(HANDLE file);
BOOL FlushFileBuffers(HANDLE file);
BOOL MoveFileExA(LPCSTR path, LPCSTR newPath, DWORD flags);
BOOL MoveFileExW(LPCWSTR path, LPCWSTR newPath, DWORD flags);
BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size);
DWORD GetFileAttributesA(LPCSTR path);
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes);
BOOL DeleteFileA(LPCSTR path);
BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL RemoveDirectoryA(LPCSTR path);
DWORD GetTempPathA(DWORD size, LPSTR path);
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size);
BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);

// --- COM base

struct IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};
using LPUNKNOWN = IUnknown*;
struct IClassFactory : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;
};
inline constexpr GUID IID_IUnknown{0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID IID_IClassFactory{0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
HRESULT CoInitialize(LPVOID reserved);
void CoUninitialize();
