// Standard scroll bars: the numbers that a window keeps for them. Nothing is drawn.
#include <algorithm>

#include "platform/headless/window.h"

using namespace tintwerk::headless;

namespace {

ScrollBar* FindBar(HWND window, int bar)
{
    Window* const found = bar == SB_HORZ || bar == SB_VERT ? Find(window) : nullptr;
    return found ? &found->scrollBars[bar] : nullptr;
}

// The page never exceeds the range, and the last page ends where the range ends.
void Clamp(ScrollBar& bar)
{
    const long long range = static_cast<long long>(bar.maximum) - bar.minimum + 1;
    bar.page = static_cast<UINT>(std::clamp<long long>(bar.page, 0, std::max(0LL, range)));
    const long long last = bar.maximum - std::max<long long>(static_cast<long long>(bar.page) - 1, 0);
    bar.position =
        static_cast<int>(std::max<long long>(bar.minimum, std::min<long long>(bar.position, last)));
}

} // namespace

int WINAPI SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL)
{
    ScrollBar* const found = FindBar(window, bar);
    if (!found || !info) return 0;
    if (info->fMask & SIF_RANGE) {
        found->minimum = info->nMin;
        found->maximum = info->nMax;
    }
    if (info->fMask & SIF_PAGE) found->page = info->nPage;
    if (info->fMask & SIF_POS) found->position = info->nPos;
    Clamp(*found);
    return found->position;
}

BOOL WINAPI GetScrollInfo(HWND window, int bar, SCROLLINFO* info)
{
    const ScrollBar* const found = FindBar(window, bar);
    if (!found || !info) return FALSE;
    if (info->fMask & SIF_RANGE) {
        info->nMin = found->minimum;
        info->nMax = found->maximum;
    }
    if (info->fMask & SIF_PAGE) info->nPage = found->page;
    if (info->fMask & SIF_POS) info->nPos = found->position;
    if (info->fMask & SIF_TRACKPOS) info->nTrackPos = found->position;
    return TRUE;
}
