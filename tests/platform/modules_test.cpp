// The program's own module: file name, resources, manifest, version information.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

TEST(Module, TellsItsFileName)
{
    WCHAR path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    EXPECT_EQ(static_cast<DWORD>(lstrlenW(path)), length);
    EXPECT_NE(Text::npos, Text(path).find(TEXT("test_")));

    WCHAR cut[9] = {'~', '~', '~', '~', '~', '~', '~', '~', '~'};
    EXPECT_EQ(5u, GetModuleFileNameW(nullptr, cut, 5));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ('~', cut[5]);
    EXPECT_EQ(GetModuleHandleW(nullptr), GetModuleHandleW(nullptr));
    EXPECT_EQ(nullptr, GetModuleHandleW(TEXT("no such module.dll")));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
}

TEST(Module, FindsItsResources)
{
    const HRSRC manifest = FindResourceW(nullptr, MAKEINTRESOURCEW(2), TEXT("#24"));
    ASSERT_NE(nullptr, manifest);
    const DWORD size = SizeofResource(nullptr, manifest);
    const auto* text = static_cast<const char*>(LockResource(LoadResource(nullptr, manifest)));
    EXPECT_EQ(0, std::memcmp(text, "<?xml", 5));
    EXPECT_NE(std::string::npos, std::string(text, size).find("</assembly>"));
    EXPECT_EQ(manifest, FindResourceW(GetModuleHandleW(nullptr), TEXT("#2"), MAKEINTRESOURCEW(24)));

    EXPECT_EQ(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(999), MAKEINTRESOURCEW(24)));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, GetLastError());
    EXPECT_EQ(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(999), MAKEINTRESOURCEW(999)));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, GetLastError());
}

TEST(ActivationContext, NeedsAManifest)
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    context.lpSource = path;
    context.hModule = GetModuleHandleW(nullptr);
    context.lpResourceName = MAKEINTRESOURCEW(2);
    const HANDLE made = CreateActCtxW(&context);
    ASSERT_NE(INVALID_HANDLE_VALUE, made);

    context.lpResourceName = MAKEINTRESOURCEW(77);
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateActCtxW(&context));
    context.cbSize = 3;
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateActCtxW(&context));
}

// What is there, the tests of the built module look up.
TEST(VersionInformation, IsRefusedWhereThereIsNone)
{
    const HRSRC resource = FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16));
    ASSERT_NE(nullptr, resource);
    const void* const block = LockResource(LoadResource(nullptr, resource));
    void* value = nullptr;
    UINT length = 99;
    EXPECT_TRUE(VerQueryValueW(block, TEXT("\\STRINGFILEINFO\\040904b0\\fileversion"), &value, &length));
    for (const WCHAR* path : {TEXT("\\StringFileInfo\\040904e4\\FileVersion"),
                              TEXT("\\StringFileInfo\\040904b0\\Nothing"), TEXT("\\Nothing")}) {
        length = 99;
        EXPECT_FALSE(VerQueryValueW(block, path, &value, &length));
        EXPECT_EQ(0u, length);
    }
}

} // namespace
} // namespace tintwerk
