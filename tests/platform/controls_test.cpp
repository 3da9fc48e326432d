// What the control kinds answer to messages, and what they tell their parent in which order.
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
    {TEXT("msctls_updown32"), 7, UDS_ARROWKEYS, 80, 25, 11, 14},
    {TEXT("ComboBox"), 8, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 120, 25, 80, 100},
    {TEXT("msctls_trackbar32"), 9, WS_TABSTOP, 5, 50, 100, 15},
    {TEXT("SysTabControl32"), 11, WS_TABSTOP, 5, 70, 200, 50},
};

LPARAM Pointer(const void* value)
{
    return reinterpret_cast<LPARAM>(value);
}

TEST(Controls, TellTheirParentOfChangesAndOfTheFocus)
{
    RecordingDialog dialog(kControls);
    const Lines change = {"command 5: 1024", "command 5: 768"};
    const struct
    {
        const char* what;
        std::function<void()> action;
        Lines told;
    } cases[] = {
        {"a click", [&] { dialog.Send(1, BM_CLICK); }, {"command 1: 0"}},
        {"a click on a check box", [&] { dialog.Send(2, BM_CLICK); }, {"command 2: 0"}},
        {"a state by message", [&] { dialog.Send(2, BM_SETCHECK, BST_UNCHECKED); }, {}},
        {"getting the focus", [&] { SetFocus(dialog.Item(5)); }, {"command 5: 256"}},
        {"a text", [&] { SetWindowTextW(dialog.Item(5), TEXT("12.5")); }, change},
        {"a text over another",
         [&] {
             dialog.Send(5, EM_SETSEL, 0, -1);
             dialog.Send(5, EM_REPLACESEL, TRUE, Pointer(TEXT("13")));
         },
         change},
        {"a text behind it", [&] { dialog.Send(5, EM_REPLACESEL, TRUE, Pointer(TEXT("6"))); }, change},
        {"passing the focus on", [&] { SetFocus(dialog.Item(8)); }, {"command 5: 512", "command 8: 3"}},
        {"passing it on again", [&] { SetFocus(dialog.Item(2)); }, {"command 8: 10", "command 8: 4"}},
        {"a choice by message", [&] { dialog.Send(8, CB_SETCURSEL, 0); }, {}},
        {"a position by message", [&] { dialog.Send(9, TBM_SETPOS, TRUE, 3); }, {}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(dialog.During(row.action), row.told) << row.what;
    EXPECT_EQ(TextOf(dialog.Item(5)), TEXT("136"));
}

TEST(Buttons, KeepTheirState)
{
    RecordingDialog dialog(kControls);
    for (const int checked : {BST_CHECKED, BST_UNCHECKED}) {
        dialog.Send(2, BM_CLICK);
        EXPECT_EQ(dialog.Send(2, BM_GETCHECK), checked);
    }
    dialog.Send(2, BM_SETCHECK, 5);
    EXPECT_EQ(dialog.Send(2, BM_GETCHECK), BST_CHECKED) << "a state beyond the highest";
    for (const int on : {3, 4, 3}) {
        dialog.Send(on, BM_CLICK);
        EXPECT_EQ(dialog.Send(3, BM_GETCHECK), on == 3);
        EXPECT_EQ(dialog.Send(4, BM_GETCHECK), on == 4);
    }
}

TEST(ComboBoxes, KeepItemsDataAndChoiceTogether)
{
    RecordingDialog dialog(kControls);
    const auto send = [&dialog](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return dialog.Send(8, message, wParam, lParam);
    };
    for (const WCHAR* text : {TEXT("alpha"), TEXT("beta"), TEXT("gamma"), TEXT("delta")})
        send(CB_ADDSTRING, 0, Pointer(text));
    EXPECT_EQ(send(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(send(CB_SETCURSEL, 2), 2);
    EXPECT_EQ(send(CB_SETCURSEL, 4), CB_ERR);
    EXPECT_EQ(send(CB_GETCURSEL), 2) << "what was chosen stays";
    for (const UINT message : {CB_GETITEMDATA, CB_SETITEMDATA, CB_GETLBTEXTLEN, CB_DELETESTRING}) {
        EXPECT_EQ(send(message, 4), CB_ERR) << message;
        EXPECT_EQ(send(message, static_cast<WPARAM>(-1)), CB_ERR) << message;
    }
    send(CB_SETITEMDATA, 2, 30);
    EXPECT_EQ(send(CB_DELETESTRING, 0), 3);
    EXPECT_EQ(send(CB_GETCURSEL), 1);
    EXPECT_EQ(send(CB_GETITEMDATA, 1), 30);
    WCHAR text[16];
    EXPECT_EQ(send(CB_GETLBTEXT, 1, Pointer(text)), 5);
    EXPECT_EQ(std::basic_string<WCHAR>(text), TEXT("gamma"));
    EXPECT_EQ(send(CB_DELETESTRING, 1), 2);
    EXPECT_EQ(send(CB_GETCURSEL), CB_ERR);
    send(CB_SETCURSEL, 0);
    EXPECT_EQ(send(CB_SETCURSEL, static_cast<WPARAM>(-1)), CB_ERR);
    EXPECT_EQ(send(CB_GETCURSEL), CB_ERR);
}

TEST(Positions, StayInTheirRange)
{
    RecordingDialog dialog(kControls);
    EXPECT_EQ(dialog.Send(9, TBM_GETRANGEMAX), 100);
    dialog.Send(9, TBM_SETRANGEMIN, TRUE, -10);
    dialog.Send(9, TBM_SETRANGEMAX, TRUE, 10);
    for (const auto& [wanted, reached] : {std::pair{99, 10}, {-99, -10}, {7, 7}}) {
        dialog.Send(9, TBM_SETPOS, TRUE, wanted);
        EXPECT_EQ(dialog.Send(9, TBM_GETPOS), reached);
    }
    dialog.Send(9, TBM_SETRANGEMAX, TRUE, 5);
    EXPECT_EQ(dialog.Send(9, TBM_GETPOS), 5);

    UDACCEL step{0, 2};
    EXPECT_TRUE(dialog.Send(7, UDM_SETACCEL, 1, Pointer(&step)));
    dialog.Send(7, UDM_SETRANGE32, 0, 180);
    for (const auto& [wanted, reached] : {std::pair{50, 50}, {500, 180}, {-1, 0}}) {
        dialog.Send(7, UDM_SETPOS32, 0, wanted);
        EXPECT_EQ(dialog.Send(7, UDM_GETPOS32), reached);
    }
}

TEST(Tabs, AskAndTellAboutTheUsersChoiceOnly)
{
    RecordingDialog dialog(kControls);
    const HWND tab = dialog.Item(11);
    for (const WCHAR* text : {TEXT("Last Job"), TEXT("Total Consumption")}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<WCHAR*>(text);
        const LRESULT count = SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0);
        EXPECT_EQ(SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(count), Pointer(&item)), count);
    }
    const auto current = [tab] { return SendMessageW(tab, TCM_GETCURSEL, 0, 0); };
    EXPECT_EQ(current(), 0);
    EXPECT_THAT(dialog.During([&] { EXPECT_EQ(SendMessageW(tab, TCM_SETCURSEL, 1, 0), 0); }), IsEmpty());
    EXPECT_EQ(SendMessageW(tab, TCM_SETCURSEL, 2, 0), -1);
    EXPECT_EQ(current(), 1);
    EXPECT_THAT(dialog.During([&] { SendMessageW(tab, TCM_SETCURFOCUS, 0, 0); }),
                ElementsAre("notify 11: -552", "notify 11: -551"));
    EXPECT_EQ(current(), 0);
}

TEST(Statics, AskTheParentToDraw)
{
    RecordingDialog dialog({{TEXT("Static"), 2, SS_OWNERDRAW, 5, 5, 100, 10}});
    const HWND bar = dialog.Item(2);
    dialog.onMessage = [&](UINT message, WPARAM, LPARAM lParam) -> INT_PTR {
        if (message != WM_DRAWITEM) return FALSE;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        RECT client;
        GetClientRect(bar, &client);
        EXPECT_EQ(item.hwndItem, bar);
        EXPECT_TRUE(EqualRect(&item.rcItem, &client));
        return TRUE;
    };
    const auto update = [bar] { InvalidateRect(bar, nullptr, TRUE), UpdateWindow(bar); };
    EXPECT_THAT(dialog.During(update), ElementsAre("draw 2"));
    EXPECT_THAT(dialog.During([bar] { UpdateWindow(bar); }), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { InvalidateRect(bar, nullptr, TRUE), Pump(); }), ElementsAre("draw 2"));
    ShowWindow(bar, SW_HIDE);
    EXPECT_THAT(dialog.During(update), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { ShowWindow(bar, SW_SHOW), Pump(); }), ElementsAre("draw 2"));
}

} // namespace
} // namespace tintwerk
