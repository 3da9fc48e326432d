// What the control kinds answer to messages, and what they tell their parent in which order.
#include <gmock/gmock.h>

#include "src/resources/control_ids.h"
#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LPARAM Pointer(const void* value)
{
    return reinterpret_cast<LPARAM>(value);
}

TEST(Controls, TellTheirParentOfChangesAndOfTheFocus)
{
    RecordingDialog dialog(IDD_SCREEN_PRINTING);
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

TEST(ComboBoxes, KeepItemsDataAndChoiceTogether)
{
    RecordingDialog dialog(IDD_SCREEN_PRINTING);
    const auto send = [&dialog](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
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

TEST(Positions, StayInTheirRange)
{
    RecordingDialog dialog(IDD_SCREEN_PRINTING);
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

TEST(Statics, AskTheParentToDraw)
{
    RecordingDialog dialog(IDD_INFORMATION);
    const HWND bar = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, 5, 5,
                                     100, 10, dialog.Window(), reinterpret_cast<HMENU>(2), nullptr, nullptr);
    Pump();
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
