// The program's own module: file name, resources, manifest, version information.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

TEST(Module, TellsItsFileName)
{
    WCHAR path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    EXPECT_EQ(static_cast<DWORD>(lstrlenW(path)), length);
    EXPECT_NE(Text::npos, Text(path).find(TEXT("test_platform")));

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

// One block of a version resource, as the resource compiler writes it.
std::vector<BYTE> Block(const WCHAR* key, WORD type, WORD valueLength, const std::vector<BYTE>& value,
                        const std::vector<std::vector<BYTE>>& children)
{
    std::vector<BYTE> bytes(6);
    const auto align = [&bytes] { bytes.resize((bytes.size() + 3) & ~std::size_t{3}); };
    const auto* const first = reinterpret_cast<const BYTE*>(key);
    bytes.insert(bytes.end(), first, first + (static_cast<size_t>(lstrlenW(key)) + 1) * sizeof(WCHAR));
    align();
    bytes.insert(bytes.end(), value.begin(), value.end());
    for (const std::vector<BYTE>& child : children) {
        align();
        bytes.insert(bytes.end(), child.begin(), child.end());
    }
    const WORD header[] = {static_cast<WORD>(bytes.size()), valueLength, type};
    std::memcpy(bytes.data(), header, sizeof header);
    return bytes;
}

std::vector<BYTE> TextBlock(const WCHAR* key, const WCHAR* text)
{
    const auto* const first = reinterpret_cast<const BYTE*>(text);
    const WORD length = static_cast<WORD>(lstrlenW(text) + 1);
    return Block(key, 1, length, {first, first + length * sizeof(WCHAR)}, {});
}

TEST(VersionInformation, IsQueriedByPath)
{
    const std::vector<BYTE> translation{0x09, 0x04, 0xB0, 0x04};
    std::vector<BYTE> block =
        Block(TEXT("VS_VERSION_INFO"), 0, 52, std::vector<BYTE>(52, 1),
              {Block(TEXT("StringFileInfo"), 1, 0, {},
                     {Block(TEXT("040904B0"), 1, 0, {},
                            {TextBlock(TEXT("CompanyName"), TEXT("H")),
                             TextBlock(TEXT("FileVersion"), TEXT("5.0.1 (x)"))})}),
               Block(TEXT("VarFileInfo"), 1, 0, {}, {Block(TEXT("Translation"), 0, 4, translation, {})})});
    const struct
    {
        const WCHAR* path;
        bool found;
        UINT length;
    } cases[] = {
        {TEXT("\\"), true, 52},
        {TEXT("\\VarFileInfo\\Translation"), true, 4},
        {TEXT("\\StringFileInfo\\040904b0\\FileVersion"), true, 10},
        {TEXT("\\STRINGFILEINFO\\040904b0\\fileversion"), true, 10},
        {TEXT("\\StringFileInfo\\040904b0\\CompanyName"), true, 2},
        {TEXT("\\StringFileInfo\\040904e4\\FileVersion"), false, 0},
        {TEXT("\\StringFileInfo\\040904b0\\ProductVersion"), false, 0},
        {TEXT("\\Nothing"), false, 0},
    };
    for (const auto& row : cases) {
        void* value = nullptr;
        UINT length = 99;
        EXPECT_EQ(row.found, VerQueryValueW(block.data(), row.path, &value, &length) != FALSE)
            << Text(row.path).size();
        EXPECT_EQ(row.length, length) << Text(row.path).size();
        if (row.length == 10) {
            EXPECT_EQ(TEXT("5.0.1 (x)"), Text(static_cast<const WCHAR*>(value)));
        }
    }
}

} // namespace
} // namespace tintwerk
