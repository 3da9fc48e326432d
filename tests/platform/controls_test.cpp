// What the control kinds answer, and what they tell their parent in which order.
#include <gmock/gmock.h>

#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<ControlSpec> kControls = {
    {TEXT("Button"), 1, BS_PUSHBUTTON | WS_TABSTOP, 5, 5, 50, 14, TEXT("Push")},
    {TEXT("Button"), 2, BS_AUTOCHECKBOX | WS_TABSTOP, 60, 5, 50, 10, TEXT("Check")},
    {TEXT("Button"), 3, BS_AUTORADIOBUTTON | WS_GROUP, 120, 5, 50, 10, TEXT("One")},
    {TEXT("Button"), 4, BS_AUTORADIOBUTTON, 180, 5, 50, 10, TEXT("Two")},
    {TEXT("Edit"), 5, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP | WS_GROUP, 5, 25, 40, 14},
    {TEXT("msctls_updown32"), 6, UDS_AUTOBUDDY | UDS_ARROWKEYS | UDS_ALIGNRIGHT | UDS_SETBUDDYINT, 45, 25, 11,
     14},
    {TEXT("msctls_updown32"), 7, UDS_ARROWKEYS, 80, 25, 11, 14},
    {TEXT("ComboBox"), 8, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 120, 25, 80, 100},
    {TEXT("msctls_trackbar32"), 9, WS_TABSTOP, 5, 50, 100, 15},
    {TEXT("msctls_trackbar32"), 10, TBS_VERT | TBS_NOTICKS | WS_TABSTOP, 220, 20, 15, 60},
    {TEXT("SysTabControl32"), 11, WS_TABSTOP, 5, 70, 200, 50},
};

TEST(Buttons, TellTheirParentAboutClicks)
{
    RecordingDialog dialog(kControls);
    const HWND check = dialog.Item(2);
    struct
    {
        const char* what;
        std::function<void()> action;
        Lines told;
        int checkedAfter;
    } cases[] = {
        {"a click", [&] { Click(check, 3, 3); }, {"command 2: 0"}, BST_CHECKED},
        {"a click by message", [&] { SendMessageW(check, BM_CLICK, 0, 0); }, {"command 2: 0"}, BST_UNCHECKED},
        {"the space bar", [&] { PressKey(check, VK_SPACE); }, {"command 2: 0"}, BST_CHECKED},
        {"let go outside",
         [&] {
             SendMessageW(check, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
             SendMessageW(check, WM_LBUTTONUP, 0, MAKELPARAM(300, 3));
         },
         {},
         BST_CHECKED},
        {"a state by message",
         [&] { SendMessageW(check, BM_SETCHECK, BST_UNCHECKED, 0); },
         {},
         BST_UNCHECKED},
        {"a state beyond the highest", [&] { SendMessageW(check, BM_SETCHECK, 5, 0); }, {}, BST_CHECKED},
    };
    SetFocus(check);
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(dialog.During(row.action), row.told);
        EXPECT_EQ(SendMessageW(check, BM_GETCHECK, 0, 0), row.checkedAfter);
    }
    EXPECT_THAT(dialog.During([&] { Click(dialog.Item(1), 3, 3); }), ElementsAre("command 1: 0"));
}

TEST(Buttons, OneRadioButtonOfAGroupIsOn)
{
    RecordingDialog dialog(kControls);
    for (const int on : {3, 4, 3}) {
        dialog.Send(on, BM_CLICK);
        EXPECT_EQ(dialog.Send(3, BM_GETCHECK), on == 3);
        EXPECT_EQ(dialog.Send(4, BM_GETCHECK), on == 4);
    }
}

