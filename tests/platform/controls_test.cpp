// What the control kinds answer to messages and tell their parent in which order; windows: handles that
// outlive them, their relations and places.
#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "src/resources/control_ids.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

// The page of screen printing, which writes down what its controls tell it: commands ("command 7: 0"),
// requests to draw ("draw 2") and scrolling.
struct Dialog
{
    Dialog()
    {
        const INITCOMMONCONTROLSEX families{sizeof families, ICC_WIN95_CLASSES};
        InitCommonControlsEx(&families);
        const HINSTANCE module = GetModuleHandleW(nullptr);
        sheet = CreateWindowExW(0, TEXT("Static"), TEXT("sheet"), WS_POPUP | WS_VISIBLE, 0, 0, 600, 500,
                                nullptr, nullptr, module, nullptr);
        window = CreateDialogParamW(module, MAKEINTRESOURCEW(IDD_SCREEN_PRINTING), sheet, Procedure,
                                    reinterpret_cast<LPARAM>(this));
        ShowWindow(window, SW_SHOW);
        Pump();
    }
    ~Dialog() { DestroyWindow(sheet); }

    HWND Item(int id) const { return GetDlgItem(window, id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendMessageW(Item(id), message, wParam, lParam);
    }
    // What was told while the action ran.
    Lines During(const std::function<void()>& action)
    {
        lines.clear();
        action();
        return std::exchange(lines, {});
    }

    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        auto* const self = reinterpret_cast<Dialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
        if (self && message == WM_COMMAND)
            self->lines.push_back("command " + std::to_string(LOWORD(wParam)) + ": " +
                                  std::to_string(HIWORD(wParam)));
        else if (self && message == WM_DRAWITEM)
            self->lines.push_back("draw " + std::to_string(wParam));
        else if (self && (message == WM_HSCROLL || message == WM_VSCROLL))
            self->lines.push_back("scroll");
        return FALSE;
    }

    HWND sheet = nullptr;
    HWND window = nullptr;
    Lines lines;
};

class Controls : public testing::Test
{
protected:
    Dialog dialog;
};

LPARAM Pointer(const void* value)
{
    return reinterpret_cast<LPARAM>(value);
}

