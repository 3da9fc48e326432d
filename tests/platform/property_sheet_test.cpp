// Property sheets: which page hears what in which order, and how a sheet ends.
#include <gmock/gmock.h>

#include "src/resources/control_ids.h"
#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

struct Step
{
    UINT message;
    WPARAM wParam;
};

// A sheet of three pages that write down what they hear ("0 init", "0 notify -200").
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
            current->lines.push_back(std::to_string(record.lParam) + " init");
            for (const Step& step : std::exchange(current->steps, {}))
                PostMessageW(GetParent(page), step.message, step.wParam, 0);
        }
        const auto number = static_cast<int>(GetWindowLongPtrW(page, GWLP_USERDATA)) - 1;
        if (message != WM_NOTIFY || number < 0) return FALSE;
        const int code = static_cast<int>(reinterpret_cast<const NMHDR*>(lParam)->code);
        if (code > -200 || code < -299) return FALSE;
        if (code == static_cast<int>(PSN_KILLACTIVE)) current->LookAt(page, number);
        const LPARAM closing = reinterpret_cast<const PSHNOTIFY*>(lParam)->lParam;
        current->lines.push_back(std::to_string(number) + " notify " + std::to_string(code) +
                                 (closing ? " closing" : ""));
        SetWindowLongPtrW(page, DWLP_MSGRESULT, code == current->refused ? PSNRET_INVALID_NOCHANGEPAGE : 0);
        if (code == current->refused) current->refused = 0;
        return TRUE;
    }

    static inline Sheets* current = nullptr;
    std::vector<Step> steps;
    Lines lines;
    int refused = 0; // the first notification of this code
};

TEST_F(Sheets, TellTheirPagesWhatTheUserDoes)
{
    constexpr Step kOk{PSM_PRESSBUTTON, PSBTN_OK}, kCancel{PSM_PRESSBUTTON, PSBTN_CANCEL},
        kApply{PSM_PRESSBUTTON, PSBTN_APPLYNOW}, kSecond{PSM_SETCURSEL, 1}, kNone{PSM_SETCURSEL, 7};
    const Lines leave = {"0 notify -201"}, toSecond = {"0 notify -201", "1 init", "1 notify -200"},
                applyBoth = {"1 notify -201", "0 notify -202", "1 notify -202", "1 notify -200"},
                ok = {"0 notify -201", "0 notify -202 closing"}, cancel = {"0 notify -209", "0 notify -203"};
    const struct
    {
        const char* what;
        int refused;
        std::vector<Step> steps;
        std::vector<Lines> told; // after the first page was opened
        INT_PTR result;
    } cases[] = {
        {"OK", 0, {kOk}, {ok}, 1},
        {"Cancel", 0, {kCancel}, {cancel}, 0},
        {"a page that does not let go", static_cast<int>(PSN_KILLACTIVE), {kSecond, kOk}, {leave, ok}, 1},
        {"no such page", 0, {kNone, kCancel}, {leave, cancel}, 0},
        {"apply on the second page",
         0,
         {kSecond, kApply, kOk},
         {toSecond, applyBoth, {"1 notify -201", "0 notify -202 closing", "1 notify -202 closing"}},
         1},
        {"a page that does not apply",
         static_cast<int>(PSN_APPLY),
         {kSecond, kOk, kCancel},
         {toSecond,
          {"1 notify -201", "0 notify -202 closing"},
          {"1 notify -209", "0 notify -203", "1 notify -203"}},
         0},
        {"a page that does not cancel",
         static_cast<int>(PSN_QUERYCANCEL),
         {kCancel, kOk},
         {{"0 notify -209"}, ok},
         1},
    };
    for (const auto& row : cases) {
        lines.clear();
        refused = row.refused;
        EXPECT_EQ(Run(row.steps), row.result) << row.what;
        Lines told = {"0 init", "0 notify -200"};
        for (const Lines& step : row.told)
            told.insert(told.end(), step.begin(), step.end());
        EXPECT_EQ(lines, told) << row.what;
    }
}

} // namespace
} // namespace tintwerk
