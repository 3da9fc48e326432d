// Which tabbed pages a document sheet gets: the choice of dialog templates by Windows version and GUI mode.
// Pure rules, called by the document sheet.
#pragma once

#include <array>

#include "src/records/page_kinds.h"
#include "src/records/process_values.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

// Dialog templates by position, ended by 0. Screen printing stands in the full list only.
using PageList = std::array<WORD, kPageKinds + 1>;

// clang-format off
inline constexpr PageList kLegacyPages {IDD_LEGACY_MAIN, IDD_LEGACY_COLOR, IDD_LEGACY_CORRECTION, IDD_LEGACY_CONSUMPTION,
                                        IDD_LEGACY_INK_CONTROL};
inline constexpr PageList kReducedPages{IDD_MAIN_REDUCED, IDD_COLOR, IDD_CORRECTION, IDD_CONSUMPTION, IDD_INK_CONTROL};
inline constexpr PageList kFullPages   {IDD_MAIN, IDD_COLOR, IDD_CORRECTION, IDD_CONSUMPTION, IDD_INK_CONTROL,
                                        IDD_SCREEN_PRINTING};
// clang-format on

// The larger dialogs came with Windows 7 (6.1). Versions are judged number by number, so 5.1 to 5.9 and 6.0
// are old.
constexpr bool NeedsLegacyPages(DWORD major, DWORD minor)
{
    return major < 7 && (major < 6 || minor < 1);
}

constexpr const PageList& ChoosePageList(DWORD major, DWORD minor, int guiMode)
{
    if (NeedsLegacyPages(major, minor)) return kLegacyPages;
    return guiMode == 0 || (guiMode & kGuiModeFull) ? kFullPages : kReducedPages;
}

// A GUI mode keeps the main page, and the consumption page when it has the flag for it.
constexpr bool ShowsPage(const PageKind& kind, int guiMode)
{
    return guiMode == 0 || kind.tabBit == kMainPage ||
           (kind.tabBit == kConsumptionPage && (guiMode & kGuiModeShowsConsumption));
}

} // namespace tintwerk
