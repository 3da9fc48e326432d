// The check boxes of the pages. Rows whose keyword begins with "noppd" are flags that no PPD feature stands
// for: their value lives in the process only.
#pragma once

#include <array>
#include <string_view>

#include "src/records/page_kinds.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

struct CheckBoxBinding
{
    DWORD tabBit;
    const char* keyword; // PPD feature, or a name beginning with "noppd"
    int controlId;
};

enum CheckBoxRow : int
{
    kCheckNoPrint,
    kCheckColorGamma,
    kCheckPsInterpreter,
    kCheckPreview,
    kCheckScreenPrinting,
    kCheckMultiBlack,
    kCheckCartridge0, // the first of kCartridgeRows rows
};

// clang-format off
inline constexpr std::array<CheckBoxBinding, kCheckBoxRows> kCheckBoxTable{{
    // page               keyword                    control
    {kConsumptionPage,    "noppd_halvNoPrint",       12344}, // simulate the next job
    {kCorrectionPage,     "noppd_halvColorGamma",    12342},
    {kMainPage,           "noppd_halvPSInterpreter", 12345},
    {kMainPage,           "halvPreview",             12346},
    {kScreenPrintingPage, "noppd_Screenprinting_",   1118},
    {kScreenPrintingPage, "noppd_ScreenMultiBlack",  1239},
    {kScreenPrintingPage, "halvScreenCartridge0",    1240},
    {kScreenPrintingPage, "halvScreenCartridge1",    1241},
    {kScreenPrintingPage, "halvScreenCartridge2",    1242},
    {kScreenPrintingPage, "halvScreenCartridge3",    1243},
    {kScreenPrintingPage, "halvScreenCartridge4",    1245},
    {kScreenPrintingPage, "halvScreenCartridge5",    1246},
    {kScreenPrintingPage, "halvScreenCartridge6",    1247},
    {kScreenPrintingPage, "halvScreenCartridge7",    1248},
    {kScreenPrintingPage, "halvScreenCartridge8",    1249},
    {kScreenPrintingPage, "halvScreenCartridge9",    1253},
    {kScreenPrintingPage, "halvScreenCartridge10",   1254},
    {kScreenPrintingPage, "halvScreenCartridge11",   1258},
}};

// Companions of the cartridge rows, in the same order.
inline constexpr std::array<int, kCartridgeRows> kCartridgeIconIds{
    1261, 1262, 1263, 1264, 1265, 1266, 1267, 1268, 1269, 1270, 1271, 1272};
inline constexpr std::array<int, kCartridgeRows> kCartridgeNameIds{
    1286, 1275, 1276, 1277, 1278, 1279, 1280, 1281, 1282, 1283, 1284, 1285};
// clang-format on

constexpr bool IsPpdFeature(const CheckBoxBinding& row)
{
    return !std::string_view(row.keyword).starts_with("noppd");
}

} // namespace tintwerk
