// Windows: handles that outlive them, their relations and places.
#include <gmock/gmock.h>

#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;

const std::vector<ControlSpec> kControls = {
    {TEXT("Static"), 11, SS_LEFT, 10, 10, 50, 8, TEXT("Label")},
    {TEXT("Edit"), 12, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 70, 10, 40, 14},
    {TEXT("Button"), 13, BS_GROUPBOX, 5, 5, 200, 100, TEXT("Group")},
    {TEXT("Button"), IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 10, 100, 50, 14, TEXT("OK")},
};

TEST(Windows, RefuseStaleHandles)
{
    HWND stale = nullptr;
    {
        RecordingDialog dialog(kControls);
        stale = dialog.Item(11);
        DestroyWindow(stale);
        EXPECT_EQ(dialog.Item(11), nullptr);
    }
    RecordingDialog another(kControls); // may take the places of the first one's windows
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

TEST(Windows, KnowTheirRelatives)
{
    RecordingDialog sheet(kControls);
    RecordingDialog page(kControls, kChildDialog, sheet.Window());
    const HWND edit = page.Item(12);
    EXPECT_EQ(GetParent(edit), page.Window());
    EXPECT_EQ(GetAncestor(edit, GA_PARENT), page.Window());
    EXPECT_EQ(GetAncestor(edit, GA_ROOT), sheet.Window());
    EXPECT_EQ(FindWindowExW(page.Window(), nullptr, TEXT("edit"), nullptr), edit);

    std::vector<int> ids;
    const auto note = [](HWND window, LPARAM lParam) -> BOOL {
        reinterpret_cast<std::vector<int>*>(lParam)->push_back(GetDlgCtrlID(window));
        if (GetDlgCtrlID(window) == 11) DestroyWindow(GetDlgItem(GetParent(window), 12));
        return TRUE;
    };
    EnumChildWindows(page.Window(), note, reinterpret_cast<LPARAM>(&ids));
    EXPECT_THAT(ids, ElementsAre(11, 13, IDOK)); // the edit was gone when its turn came
    EXPECT_FALSE(IsWindow(edit));
}

TEST(Windows, ShowAndTakeInputWithTheirParents)
{
    RecordingDialog dialog(kControls);
    const HWND edit = dialog.Item(12);
    EXPECT_TRUE(IsWindowVisible(edit));
    EXPECT_TRUE(ShowWindow(dialog.Window(), SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(edit));
    EXPECT_TRUE(GetWindowLongPtrW(edit, GWL_STYLE) & WS_VISIBLE);
    EXPECT_FALSE(ShowWindow(dialog.Window(), SW_SHOW));
    SetFocus(edit);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_FALSE(EnableWindow(edit, FALSE));
    EXPECT_NE(GetFocus(), edit);
    EXPECT_FALSE(IsWindowEnabled(edit));
    EXPECT_TRUE(EnableWindow(edit, TRUE));
}

TEST(Windows, StandWhereTheirTemplateSays)
{
    RecordingDialog dialog(kControls);
    for (const ControlSpec& control : kControls) {
        RECT wanted{control.x, control.y, control.width, control.height}; // mapped as two points
        MapDialogRect(dialog.Window(), &wanted);
        const RECT place = dialog.RectOf(control.id);
        EXPECT_NEAR(place.left, wanted.left, 1);
        EXPECT_NEAR(place.top, wanted.top, 1);
        EXPECT_NEAR(place.right - place.left, wanted.right, 1);
        EXPECT_NEAR(place.bottom - place.top, wanted.bottom, 1);
    }
    RECT client;
    GetClientRect(dialog.Item(12), &client);
    const RECT edit = dialog.RectOf(12);
    EXPECT_EQ(edit.right - edit.left - client.right, 4); // the sunken border
    RECT units{0, 0, 4, 8};
    MapDialogRect(dialog.Window(), &units);
    EXPECT_EQ(units.right, 7);
    EXPECT_EQ(units.bottom, 13);
    GetClientRect(dialog.Window(), &client);
    RECT size{0, 0, 271, 127};
    MapDialogRect(dialog.Window(), &size);
    EXPECT_EQ(client.right, size.right);
    EXPECT_EQ(client.bottom, size.bottom);
}

} // namespace
} // namespace tintwerk
