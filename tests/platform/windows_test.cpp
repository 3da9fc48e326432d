// Windows: handles that outlive them, their relations and places.
#include <gmock/gmock.h>

#include "src/resources/control_ids.h"
#include "tests/support/recording_dialog.h"

namespace tintwerk {
namespace {

TEST(Windows, RefuseStaleHandles)
{
    HWND stale = nullptr;
    {
        RecordingDialog dialog(IDD_SCREEN_PRINTING);
        stale = dialog.Item(IDC_SCREEN_LPI);
        DestroyWindow(stale);
        EXPECT_EQ(dialog.Item(IDC_SCREEN_LPI), nullptr);
    }
    RecordingDialog another(IDD_SCREEN_PRINTING); // may take the places of the first one's windows
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

TEST(Windows, ShowAndTakeInputWithTheirParents)
{
    RecordingDialog dialog(IDD_SCREEN_PRINTING);
    const HWND edit = dialog.Item(IDC_SCREEN_LPI);
    EXPECT_EQ(GetAncestor(edit, GA_ROOT), GetParent(dialog.Window()));
    EXPECT_TRUE(IsWindowVisible(edit));
    EXPECT_TRUE(ShowWindow(dialog.Window(), SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(edit));
    EXPECT_TRUE(GetWindowLongPtrW(edit, GWL_STYLE) & WS_VISIBLE);
    EXPECT_FALSE(ShowWindow(dialog.Window(), SW_SHOW));
    SetFocus(edit);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_FALSE(EnableWindow(edit, FALSE));
    EXPECT_NE(GetFocus(), edit);
    EXPECT_TRUE(EnableWindow(edit, TRUE));
}

TEST(Windows, StandWhereTheirTemplateSays)
{
    RecordingDialog dialog(IDD_SCREEN_PRINTING);
    RECT units{0, 0, 4, 8};
    MapDialogRect(dialog.Window(), &units);
    EXPECT_EQ(units.right, 7);
    EXPECT_EQ(units.bottom, 13);
    RECT wanted{91, 102, 42, 13}, place{}, client{}; // mapped as two points
    const HWND edit = dialog.Item(IDC_SCREEN_LPI);
    MapDialogRect(dialog.Window(), &wanted);
    GetWindowRect(edit, &place);
    MapWindowPoints(nullptr, dialog.Window(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_NEAR(place.left, wanted.left, 1);
    EXPECT_NEAR(place.top, wanted.top, 1);
    EXPECT_NEAR(place.right - place.left, wanted.right, 1);
    EXPECT_NEAR(place.bottom - place.top, wanted.bottom, 1);
    GetClientRect(edit, &client);
    EXPECT_EQ(place.right - place.left - client.right, 4) << "the sunken border";
}

} // namespace
} // namespace tintwerk
