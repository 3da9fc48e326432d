// The lines of the consumption pane, from the top: the controls of each. The sum stands below them.
#pragma once

#include <array>

#include "src/records/sheet_context.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

struct PaneLine
{
    int nameId;
    int barId;
    int numberId;
};

// clang-format off
inline constexpr std::array<PaneLine, kConsumptionSlots> kPaneLineTable{{
    {IDC_PANE_NAME(1),  IDC_PANE_BAR(1),  IDC_PANE_NUMBER_1},
    {IDC_PANE_NAME(2),  IDC_PANE_BAR(2),  IDC_PANE_NUMBER_2},
    {IDC_PANE_NAME(3),  IDC_PANE_BAR(3),  IDC_PANE_NUMBER_3},
    {IDC_PANE_NAME(4),  IDC_PANE_BAR(4),  IDC_PANE_NUMBER_4},
    {IDC_PANE_NAME(5),  IDC_PANE_BAR(5),  IDC_PANE_NUMBER_5},
    {IDC_PANE_NAME(6),  IDC_PANE_BAR(6),  IDC_PANE_NUMBER_6},
    {IDC_PANE_NAME(7),  IDC_PANE_BAR(7),  IDC_PANE_NUMBER_7},
    {IDC_PANE_NAME(8),  IDC_PANE_BAR(8),  IDC_PANE_NUMBER_8},
    {IDC_PANE_NAME(9),  IDC_PANE_BAR(9),  IDC_PANE_NUMBER_9},
    {IDC_PANE_NAME(10), IDC_PANE_BAR(10), IDC_PANE_NUMBER_10},
    {IDC_PANE_NAME(11), IDC_PANE_BAR(11), IDC_PANE_NUMBER_11},
    {IDC_PANE_NAME(12), IDC_PANE_BAR(12), IDC_PANE_NUMBER_12},
}};
// clang-format on

} // namespace tintwerk
