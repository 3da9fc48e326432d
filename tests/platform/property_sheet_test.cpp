// Property sheets: which page hears what in which order, and how a sheet ends.
#include <gmock/gmock.h>

#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kApplyButton = 0x3021;

// A sheet of three pages that write down what they hear ("0 init", "0 notify -200", "0 released").
class Sheets : public testing::Test
{
protected:
    Sheets()
    {
        const INITCOMMONCONTROLSEX families{sizeof families, ICC_WIN95_CLASSES};
        InitCommonControlsEx(&families);
        current = this;
    }
    ~Sheets() override
    {
        if (IsWindow(sheet)) DestroyWindow(sheet);
        Pump();
    }
    HPROPSHEETPAGE MakePage(int number)
    {
        PROPSHEETPAGEW page{};
        page.dwSize = sizeof page;
        page.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE | PSP_USECALLBACK;
        page.pResource = TemplateIn(words);
        page.pszTitle = TEXT("Page");
        page.pfnDlgProc = Procedure;
        page.lParam = number;
        page.pfnCallback = [](HWND, UINT message, PROPSHEETPAGEW* record) -> UINT {
            if (message == PSPCB_RELEASE)
                current->lines.push_back(std::to_string(record->lParam) + " released");
            return 1;
        };
        return CreatePropertySheetPageW(&page);
    }
    INT_PTR Open(DWORD flags)
    {
        HPROPSHEETPAGE pages[] = {MakePage(0), MakePage(1), MakePage(2)};
        PROPSHEETHEADERW header{};
        header.dwSize = sizeof header;
        header.dwFlags = flags;
        header.pszCaption = TEXT("Sheet");
        header.nPages = 3;
        header.phpage = pages;
        return PropertySheetW(&header);
    }
    void OpenModeless()
    {
        sheet = reinterpret_cast<HWND>(Open(PSH_MODELESS));
        Pump();
        lines.clear();
    }
    Lines During(const std::function<void()>& action)
    {
        lines.clear();
        action();
        return std::exchange(lines, {});
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(sheet, message, wParam, lParam);
    }
    HWND Page(int index) { return reinterpret_cast<HWND>(Send(PSM_INDEXTOHWND, static_cast<WPARAM>(index))); }
    bool CanApply() { return IsWindowEnabled(GetDlgItem(sheet, kApplyButton)); }

    static INT_PTR CALLBACK Procedure(HWND page, UINT message, WPARAM, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) {
            const auto& record = *reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
            SetWindowLongPtrW(page, GWLP_USERDATA, record.lParam + 1);
            current->lines.push_back(std::to_string(record.lParam) + " init");
            if (current->onInit) current->onInit(GetParent(page));
        }
        const LONG_PTR number = GetWindowLongPtrW(page, GWLP_USERDATA) - 1;
        if (message != WM_NOTIFY || number < 0) return FALSE;
        const int code = static_cast<int>(reinterpret_cast<const NMHDR*>(lParam)->code);
        if (code > -200 || code < -299) return FALSE;
        const LPARAM closing = reinterpret_cast<const PSHNOTIFY*>(lParam)->lParam;
        current->lines.push_back(std::to_string(number) + " notify " + std::to_string(code) +
                                 (closing ? " closing" : ""));
        SetWindowLongPtrW(page, DWLP_MSGRESULT, code == current->refused ? PSNRET_INVALID_NOCHANGEPAGE : 0);
        return TRUE;
    }

    static inline Sheets* current = nullptr;
    const std::vector<WORD> words =
        DialogWords(kChildDialog, 271, 127, {{TEXT("Edit"), 5, WS_TABSTOP, 5, 5, 40, 14}}, true);
    HWND sheet = nullptr;
    Lines lines;
    int refused = 0;
    std::function<void(HWND sheet)> onInit;
};

TEST_F(Sheets, MakePagesWhenTheyAreShown)
{
    OpenModeless();
    EXPECT_NE(Page(0), nullptr);
    EXPECT_EQ(Page(1), nullptr);
    EXPECT_EQ(Page(9), nullptr);
    EXPECT_THAT(During([&] { EXPECT_TRUE(Send(PSM_SETCURSEL, 1)); }),
                ElementsAre("0 notify -201", "1 init", "1 notify -200"));
    EXPECT_EQ(reinterpret_cast<HWND>(Send(PSM_GETCURRENTPAGEHWND)), Page(1));
    EXPECT_EQ(Send(PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(Page(1))), 1);
    EXPECT_FALSE(IsWindowVisible(Page(0)));
    EXPECT_TRUE(IsWindowVisible(Page(1)));
    EXPECT_THAT(During([&] { Send(PSM_SETCURSEL, 0); }), ElementsAre("1 notify -201", "0 notify -200"));
    EXPECT_THAT(During([&] { EXPECT_FALSE(Send(PSM_SETCURSEL, 7)); }), ElementsAre("0 notify -201"));
    refused = static_cast<int>(PSN_KILLACTIVE);
    EXPECT_FALSE(Send(PSM_SETCURSEL, 1));
    EXPECT_EQ(reinterpret_cast<HWND>(Send(PSM_GETCURRENTPAGEHWND)), Page(0));
    const auto tab = reinterpret_cast<HWND>(Send(PSM_GETTABCONTROL));
    EXPECT_EQ(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0), 3);
}