TEST(Edits, TellEveryChange)
{
    RecordingDialog dialog(kControls);
    const HWND edit = dialog.Item(5);
    SetFocus(edit);
    const Lines change = {"command 5: 1024", "command 5: 768"};
    const auto type = [edit](WCHAR unit) { SendMessageW(edit, WM_CHAR, unit, 1); };
    struct
    {
        const char* what;
        std::function<void()> action;
        Lines told;
        std::basic_string<WCHAR> textAfter;
    } cases[] = {
        {"a text", [&] { SetWindowTextW(edit, TEXT("12.5")); }, change, TEXT("12.5")},
        {"an 8-bit text", [&] { SendMessageA(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("13")); }, change,
         TEXT("13")},
        {"typing before the text", [&] { type('7'); }, change, TEXT("713")},
        {"typing over everything",
         [&] {
             SendMessageW(edit, EM_SETSEL, 0, -1);
             type('5');
         },
         change, TEXT("5")},
        {"typing behind it", [&] { type('6'); }, change, TEXT("56")},
        {"the backspace key", [&] { type(VK_BACK); }, change, TEXT("5")},
        {"the delete key",
         [&] {
             SendMessageW(edit, EM_SETSEL, 0, 0);
             PressKey(edit, VK_DELETE);
         },
         change, TEXT("")},
        {"deleting nothing", [&] { PressKey(edit, VK_DELETE); }, {}, TEXT("")},
        {"up to the limit",
         [&] {
             SendMessageW(edit, EM_LIMITTEXT, 1, 0);
             type('a');
         },
         change, TEXT("a")},
        {"beyond the limit",
         [&] { type('b'); },
         {"command 5: 1281", "command 5: 1024", "command 5: 768"},
         TEXT("a")},
        {"losing the focus", [&] { SetFocus(dialog.Item(2)); }, {"command 5: 512"}, TEXT("a")},
        {"getting the focus", [&] { SetFocus(edit); }, {"command 5: 256"}, TEXT("a")},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(dialog.During(row.action), row.told);
        EXPECT_EQ(TextOf(edit), row.textAfter);
    }
}

class ComboBoxes : public testing::Test
{
protected:
    ComboBoxes()
    {
        for (const WCHAR* text : {TEXT("alpha"), TEXT("beta"), TEXT("gamma"), TEXT("delta")})
            Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return dialog.Send(8, message, wParam, lParam);
    }

    RecordingDialog dialog{kControls};
    const HWND combo = dialog.Item(8);
};

TEST_F(ComboBoxes, RefuseWhatIsOutOfRange)
{
    EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(Send(CB_SETCURSEL, 1), 1);
    EXPECT_EQ(Send(CB_SETCURSEL, 4), CB_ERR);
    EXPECT_EQ(Send(CB_GETCURSEL), 1);
    EXPECT_EQ(Send(CB_SETCURSEL, static_cast<WPARAM>(-1)), CB_ERR);
    EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    for (const UINT message : {CB_GETITEMDATA, CB_SETITEMDATA, CB_GETLBTEXTLEN, CB_DELETESTRING}) {
        EXPECT_EQ(Send(message, 4), CB_ERR) << message;
        EXPECT_EQ(Send(message, static_cast<WPARAM>(-1)), CB_ERR) << message;
    }
    EXPECT_EQ(Send(CB_GETCOUNT), 4);
}

TEST_F(ComboBoxes, KeepItemsDataAndSelectionTogether)
{
    Send(CB_SETITEMDATA, 2, 30);
    Send(CB_SETCURSEL, 2);
    EXPECT_EQ(TextOf(combo), TEXT("gamma"));
    EXPECT_EQ(Send(CB_DELETESTRING, 0), 3);
    EXPECT_EQ(Send(CB_GETCURSEL), 1);
    EXPECT_EQ(Send(CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(TEXT("first"))), 0);
    EXPECT_EQ(Send(CB_GETCURSEL), 2);
    EXPECT_EQ(Send(CB_GETITEMDATA, 2), 30);
    WCHAR text[16];
    EXPECT_EQ(Send(CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(text)), 4);
    EXPECT_EQ(std::basic_string<WCHAR>(text), TEXT("beta"));
    EXPECT_EQ(Send(CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(TEXT("DELTA"))), 3);
    EXPECT_EQ(Send(CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(TEXT("del"))),
              CB_ERR);
    EXPECT_EQ(Send(CB_DELETESTRING, 2), 3);
    EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    Send(CB_RESETCONTENT);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(GetWindowTextLengthW(combo), 0);
}

TEST_F(ComboBoxes, TellChoicesOfTheUser)
{
    const Lines chosen = {"command 8: 9", "command 8: 1"};
    struct
    {
        const char* what;
        std::function<void()> action;
        Lines told;
        LRESULT currentAfter;
    } cases[] = {
        {"a choice by message", [&] { Send(CB_SETCURSEL, 0); }, {}, 0},
        {"the down key", [&] { PressKey(combo, VK_DOWN); }, chosen, 1},
        {"the end key", [&] { PressKey(combo, VK_END); }, chosen, 3},
        {"down at the end", [&] { PressKey(combo, VK_DOWN); }, chosen, 3},
        {"the home key", [&] { PressKey(combo, VK_HOME); }, chosen, 0},
        {"a letter", [&] { SendMessageW(combo, WM_CHAR, 'g', 1); }, chosen, 2},
        {"dropping down", [&] { Send(CB_SHOWDROPDOWN, TRUE); }, {"command 8: 7"}, 2},
        {"the down key in the open list", [&] { PressKey(combo, VK_DOWN); }, {"command 8: 1"}, 3},
        {"return in the open list", [&] { PressKey(combo, VK_RETURN); }, {"command 8: 9", "command 8: 8"}, 3},
        {"escape in the open list",
         [&] {
             Send(CB_SHOWDROPDOWN, TRUE);
             PressKey(combo, VK_ESCAPE);
         },
         {"command 8: 7", "command 8: 10", "command 8: 8"},
         3},
        {"closing by message",
         [&] {
             Send(CB_SHOWDROPDOWN, TRUE);
             Send(CB_SHOWDROPDOWN, FALSE);
         },
         {"command 8: 7", "command 8: 10", "command 8: 8"},
         3},
        {"losing the focus", [&] { SetFocus(dialog.Item(2)); }, {"command 8: 10", "command 8: 4"}, 3},
    };
    SetFocus(combo);
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(dialog.During(row.action), row.told);
        EXPECT_EQ(Send(CB_GETCURSEL), row.currentAfter);
    }
}

