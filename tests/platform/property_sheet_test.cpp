// Property sheets: which page hears what in which order, and how a sheet ends.
#include <gmock/gmock.h>

#include "src/resources/control_ids.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

struct Step
{
    UINT message;
    WPARAM wParam;
};

// A sheet of three pages that write down when they are made ("0") and what they hear ("0-200").
class Sheets : public testing::Test
{
protected:
    Sheets() { current = this; }

    HPROPSHEETPAGE MakePage(int number)
    {
        PROPSHEETPAGEW page{};
        page.dwSize = sizeof page;
        page.dwFlags = PSP_USETITLE;
        page.hInstance = GetModuleHandleW(nullptr);
        page.pszTemplate = MAKEINTRESOURCEW(IDD_SCREEN_PRINTING);
        page.pszTitle = TEXT("Page");
        page.pfnDlgProc = Procedure;
        page.lParam = number;
        return CreatePropertySheetPageW(&page);
    }
    // Runs a sheet to which the steps are posted when its first page is made.
    INT_PTR Run(const std::vector<Step>& posted)
    {
        steps = posted;
        HPROPSHEETPAGE pages[] = {MakePage(0), MakePage(1), MakePage(2)};
        PROPSHEETHEADERW header{};
        header.dwSize = sizeof header;
        header.pszCaption = TEXT("Sheet");
        header.nPages = 3;
        header.phpage = pages;
        return PropertySheetW(&header);
    }
    // The sheet knows the page in front, and those behind it once they were made.
    static void LookAt(HWND page, int number)
    {
        const HWND sheet = GetParent(page);
        EXPECT_EQ(reinterpret_cast<HWND>(SendMessageW(sheet, PSM_INDEXTOHWND, number, 0)), page);
        EXPECT_EQ(SendMessageW(sheet, PSM_INDEXTOHWND, 2, 0), 0) << "not made yet";
        EXPECT_EQ(reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0)), page);
        RECT place, client;
        GetWindowRect(page, &place);
        GetClientRect(sheet, &client);
        EXPECT_NEAR(client.right - (place.right - place.left), 22, 2);
        EXPECT_NEAR(client.bottom - (place.bottom - place.top), 70, 2);
    }

    static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) {
            const auto& record = *reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
            SetWindowLongPtrW(page, GWLP_USERDATA, record.lParam + 1);
            current->told += " " + std::to_string(record.lParam);
            for (const Step& step : std::exchange(current->steps, {}))
                PostMessageW(GetParent(page), step.message, step.wParam, 0);
        }
        const auto number = static_cast<int>(GetWindowLongPtrW(page, GWLP_USERDATA)) - 1;
        if (message != WM_NOTIFY || number < 0) return FALSE;
        const int code = static_cast<int>(reinterpret_cast<const NMHDR*>(lParam)->code);
        if (code > -200 || code < -299) return FALSE;
        if (code == static_cast<int>(PSN_KILLACTIVE)) current->LookAt(page, number);
        const LPARAM closing = reinterpret_cast<const PSHNOTIFY*>(lParam)->lParam;
        current->told += " " + std::to_string(number) + std::to_string(code) + (closing ? "!" : "");
        SetWindowLongPtrW(page, DWLP_MSGRESULT, code == current->refused ? PSNRET_INVALID_NOCHANGEPAGE : 0);
        if (code == current->refused) current->refused = 0;
        return TRUE;
    }

    static inline Sheets* current = nullptr;
    std::vector<Step> steps;
    std::string told;
    int refused = 0; // the first notification of this code
};

TEST_F(Sheets, TellTheirPagesWhatTheUserDoes)
{
    constexpr Step kOk{PSM_PRESSBUTTON, PSBTN_OK}, kCancel{PSM_PRESSBUTTON, PSBTN_CANCEL},
        kApply{PSM_PRESSBUTTON, PSBTN_APPLYNOW}, kSecond{PSM_SETCURSEL, 1}, kNone{PSM_SETCURSEL, 7};
    // 200: in front, 201: leaves, 202: applies, 203: is cancelled, 209: may it be cancelled?
    const struct
    {
        int refused;
        std::vector<Step> steps;
        const char* told; // after the first page was opened; "!": the sheet closes
        INT_PTR result;
    } cases[] = {
        // clang-format off
        {0,   {kOk},                     " 0-201 0-202!",                                                      1},
        {0,   {kCancel},                 " 0-209 0-203",                                                       0},
        {201, {kSecond, kOk},            " 0-201 0-201 0-202!",                                                1},
        {0,   {kNone, kCancel},          " 0-201 0-209 0-203",                                                 0},
        {0,   {kSecond, kApply, kOk},    " 0-201 1 1-200 1-201 0-202 1-202 1-200 1-201 0-202! 1-202!",         1},
        {202, {kSecond, kOk, kCancel},   " 0-201 1 1-200 1-201 0-202! 1-209 0-203 1-203",                      0},
        {209, {kCancel, kOk},            " 0-209 0-201 0-202!",                                                1},
        // clang-format on
    };
    for (const auto& row : cases) {
        told.clear();
        refused = -row.refused;
        EXPECT_EQ(Run(row.steps), row.result) << row.told;
        EXPECT_EQ(told, std::string(" 0 0-200") + row.told);
    }
}

} // namespace
} // namespace tintwerk
