// Ink level bars: what is painted where, in which colour.
#include <algorithm>
#include <cstdio>

#include "platform/function_hook.h"
#include "platform/owners.h"
#include "src/ink/bar_value.h"
#include "src/pages/consumption_tabs.h"
#include "src/resources/control_ids.h"
#include "tests/pages/page_test.h"

namespace tintwerk {
namespace {

std::string painted; // shape, place, size of its corners, colour of its brush

int Tell(const char* shape, const RECT& at, int corner, HGDIOBJ brush)
{
    LOGBRUSH ink{};
    char text[80];
    GetObjectW(brush, sizeof ink, &ink);
    const unsigned color =
        GetRValue(ink.lbColor) << 16 | GetGValue(ink.lbColor) << 8 | GetBValue(ink.lbColor);
    std::snprintf(text, sizeof text, "%s %d,%d-%d,%d/%d %06x; ", shape, static_cast<int>(at.left),
                  static_cast<int>(at.top), static_cast<int>(at.right), static_cast<int>(at.bottom), corner,
                  color);
    painted += text;
    return 1;
}

BOOL WINAPI TellRound(HDC dc, int left, int top, int right, int bottom, int width, int height)
{
    const HGDIOBJ brush = SelectObject(dc, GetSysColorBrush(COLOR_BTNFACE));
    SelectObject(dc, brush);
    return Tell("round", {left, top, right, bottom}, std::min(width, height), brush);
}

int WINAPI TellFilled(HDC, const RECT* place, HBRUSH brush)
{
    return Tell("filled", *place, 0, brush);
}

class Bars : public PageTest
{
protected:
    Bars()
    {
        ReplaceFunction("RoundRect", &TellRound);
        ReplaceFunction("FillRect", &TellFilled);
    }
    ~Bars() override
    {
        DeleteDC(dc);
        RestoreFunction("FillRect");
        RestoreFunction("RoundRect");
    }

    const HDC dc = CreateCompatibleDC(nullptr);
};

TEST_F(Bars, ShowTheirShareOnThePageAndOnThePane)
{
    sheet.Open(kConsumption);
    const HWND page = sheet.Page(kConsumption), pane = PaneOf(page), bar = GetDlgItem(pane, IDC_PANE_BAR(1));
    SetWindowPos(bar, nullptr, 0, 0, 105, 12, SWP_NOMOVE | SWP_NOZORDER);
    const BrushHandle own{CreateSolidBrush(RGB(0, 0, 0))};
    const HGDIOBJ before = SelectObject(dc, own.Get());
    const std::string full = "round 0,0-105,12/6 ff8000; round 100,0-105,12/6 ff8000; ";
    const std::pair<int, std::string> cases[] = {
        {0, "round 0,0-105,12/6 e1e1e1; round 0,0-105,12/6 e1e1e1; "},
        {1, "round 0,0-105,12/6 ff8000; round 1,0-105,12/6 e1e1e1; filled 1,1-4,11/0 ff8000; "},
        {99, "round 0,0-105,12/6 ff8000; round 99,0-105,12/6 e1e1e1; filled 99,1-102,11/0 ff8000; "},
        {100, full},
        {180, full}};
    for (const auto& [percent, expected] : cases)
        for (const HWND window : {page, pane}) {
            painted.clear();
            SetWindowLongPtrW(bar, GWLP_USERDATA,
                              static_cast<LONG_PTR>(PackBarValue({percent, 255, 128, 0})));
            DRAWITEMSTRUCT item{};
            item.hwndItem = bar;
            item.hDC = dc;
            SendMessageW(window, WM_DRAWITEM, IDC_PANE_BAR(1), reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(expected, painted) << percent;
        }
    EXPECT_EQ(own.Get(), SelectObject(dc, before)) << "left as it was";
}

} // namespace
} // namespace tintwerk