TEST(Trackbars, StayInTheirRange)
{
    RecordingDialog dialog(kControls);
    const auto position = [&](int wanted) {
        dialog.Send(9, TBM_SETPOS, TRUE, wanted);
        return dialog.Send(9, TBM_GETPOS);
    };
    EXPECT_EQ(dialog.Send(9, TBM_GETRANGEMAX), 100);
    dialog.Send(9, TBM_SETRANGEMIN, TRUE, -10);
    dialog.Send(9, TBM_SETRANGEMAX, TRUE, 10);
    EXPECT_EQ(position(99), 10);
    EXPECT_EQ(position(-99), -10);
    EXPECT_EQ(position(7), 7);
    dialog.Send(9, TBM_SETRANGEMAX, TRUE, 5);
    EXPECT_EQ(dialog.Send(9, TBM_GETPOS), 5);
    dialog.Send(9, TBM_SETRANGE, TRUE, MAKELPARAM(6, 8));
    EXPECT_EQ(dialog.Send(9, TBM_GETPOS), 6);
    EXPECT_EQ(dialog.Send(9, TBM_GETRANGEMIN), 6);
}

TEST(Trackbars, ScrollByKeysAndClicks)
{
    RecordingDialog dialog(kControls);
    for (const int id : {9, 10}) {
        const std::string scroll = (id == 9 ? "hscroll 9: " : "vscroll 10: ");
        const auto told = [&scroll](std::initializer_list<int> codes) {
            Lines lines;
            for (const int code : codes)
                lines.push_back(scroll + std::to_string(code) + " at 0");
            return lines;
        };
        dialog.Send(id, TBM_SETRANGEMIN, TRUE, -10);
        dialog.Send(id, TBM_SETRANGEMAX, TRUE, 10);
        dialog.Send(id, TBM_SETPOS, TRUE, 0);
        const struct
        {
            WPARAM key;
            Lines told;
            int after;
        } cases[] = {
            {VK_RIGHT, told({TB_LINEDOWN, TB_ENDTRACK}), 1}, {VK_UP, told({TB_LINEUP, TB_ENDTRACK}), 0},
            {VK_NEXT, told({TB_PAGEDOWN, TB_ENDTRACK}), 4},  {VK_PRIOR, told({TB_PAGEUP, TB_ENDTRACK}), 0},
            {VK_HOME, told({TB_TOP, TB_ENDTRACK}), -10},     {VK_LEFT, told({TB_ENDTRACK}), -10},
            {VK_END, told({TB_BOTTOM, TB_ENDTRACK}), 10},
        };
        for (const auto& row : cases) {
            EXPECT_EQ(dialog.During([&] { PressKey(dialog.Item(id), row.key); }), row.told)
                << id << " " << row.key;
            EXPECT_EQ(dialog.Send(id, TBM_GETPOS), row.after);
        }
        Lines click = told({TB_PAGEUP, TB_ENDTRACK, TB_ENDTRACK});
        click.push_back("notify " + std::to_string(id) + ": -16");
        EXPECT_EQ(dialog.During([&] { Click(dialog.Item(id), 12, 12); }), click);
        EXPECT_EQ(dialog.Send(id, TBM_GETPOS), 6);
    }
}

class UpDowns : public testing::Test
{
protected:
    UpDowns()
    {
        for (const int id : {6, 7}) {
            dialog.Send(id, UDM_SETRANGE32, 0, 180);
            UDACCEL step{0, 2};
            EXPECT_TRUE(dialog.Send(id, UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&step)));
            dialog.Send(id, UDM_SETPOS32, 0, 50);
        }
        SetFocus(dialog.Item(5));
    }
    void ClickArrow(int id, bool up)
    {
        RECT client;
        GetClientRect(dialog.Item(id), &client);
        Click(dialog.Item(id), client.right / 2, up ? 2 : client.bottom - 2);
    }

    RecordingDialog dialog{kControls};
};

