// The source list of the layout page: orientation, page order, duplex and pages per sheet. Names that begin
// with "%" are the core driver's own features; Duplex exists only where the PPD has it. Texts and icons are
// numbers of the common property sheet UI, which shows its own.
#pragma once

#include "src/sheets/source_list.h"

namespace tintwerk {

// clang-format off
inline constexpr SourceRow kLayoutRows[] = {
    {"%Orientation",         64738, TVOT_3STATES,  DMPUB_ORIENTATION},
        {"Portrait",         64753, 64022, 0},
        {"Landscape",        64754, 64023, 0},
        {"RotatedLandscape", 64755, 64024, kLastOption},
    {"%PageOrder",           64855, TVOT_2STATES,  DMPUB_PAGEORDER},
        {"FrontToBack",      64856, 0,     0},
        {"BackToFront",      64857, 0,     kLastOption},
    {"Duplex",               64745, TVOT_3STATES,  DMPUB_DUPLEX},
        {"None",             64734, 64031, 0},
        {"DuplexNoTumble",   64771, 64033, 0},
        {"DuplexTumble",     64770, 64032, kLastOption},
    {"%PagePerSheet",        64864, TVOT_COMBOBOX, DMPUB_NUP},
        {"1",                64865, 0,     0},
        {"2",                64866, 0,     0},
        {"4",                64867, 0,     0},
        {"6",                64868, 0,     0},
        {"9",                64869, 0,     0},
        {"16",               64870, 0,     0},
        {"Booklet",          64873, 0,     kLastOption},
    {nullptr,                0,     0,     0},
};
// clang-format on

} // namespace tintwerk
