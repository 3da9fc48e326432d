// The plug-in's part of the DEVMODE, byte for byte.
#include "src/plugin/private_devmode.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "src/records/private_devmode.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

constexpr DWORD kHalv = 0x48414C56;
constexpr DWORD kGarbage = 0xABABABAB;

using Record = std::array<DWORD, 6>; // size, signature, version, two settings, apply count

HRESULT Call(DWORD mode, const Record* input, Record* output, DWORD size = 24)
{
    OEMDMPARAM parameters{};
    parameters.cbSize = sizeof parameters;
    parameters.pOEMDMIn = const_cast<Record*>(input);
    parameters.pOEMDMOut = output;
    parameters.cbBufSize = size;
    return HandleDevMode(mode, &parameters);
}

TEST(PrivateDevmode, HasAFixedSize)
{
    for (const DWORD before : {0u, 24u, 4096u}) {
        OEMDMPARAM parameters{};
        parameters.cbBufSize = before;
        EXPECT_EQ(S_OK, HandleDevMode(OEMDM_SIZE, &parameters));
        EXPECT_EQ(24u, parameters.cbBufSize);
    }
}

TEST(PrivateDevmode, DefaultsLeaveTheApplyCount)
{
    Record output;
    output.fill(kGarbage);
    EXPECT_EQ(S_OK, Call(OEMDM_DEFAULT, nullptr, &output, 0));
    EXPECT_EQ((Record{24, kHalv, 5, 0, 0, kGarbage}), output);
    EXPECT_EQ(S_OK, Call(OEMDM_DEFAULT, nullptr, nullptr));
}

TEST(PrivateDevmode, ConvertsAndMerges)
{
    const Record blank{24, kHalv, 5, 11, 12, 99};
    const struct
    {
        const char* what;
        Record input;
        Record output;
        DWORD size;
        Record converted;
        Record merged;
    } cases[] = {
        // clang-format off
        {"same layout",      {24, kHalv, 5, 50, 60, 7},  blank,                  24, {24, kHalv, 5, 50, 60, 7},    {24, kHalv, 5, 50, 60, 7}},
        {"shorter input",    {16, kHalv, 4, 50, 60, 7},  blank,                  24, {24, kHalv, 5, 50, 0, 99},    {24, kHalv, 5, 50, 0, 99}},
        {"longer input",     {40, kHalv, 9, 50, 60, 7},  blank,                  64, {24, kHalv, 5, 50, 60, 7},    {24, kHalv, 5, 50, 60, 7}},
        {"empty input",      {0, kHalv, 9, 50, 60, 7},   blank,                  24, {24, kHalv, 5, 0, 0, 99},     {24, kHalv, 5, 0, 0, 99}},
        {"shorter output",   {24, kHalv, 5, 50, 60, 7},  {20, kHalv, 5, 1, 2, 3}, 24, {24, kHalv, 5, 50, 60, 3},   {24, kHalv, 5, 50, 60, 3}},
        {"other plug-in",    {24, 0x1234, 5, 50, 60, 7}, blank,                  24, {24, kHalv, 5, 0, 0, 99},     {24, kHalv, 5, 0, 0, 99}},
        {"other signature on both sides", {24, 0x1234, 5, 50, 60, 7}, {24, 0x1234, 5, 1, 2, 3}, 24,
                                                                 {24, 0x1234, 5, 50, 60, 7},   {24, kHalv, 5, 50, 60, 7}},
        {"out of range",     {24, kHalv, 5, 150, 100, 7}, blank,                 24, {24, kHalv, 5, 150, 100, 7},  {24, kHalv, 5, 0, 100, 7}},
        {"just out of range", {24, kHalv, 5, 100, 101, 7}, blank,                24, {24, kHalv, 5, 100, 101, 7},  {24, kHalv, 5, 100, 0, 7}},
        {"no room",          {24, kHalv, 5, 50, 60, 7},  {1, 2, 3, 400, 5, 6},   20, {1, 2, 3, 400, 5, 6},         {24, kHalv, 5, 0, 5, 6}},
        // clang-format on
    };
    for (const auto& row : cases) {
        Record output = row.output;
        EXPECT_EQ(S_OK, Call(OEMDM_CONVERT, &row.input, &output, row.size)) << row.what;
        EXPECT_EQ(row.converted, output) << row.what;
        output = row.output;
        EXPECT_EQ(S_OK, Call(OEMDM_MERGE, &row.input, &output, row.size)) << row.what;
        EXPECT_EQ(row.merged, output) << row.what;
    }
}

TEST(PrivateDevmode, ToldWhatBecameOfARecord)
{
    DebugLines lines;
    const Record record{24, kHalv, 5, 1, 2, 3}, other{24, 1, 5, 1, 2, 3};
    Record output = record;
    const struct
    {
        const Record* input;
        Record* output;
        DWORD size;
        const WCHAR* line;
        bool done;
    } cases[] = {
        {&record, &output, 24, TEXT("UI:  pOEMDevIn:\r\n"), true},
        {&record, &output, 24, TEXT("UI:  Converting private OEM Devmode.\r\n"), true},
        {&other, &output, 24, TEXT("UI:  Unknown DEVMODE signature, pOEMDMIn ignored.\r\n"), true},
        {nullptr, &output, 24, TEXT("ERROR UI:  ConvertOEMDevmode() invalid parameters.\r\n"), false},
        {&record, nullptr, 24, TEXT("ERROR UI:  ConvertOEMDevmode() invalid parameters.\r\n"), false},
        {&record, &output, 23, TEXT("ERROR UI:  ConvertOEMDevmode() invalid parameters.\r\n"), false},
    };
    for (const auto& row : cases) {
        lines.Take();
        EXPECT_EQ(row.done, ConvertOEMDevmode(row.input, row.output, row.size));
        EXPECT_TRUE(lines.Contains(row.line));
    }
}

TEST(PrivateDevmode, RefusesOtherModes)
{
    OEMDMPARAM parameters{};
    for (const DWORD mode : {0u, 5u, 0xFFFFFFFFu}) {
        DebugLines lines;
        SetLastError(0);
        EXPECT_EQ(E_FAIL, HandleDevMode(mode, &parameters));
        EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
        EXPECT_EQ(3u, lines.Lines().size());
        EXPECT_TRUE(lines.Contains(TEXT("ERROR UI:  DevMode() ERROR_INVALID_PARAMETER.\r\n")));
    }
    DebugLines lines;
    EXPECT_EQ(E_FAIL, HandleDevMode(OEMDM_DEFAULT, nullptr));
    EXPECT_TRUE(lines.Contains(TEXT("UI:  IOemUI:DevMode(2, 0) entry.\r\n")));
    EXPECT_TRUE(lines.Contains(TEXT("UI:  \tdwMode = 2, pOemDMParam = 0.\r\n")));
}

} // namespace
} // namespace tintwerk
