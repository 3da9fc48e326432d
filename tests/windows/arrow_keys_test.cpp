// Arrow keys in a number field: its arrows take them for the edit, and the page writes the number.
#include <gtest/gtest.h>

#include "src/resources/control_ids.h"
#include "tests/pages/open_sheet.h"

namespace tintwerk {
namespace {

TEST(ArrowKeys, StepTheNumberUnderTheCursor)
{
    OpenSheet sheet;
    DebugLines trace;
    sheet.Open(kScreenPrinting);
    const HWND edit = sheet.Control(kScreenPrinting, IDC_SCREEN_LPI);
    const HWND spin = sheet.Control(kScreenPrinting, IDC_SCREEN_LPI_SPIN);
    ASSERT_EQ(edit, reinterpret_cast<HWND>(SendMessageW(spin, UDM_GETBUDDY, 0, 0)));
    RECT before{}, after{};
    GetWindowRect(edit, &before);
    EXPECT_EQ(TEXT("45.5"), TextOf(edit));
    const struct
    {
        WPARAM key;
        const WCHAR* typed; // before the key
        const WCHAR* shown;
        LRESULT position;
    } cases[] = {{VK_UP, nullptr, TEXT("45.7"), 457},       {VK_UP, nullptr, TEXT("45.9"), 459},
                 {VK_DOWN, nullptr, TEXT("45.7"), 457},     {VK_DOWN, TEXT("60"), TEXT("59.8"), 598},
                 {VK_UP, TEXT("150"), TEXT("150.0"), 1500}, {VK_DOWN, TEXT("10"), TEXT("10.0"), 100}};
    for (const auto& row : cases) {
        if (row.typed) SetWindowTextW(edit, row.typed);
        const int changes = sheet.changes;
        SendMessageW(edit, WM_KEYDOWN, row.key, 0);
        SendMessageW(edit, WM_KEYUP, row.key, 0);
        EXPECT_EQ(row.shown, TextOf(edit));
        EXPECT_EQ(row.position, SendMessageW(spin, UDM_GETPOS32, 0, 0));
        EXPECT_LT(changes, sheet.changes);
    }
    EXPECT_TRUE(trace.Contains(TEXT("UI:  NOTIFY DELTAPOS pos=455 delta=2!\r\n")));
    GetWindowRect(edit, &after);
    EXPECT_TRUE(EqualRect(&before, &after)); // where the template puts it
}

} // namespace
} // namespace tintwerk