TEST_F(UpDowns, AskBeforeAStepAndTellAfterIt)
{
    EXPECT_THAT(dialog.During([&] { ClickArrow(6, true); }),
                ElementsAre("notify 6: -722 at 50 by 2", "command 5: 1024", "command 5: 768",
                            "vscroll 6: 4 at 52", "vscroll 6: 8 at 52"));
    EXPECT_EQ(TextOf(dialog.Item(5)), TEXT("52"));
    EXPECT_THAT(dialog.During([&] { ClickArrow(7, false); }),
                ElementsAre("notify 7: -722 at 50 by -2", "vscroll 7: 4 at 48", "vscroll 7: 8 at 48"));
    EXPECT_THAT(dialog.During([&] { PressKey(dialog.Item(7), VK_UP); }),
                ElementsAre("notify 7: -722 at 48 by 2", "vscroll 7: 4 at 50"));
    EXPECT_THAT(
        dialog.During([&] { PressKey(dialog.Item(5), VK_DOWN); }),
        ElementsAre("notify 6: -722 at 52 by -2", "command 5: 1024", "command 5: 768", "vscroll 6: 4 at 50"));
}

TEST_F(UpDowns, StopAtTheEndOfTheRange)
{
    dialog.Send(7, UDM_SETPOS32, 0, 179);
    ClickArrow(7, true);
    EXPECT_EQ(dialog.Send(7, UDM_GETPOS32), 180);
    EXPECT_THAT(dialog.During([&] { ClickArrow(7, true); }),
                ElementsAre("notify 7: -722 at 180 by 2", "vscroll 7: 4 at 180", "vscroll 7: 8 at 180"));
    EXPECT_EQ(dialog.Send(7, UDM_SETPOS32, 0, 500), 180);
    EXPECT_EQ(dialog.Send(7, UDM_GETPOS32), 180);
}

TEST_F(UpDowns, LetTheParentChangeOrRefuseAStep)
{
    LONG_PTR refusal = 0;
    dialog.onMessage = [&](UINT message, WPARAM, LPARAM lParam) -> INT_PTR {
        auto* const step = reinterpret_cast<NMUPDOWN*>(lParam);
        if (message != WM_NOTIFY || step->hdr.code != static_cast<UINT>(UDN_DELTAPOS)) return FALSE;
        // A position set here is where the step starts from, not where the notification says.
        dialog.Send(7, UDM_SETPOS32, 0, 100);
        step->iDelta = 5;
        SetWindowLongPtrW(dialog.Window(), DWLP_MSGRESULT, refusal);
        return TRUE;
    };
    ClickArrow(7, true);
    EXPECT_EQ(dialog.Send(7, UDM_GETPOS32), 105);
    refusal = 1;
    EXPECT_THAT(dialog.During([&] { ClickArrow(7, true); }),
                ElementsAre("notify 7: -722 at 105 by 2", "vscroll 7: 4 at 100", "vscroll 7: 8 at 100"));
}

TEST_F(UpDowns, ReadTheNumberOfTheirBuddy)
{
    EXPECT_EQ(reinterpret_cast<HWND>(dialog.Send(6, UDM_GETBUDDY)), dialog.Item(5));
    EXPECT_EQ(dialog.Send(7, UDM_GETBUDDY), 0);
    const struct
    {
        const WCHAR* text;
        LRESULT position;
        BOOL failed;
    } cases[] = {
        {TEXT("33"), 33, FALSE}, {TEXT("x"), 33, TRUE}, {TEXT("181"), 33, TRUE}, {TEXT("180"), 180, FALSE}};
    for (const auto& row : cases) {
        SetWindowTextW(dialog.Item(5), row.text);
        BOOL failed = 7;
        EXPECT_EQ(dialog.Send(6, UDM_GETPOS32, 0, reinterpret_cast<LPARAM>(&failed)), row.position);
        EXPECT_EQ(failed, row.failed);
    }
    dialog.Send(6, UDM_SETPOS32, 0, 70);
    EXPECT_EQ(TextOf(dialog.Item(5)), TEXT("70"));
}

