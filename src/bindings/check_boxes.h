// The check boxes of the pages. Rows whose keyword begins with "noppd" are flags that no PPD feature stands
// for: their value lives in the process only.
#pragma once

#include <array>
#include <string_view>

#include "src/records/page_kinds.h"
#include "src/records/sheet_context.h"
#include "src/resources/control_ids.h"

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
    {kConsumptionPage,    "noppd_halvNoPrint",       IDC_CONSUMPTION_NO_PRINT}, // simulate the next job
    {kCorrectionPage,     "noppd_halvColorGamma",    IDC_CORRECTION_COLOR_GAMMA},
    {kMainPage,           "noppd_halvPSInterpreter", IDC_MAIN_PS_INTERPRETER},
    {kMainPage,           "halvPreview",             IDC_MAIN_PREVIEW},
    {kScreenPrintingPage, "noppd_Screenprinting_",   IDC_SCREEN_PRINTING},
    {kScreenPrintingPage, "noppd_ScreenMultiBlack",  IDC_SCREEN_MULTI_BLACK},
    {kScreenPrintingPage, "halvScreenCartridge0",    IDC_SCREEN_CARTRIDGE_0},
    {kScreenPrintingPage, "halvScreenCartridge1",    IDC_SCREEN_CARTRIDGE_1},
    {kScreenPrintingPage, "halvScreenCartridge2",    IDC_SCREEN_CARTRIDGE_2},
    {kScreenPrintingPage, "halvScreenCartridge3",    IDC_SCREEN_CARTRIDGE_3},
    {kScreenPrintingPage, "halvScreenCartridge4",    IDC_SCREEN_CARTRIDGE_4},
    {kScreenPrintingPage, "halvScreenCartridge5",    IDC_SCREEN_CARTRIDGE_5},
    {kScreenPrintingPage, "halvScreenCartridge6",    IDC_SCREEN_CARTRIDGE_6},
    {kScreenPrintingPage, "halvScreenCartridge7",    IDC_SCREEN_CARTRIDGE_7},
    {kScreenPrintingPage, "halvScreenCartridge8",    IDC_SCREEN_CARTRIDGE_8},
    {kScreenPrintingPage, "halvScreenCartridge9",    IDC_SCREEN_CARTRIDGE_9},
    {kScreenPrintingPage, "halvScreenCartridge10",   IDC_SCREEN_CARTRIDGE_10},
    {kScreenPrintingPage, "halvScreenCartridge11",   IDC_SCREEN_CARTRIDGE_11},
}};

// Companions of the cartridge rows, in the same order.
inline constexpr std::array<int, kCartridgeRows> kCartridgeIconIds{
    IDC_SCREEN_CARTRIDGE_ICON(0), IDC_SCREEN_CARTRIDGE_ICON(1), IDC_SCREEN_CARTRIDGE_ICON(2),
    IDC_SCREEN_CARTRIDGE_ICON(3), IDC_SCREEN_CARTRIDGE_ICON(4), IDC_SCREEN_CARTRIDGE_ICON(5),
    IDC_SCREEN_CARTRIDGE_ICON(6), IDC_SCREEN_CARTRIDGE_ICON(7), IDC_SCREEN_CARTRIDGE_ICON(8),
    IDC_SCREEN_CARTRIDGE_ICON(9), IDC_SCREEN_CARTRIDGE_ICON(10), IDC_SCREEN_CARTRIDGE_ICON(11)};
inline constexpr std::array<int, kCartridgeRows> kCartridgeNameIds{
    IDC_SCREEN_CARTRIDGE_NAME_0, IDC_SCREEN_CARTRIDGE_NAME_1, IDC_SCREEN_CARTRIDGE_NAME_2,
    IDC_SCREEN_CARTRIDGE_NAME_3, IDC_SCREEN_CARTRIDGE_NAME_4, IDC_SCREEN_CARTRIDGE_NAME_5,
    IDC_SCREEN_CARTRIDGE_NAME_6, IDC_SCREEN_CARTRIDGE_NAME_7, IDC_SCREEN_CARTRIDGE_NAME_8,
    IDC_SCREEN_CARTRIDGE_NAME_9, IDC_SCREEN_CARTRIDGE_NAME_10, IDC_SCREEN_CARTRIDGE_NAME_11};
// clang-format on

constexpr bool IsPpdFeature(const CheckBoxBinding& row)
{
    return !std::string_view(row.keyword).starts_with("noppd");
}

} // namespace tintwerk