TEST_F(Sheets, FollowAChoiceOfATab)
{
    OpenModeless();
    const auto tab = reinterpret_cast<HWND>(Send(PSM_GETTABCONTROL));
    EXPECT_THAT(During([&] { SendMessageW(tab, TCM_SETCURFOCUS, 2, 0); }),
                ElementsAre("0 notify -201", "2 init", "2 notify -200"));
    EXPECT_EQ(SendMessageW(tab, TCM_GETCURSEL, 0, 0), 2);
}

TEST_F(Sheets, ApplyEveryPageThatWasMade)
{
    OpenModeless();
    EXPECT_FALSE(CanApply());
    Send(PSM_CHANGED, reinterpret_cast<WPARAM>(Page(0)));
    EXPECT_TRUE(CanApply());
    Send(PSM_UNCHANGED, reinterpret_cast<WPARAM>(Page(0)));
    EXPECT_FALSE(CanApply());
    Send(PSM_SETCURSEL, 1);
    EXPECT_THAT(During([&] { EXPECT_TRUE(Send(PSM_APPLY)); }),
                ElementsAre("1 notify -201", "0 notify -202", "1 notify -202", "1 notify -200"));
    refused = static_cast<int>(PSN_APPLY);
    EXPECT_THAT(During([&] { EXPECT_FALSE(Send(PSM_APPLY)); }),
                ElementsAre("1 notify -201", "0 notify -202"));
    EXPECT_THAT(During([&] { Send(WM_COMMAND, IDOK); }),
                ElementsAre("1 notify -201", "0 notify -202 closing"));
    EXPECT_NE(Send(PSM_GETCURRENTPAGEHWND), 0); // still open
    refused = 0;
    Send(PSM_CHANGED, reinterpret_cast<WPARAM>(Page(0)));
    Send(WM_COMMAND, kApplyButton);
    EXPECT_FALSE(CanApply());
    EXPECT_THAT(During([&] { Send(WM_COMMAND, IDOK); }),
                ElementsAre("1 notify -201", "0 notify -202 closing", "1 notify -202 closing"));
    EXPECT_EQ(Send(PSM_GETCURRENTPAGEHWND), 0);
    EXPECT_THAT(During([&] { DestroyWindow(sheet); }), ElementsAre("0 released", "1 released", "2 released"));
}

TEST_F(Sheets, AskBeforeTheyAreCancelled)
{
    OpenModeless();
    refused = static_cast<int>(PSN_QUERYCANCEL);
    EXPECT_THAT(During([&] { Send(WM_COMMAND, IDCANCEL); }), ElementsAre("0 notify -209"));
    EXPECT_NE(Send(PSM_GETCURRENTPAGEHWND), 0);
    refused = 0;
    EXPECT_THAT(During([&] { Send(WM_COMMAND, IDCANCEL); }), ElementsAre("0 notify -209", "0 notify -203"));
    EXPECT_EQ(Send(PSM_GETCURRENTPAGEHWND), 0);
}

TEST_F(Sheets, StandAroundTheirLargestPage)
{
    OpenModeless();
    RECT page;
    GetWindowRect(Page(0), &page);
    MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&page), 2);
    RECT client;
    GetClientRect(sheet, &client);
    EXPECT_NEAR(page.left, 11, 1);
    EXPECT_NEAR(page.top, 29, 1);
    EXPECT_NEAR(page.right - page.left, 474, 1);
    EXPECT_NEAR(page.bottom - page.top, 206, 1);
    EXPECT_NEAR(client.right, 496, 1);
    EXPECT_NEAR(client.bottom, 276, 1);
}

TEST_F(Sheets, ModalOnesReturnHowTheyEnded)
{
    const struct
    {
        WPARAM button;
        INT_PTR result;
        Lines told;
    } cases[] = {
        {PSBTN_OK, 1, {"0 init", "0 notify -200", "0 notify -201", "0 notify -202 closing"}},
        {PSBTN_CANCEL, 0, {"0 init", "0 notify -200", "0 notify -209", "0 notify -203"}},
    };
    for (const auto& row : cases) {
        onInit = [&row](HWND window) { PostMessageW(window, PSM_PRESSBUTTON, row.button, 0); };
        Lines told = row.told;
        told.insert(told.end(), {"0 released", "1 released", "2 released"});
        EXPECT_EQ(During([&] { EXPECT_EQ(Open(0), row.result); }), told);
    }
    PROPSHEETPAGEW tooShort{};
    tooShort.dwSize = 8;
    EXPECT_EQ(CreatePropertySheetPageW(&tooShort), nullptr);
}

} // namespace
} // namespace tintwerk