TEST(Tabs, AskAndTellAboutTheUsersChoice)
{
    RecordingDialog dialog(kControls);
    const HWND tab = dialog.Item(11);
    for (const WCHAR* text : {TEXT("Last Job"), TEXT("Total Consumption")}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT | TCIF_IMAGE;
        item.iImage = -1;
        item.pszText = const_cast<WCHAR*>(text);
        const LRESULT count = SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0);
        EXPECT_EQ(
            SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(&item)),
            count);
    }
    SetFocus(tab);
    const auto current = [tab] { return SendMessageW(tab, TCM_GETCURSEL, 0, 0); };
    EXPECT_EQ(current(), 0);
    EXPECT_THAT(dialog.During([&] { EXPECT_EQ(SendMessageW(tab, TCM_SETCURSEL, 1, 0), 0); }), IsEmpty());
    EXPECT_EQ(SendMessageW(tab, TCM_SETCURSEL, 2, 0), -1);
    EXPECT_EQ(current(), 1);
    const Lines chosen = {"notify 11: -550", "notify 11: -552", "notify 11: -551"};
    EXPECT_EQ(dialog.During([&] { PressKey(tab, VK_LEFT); }), chosen);
    EXPECT_EQ(current(), 0);
    EXPECT_THAT(dialog.During([&] { PressKey(tab, VK_LEFT); }), ElementsAre("notify 11: -550"));
    RECT second;
    SendMessageW(tab, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    EXPECT_THAT(dialog.During([&] { Click(tab, second.left + 5, second.top + 5); }),
                ElementsAre("notify 11: -552", "notify 11: -551", "notify 11: -2"));

    RECT area{0, 0, 300, 100};
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    EXPECT_EQ(area.left, 4);
    EXPECT_EQ(area.right, 296);
    EXPECT_EQ(area.bottom, 96);
    EXPECT_NEAR(area.top, 22, 1);
}

TEST(Statics, TakePicturesAndTheirSize)
{
    RecordingDialog dialog({{TEXT("Static"), 1, SS_BITMAP, 5, 5, 20, 20},
                            {TEXT("Static"), 2, SS_BITMAP | SS_CENTERIMAGE, 5, 50, 20, 20},
                            {TEXT("Static"), 3, SS_LEFT, 50, 50, 20, 20}});
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP picture = CreateCompatibleBitmap(dc, 30, 12);
    const RECT before = dialog.RectOf(2);
    for (const int id : {1, 2, 3}) {
        EXPECT_EQ(dialog.Send(id, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture)), 0);
        EXPECT_EQ(reinterpret_cast<HBITMAP>(dialog.Send(id, STM_GETIMAGE, IMAGE_BITMAP)),
                  id == 3 ? nullptr : picture);
    }
    const RECT fitted = dialog.RectOf(1);
    EXPECT_EQ(fitted.right - fitted.left, 30);
    EXPECT_EQ(fitted.bottom - fitted.top, 12);
    const RECT kept = dialog.RectOf(2);
    EXPECT_TRUE(EqualRect(&before, &kept));
    EXPECT_EQ(reinterpret_cast<HBITMAP>(dialog.Send(1, STM_SETIMAGE, IMAGE_BITMAP)), picture);
    dialog.Send(2, STM_SETIMAGE, IMAGE_BITMAP);
    DeleteObject(picture);
    DeleteDC(dc);
}

TEST(Statics, AskTheParentToDraw)
{
    RecordingDialog dialog({{TEXT("Static"), 2, SS_OWNERDRAW, 5, 5, 100, 10}});
    const HWND bar = dialog.Item(2);
    COLORREF seen = 0;
    dialog.onMessage = [&](UINT message, WPARAM, LPARAM lParam) -> INT_PTR {
        if (message != WM_DRAWITEM) return FALSE;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        RECT client;
        GetClientRect(bar, &client);
        EXPECT_EQ(item.hwndItem, bar);
        EXPECT_TRUE(EqualRect(&item.rcItem, &client));
        SetPixel(item.hDC, 3, 3, RGB(10, 20, 30));
        seen = GetPixel(item.hDC, 3, 3);
        return TRUE;
    };
    const auto update = [bar] { InvalidateRect(bar, nullptr, TRUE), UpdateWindow(bar); };
    EXPECT_THAT(dialog.During(update), ElementsAre("draw 2"));
    EXPECT_EQ(seen, RGB(10, 20, 30));
    EXPECT_THAT(dialog.During([bar] { UpdateWindow(bar); }), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { InvalidateRect(bar, nullptr, TRUE), Pump(); }), ElementsAre("draw 2"));
    ShowWindow(bar, SW_HIDE);
    EXPECT_THAT(dialog.During(update), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { ShowWindow(bar, SW_SHOW), Pump(); }), ElementsAre("draw 2"));
    EXPECT_EQ(dialog.Send(2, PBM_SETPOS, 50), 0);
}

} // namespace
} // namespace tintwerk