TEST_F(Controls, TellTheirParentOfChangesAndOfTheFocus)
{
    constexpr int kEdit = IDC_SCREEN_LPI, kBox = IDC_SCREEN_PRINTING, kPopup = IDC_SCREEN_HALFTONE;
    const auto told = [](int id, int code) {
        return "command " + std::to_string(id) + ": " + std::to_string(code);
    };
    const Lines change = {told(kEdit, EN_UPDATE), told(kEdit, EN_CHANGE)};
    const struct
    {
        const char* what;
        std::function<void()> action;
        Lines told;
    } cases[] = {
        {"a click", [&] { dialog.Send(kBox, BM_CLICK); }, {told(kBox, BN_CLICKED)}},
        {"a state by message", [&] { dialog.Send(kBox, BM_SETCHECK, BST_UNCHECKED); }, {}},
        {"getting the focus", [&] { SetFocus(dialog.Item(kEdit)); }, {told(kEdit, EN_SETFOCUS)}},
        {"a text", [&] { SetWindowTextW(dialog.Item(kEdit), TEXT("12.5")); }, change},
        {"a text over another",
         [&] {
             dialog.Send(kEdit, EM_SETSEL, 0, -1);
             dialog.Send(kEdit, EM_REPLACESEL, TRUE, Pointer(TEXT("13")));
         },
         change},
        {"a text behind it", [&] { dialog.Send(kEdit, EM_REPLACESEL, TRUE, Pointer(TEXT("6"))); }, change},
        {"passing the focus on",
         [&] { SetFocus(dialog.Item(kPopup)); },
         {told(kEdit, EN_KILLFOCUS), told(kPopup, CBN_SETFOCUS)}},
        {"passing it on again",
         [&] { SetFocus(dialog.Item(kBox)); },
         {told(kPopup, CBN_SELENDCANCEL), told(kPopup, CBN_KILLFOCUS)}},
        {"a choice by message", [&] { dialog.Send(kPopup, CB_SETCURSEL, 0); }, {}},
        {"a position by message", [&] { dialog.Send(IDC_SCREEN_SATURATION, TBM_SETPOS, TRUE, 3); }, {}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(dialog.During(row.action), row.told) << row.what;
    EXPECT_EQ(TextOf(dialog.Item(kEdit)), TEXT("136"));
}

TEST_F(Controls, KeepItemsDataAndChoiceTogether)
{
    const auto send = [this](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return dialog.Send(IDC_SCREEN_HALFTONE, message, wParam, lParam);
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
    EXPECT_EQ(send(CB_DELETESTRING, 1), 2);
    EXPECT_EQ(send(CB_GETCURSEL), CB_ERR) << "the chosen one went";
}

TEST_F(Controls, StayInTheirRange)
{
    dialog.Send(IDC_SCREEN_SATURATION, TBM_SETRANGEMIN, TRUE, -10);
    dialog.Send(IDC_SCREEN_SATURATION, TBM_SETRANGEMAX, TRUE, 10);
    dialog.Send(IDC_SCREEN_LPI_SPIN, UDM_SETRANGE32, 0, 180);
    for (const auto& [wanted, slider, spin] :
         {std::tuple{99, 10, 99}, {-99, -10, 0}, {500, 10, 180}, {7, 7, 7}}) {
        dialog.Send(IDC_SCREEN_SATURATION, TBM_SETPOS, TRUE, wanted);
        dialog.Send(IDC_SCREEN_LPI_SPIN, UDM_SETPOS32, 0, wanted);
        EXPECT_EQ(dialog.Send(IDC_SCREEN_SATURATION, TBM_GETPOS), slider);
        EXPECT_EQ(dialog.Send(IDC_SCREEN_LPI_SPIN, UDM_GETPOS32), spin);
    }
    dialog.Send(IDC_SCREEN_SATURATION, TBM_SETRANGEMAX, TRUE, 5);
    EXPECT_EQ(dialog.Send(IDC_SCREEN_SATURATION, TBM_GETPOS), 5);
}

TEST_F(Controls, AskTheParentToDraw)
{
    const HWND bar = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, 5, 5,
                                     100, 10, dialog.window, reinterpret_cast<HMENU>(2), nullptr, nullptr);
    Pump();
    const auto update = [bar] { InvalidateRect(bar, nullptr, TRUE), UpdateWindow(bar); };
    EXPECT_THAT(dialog.During(update), ElementsAre("draw 2"));
    EXPECT_THAT(dialog.During([bar] { UpdateWindow(bar); }), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { InvalidateRect(bar, nullptr, TRUE), Pump(); }), ElementsAre("draw 2"));
    ShowWindow(bar, SW_HIDE);
    EXPECT_THAT(dialog.During(update), IsEmpty());
    EXPECT_THAT(dialog.During([bar] { ShowWindow(bar, SW_SHOW), Pump(); }), ElementsAre("draw 2"));
}

TEST(Windows, RefuseStaleHandles)
{
    HWND stale = nullptr;
    {
        const Dialog dialog;
        stale = dialog.Item(IDC_SCREEN_LPI);
        DestroyWindow(stale);
        EXPECT_EQ(dialog.Item(IDC_SCREEN_LPI), nullptr);
    }
    const Dialog another; // may take the places of the first one's windows
    RECT rectangle;
    const std::function<bool()> calls[] = {
        [&] { return SendMessageW(stale, WM_GETTEXTLENGTH, 0, 0) != 0; },
        [&] { return PostMessageW(stale, WM_NULL, 0, 0) != 0; },
        [&] { return GetWindowRect(stale, &rectangle) != 0; },
        [&] { return SetWindowTextW(stale, TEXT("x")) != 0; },
        [&] { return SetWindowPos(stale, nullptr, 0, 0, 1, 1, 0) != 0; },
        [&] { return GetWindowLongPtrW(stale, GWL_STYLE) != 0; },
        [&] { return IsWindowVisible(stale) != 0; },
    };
    EXPECT_FALSE(IsWindow(stale));
    EXPECT_FALSE(DestroyWindow(stale));
    for (const auto& call : calls) {
        SetLastError(0);
        EXPECT_FALSE(call());
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE)) << &call - calls;
    }
}

TEST_F(Controls, ShowAndTakeInputWithTheirParents)
{
    const HWND edit = dialog.Item(IDC_SCREEN_LPI);
    EXPECT_EQ(GetAncestor(edit, GA_ROOT), GetParent(dialog.window));
    EXPECT_TRUE(IsWindowVisible(edit));
    EXPECT_TRUE(ShowWindow(dialog.window, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(edit));
    EXPECT_TRUE(GetWindowLongPtrW(edit, GWL_STYLE) & WS_VISIBLE);
    EXPECT_FALSE(ShowWindow(dialog.window, SW_SHOW));
    SetFocus(edit);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_FALSE(EnableWindow(edit, FALSE));
    EXPECT_NE(GetFocus(), edit);
    EXPECT_TRUE(EnableWindow(edit, TRUE));
}

TEST_F(Controls, StandWhereTheirTemplateSays)
{
    RECT units{0, 0, 4, 8};
    MapDialogRect(dialog.window, &units);
    EXPECT_EQ(units.right, 7);
    EXPECT_EQ(units.bottom, 13);
    RECT wanted{91, 102, 42, 13}, place{}, client{}; // mapped as two points
    const HWND edit = dialog.Item(IDC_SCREEN_LPI);
    MapDialogRect(dialog.window, &wanted);
    GetWindowRect(edit, &place);
    MapWindowPoints(nullptr, dialog.window, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_NEAR(place.left, wanted.left, 1);
    EXPECT_NEAR(place.top, wanted.top, 1);
    EXPECT_NEAR(place.right - place.left, wanted.right, 1);
    EXPECT_NEAR(place.bottom - place.top, wanted.bottom, 1);
    GetClientRect(edit, &client);
    EXPECT_EQ(place.right - place.left - client.right, 4) << "the sunken border";
    EXPECT_EQ(MapWindowPoints(edit, edit, reinterpret_cast<POINT*>(&place), 1), 0);
}

} // namespace
} // namespace tintwerk
