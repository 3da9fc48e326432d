#include "src/i18n/page_translation.h"

#include "src/resources/control_ids.h"

namespace tintwerk {

namespace {

// clang-format off
constexpr PageLabel kMainLabels[] = {
    {IDC_MAIN_MEDIA_TYPE_CAPTION, "label_pr_paper"},
    {IDC_MAIN_PAGE_SIZE_CAPTION,  "label_pa_pagesize"},
    {IDC_MAIN_OUTPUT_BIN_CAPTION, "label_pa_tray"},
    {IDC_MAIN_INPUT_SLOT_CAPTION, "label_pa_feed"},
    {IDC_MAIN_RESOLUTION_CAPTION, "label_pr_quality"},
    {IDC_MAIN_BRIGHTNESS_CAPTION, "label_gr_brightness"},
    {IDC_MAIN_CONTRAST_CAPTION,   "label_gr_contrast"},
    {IDC_MAIN_INTENSITY_CAPTION,  "wlabel_gr_intensity"},
    {IDC_MAIN_BORDERLESS,         "wlabel_pr_borderless"},
    {IDC_MAIN_CARTRIDGE_CAPTION,  "label_pr_cartridge"},
    {IDC_MAIN_SCALE_MIN,          "label_scale_min*9"},
    {IDC_MAIN_SCALE_MAX,          "label_scale_max*9"},
    {IDC_MAIN_OVERPRINT_MIN,      "label_scale_min*9"},
    {IDC_MAIN_OVERPRINT_MAX,      "label_scale_max*9"},
    {IDC_MAIN_OVERPRINT_CAPTION,  "wlabel_pr_overprint"},
    {IDC_MAIN_PAPER_GROUP,        "wlabel_group_paper"},
    {IDC_MAIN_PRINT_MODE_GROUP,   "wlabel_group_printmode"},
    {IDC_MAIN_PREVIEW_CAPTION,    "wlabel_pr_preview"},
    {IDC_MAIN_PREVIEW,            "wlabel_pr_prevactivate"},
};

constexpr PageLabel kColorLabels[] = {
    {IDC_COLOR_REF_LIGHT_CAPTION,    "label_col_reflight"},
    {IDC_COLOR_MODEL_CAPTION,        "label_pr_colormode"},
    {IDC_COLOR_DITHERING_CAPTION,    "label_gr_dithering"},
    {IDC_COLOR_INTENT_CAPTION,       "label_col_intent"},
    {IDC_COLOR_SPACE_CAPTION,        "label_col_colorspace"},
    {IDC_COLOR_GAMUT_CAPTION,        "label_col_gamut"},
    {IDC_COLOR_SHADOWS_CAPTION,      "label_col_shadow"},
    {IDC_COLOR_GREY_TONE_CAPTION,    "label_col_tone"},
    {IDC_COLOR_GREY_TONE_A_RED,      "label_col_red"},
    {IDC_COLOR_GREY_TONE_A_GREEN,    "label_col_green"},
    {IDC_COLOR_GREY_TONE_B_BLUE,     "label_col_blue"},
    {IDC_COLOR_GREY_TONE_B_YELLOW,   "label_col_yellow"},
    {IDC_COLOR_GAMUT_NORM,           "label_scale_norm*9"},
    {IDC_COLOR_SHADOWS_NORM,         "label_scale_norm*9"},
    {IDC_COLOR_GAMUT_MIN,            "label_scale_min*9"},
    {IDC_COLOR_GAMUT_MAX,            "label_scale_max*9"},
    {IDC_COLOR_SHADOWS_MIN,          "label_scale_min*9"},
    {IDC_COLOR_SHADOWS_MAX,          "label_scale_max*9"},
    {IDC_COLOR_REF_LIGHT_DAYLIGHT,   "label_col_D65"},
    {IDC_COLOR_ADAPTION_GROUP,       "wlabel_color_adaption"},
    {IDC_COLOR_INTERPRETATION_GROUP, "wlabel_color_interpretation"},
};

constexpr PageLabel kCorrectionLabels[] = {
    {IDC_CORRECTION_K_MIN,     "label_scale_min*9"},
    {IDC_CORRECTION_C_MIN,     "label_scale_min*9"},
    {IDC_CORRECTION_M_MIN,     "label_scale_min*9"},
    {IDC_CORRECTION_Y_MIN,     "label_scale_min*9"},
    {IDC_CORRECTION_K_NORM,    "label_scale_norm*9"},
    {IDC_CORRECTION_C_NORM,    "label_scale_norm*9"},
    {IDC_CORRECTION_M_NORM,    "label_scale_norm*9"},
    {IDC_CORRECTION_Y_NORM,    "label_scale_norm*9"},
    {IDC_CORRECTION_K_MAX,     "label_scale_max*9"},
    {IDC_CORRECTION_C_MAX,     "label_scale_max*9"},
    {IDC_CORRECTION_M_MAX,     "label_scale_max*9"},
    {IDC_CORRECTION_Y_MAX,     "label_scale_max*9"},
    {IDC_CORRECTION_Y_CAPTION, "label_gr_yellow*1"},
    {IDC_CORRECTION_M_CAPTION, "label_gr_magenta*1"},
    {IDC_CORRECTION_C_CAPTION, "label_gr_cyan*1"},
    {IDC_CORRECTION_K_CAPTION, "label_gr_black*1"},
    {IDC_CORRECTION_GROUP,     "label_co_correction"},
};

constexpr PageLabel kConsumptionLabels[] = {
    {IDC_CONSUMPTION_RESET,    "wlabel_consume_reset"},
    {IDC_CONSUMPTION_SIMULATE, "wlabel_consume_simulate"},
    {IDC_CONSUMPTION_HEADER,   "wlabel_consume_header"},
};

constexpr PageLabel kInkControlLabels[] = {
    {IDC_INK_UCR_CAPTION,      "label_ctrl_blacklevel"},
    {IDC_INK_BRIGHT_M_CAPTION, "label_ctrl_brmagenta"},
    {IDC_INK_TAC_CAPTION,      "label_ctrl_TAC"},
    {IDC_INK_LIMIT_MIN,        "label_scale_min*9"},
    {IDC_INK_UCR_MIN,          "label_scale_min*9"},
    {IDC_INK_BRIGHT_C_MIN,     "label_scale_min*9"},
    {IDC_INK_BRIGHT_M_MIN,     "label_scale_min*9"},
    {IDC_INK_TAC_MIN,          "label_scale_min*9"},
    {IDC_INK_LIMIT_NORM,       "label_scale_norm*9"},
    {IDC_INK_UCR_NORM,         "label_scale_norm*9"},
    {IDC_INK_BRIGHT_C_NORM,    "label_scale_norm*9"},
    {IDC_INK_BRIGHT_M_NORM,    "label_scale_norm*9"},
    {IDC_INK_LIMIT_MAX,        "label_scale_max*9"},
    {IDC_INK_UCR_MAX,          "label_scale_max*9"},
    {IDC_INK_BRIGHT_C_MAX,     "label_scale_max*9"},
    {IDC_INK_BRIGHT_M_MAX,     "label_scale_max*9"},
    {IDC_INK_TAC_MAX,          "label_scale_max*9"},
    {IDC_INK_LIMIT_Y_CAPTION,  "label_gr_yellow*1"},
    {IDC_INK_LIMIT_M_CAPTION,  "label_gr_magenta*1"},
    {IDC_INK_LIMIT_C_CAPTION,  "label_gr_cyan*1"},
    {IDC_INK_LIMIT_K_CAPTION,  "label_gr_black*1"},
    {IDC_INK_LIMIT_GROUP,      "label_inksaturation"},
};

constexpr PageLabel kScreenPrintingLabels[] = {
    {IDC_SCREEN_PRINTING,           "label_sp_screenPrinting"},
    {IDC_SCREEN_SATURATION_CAPTION, "label_sp_inkcolume"},
    {IDC_SCREEN_SATURATION_MIN,     "label_scale_min*9"},
    {IDC_SCREEN_SATURATION_MAX,     "label_scale_max*9"},
    {IDC_SCREEN_DROP_SIZE_CAPTION,  "label_sp_dropsize"},
    {IDC_SCREEN_DROP_SIZE_HINT,     "label_sp_commentdropsize"},
    {IDC_SCREEN_MULTI_BLACK,        "label_sp_multiblack"},
    {IDC_SCREEN_HALFTONE_CAPTION,   "label_sp_halftone"},
    {IDC_SCREEN_SHAPE_CAPTION,      "label_sp_halftoneshape"},
    {IDC_SCREEN_LPI_CAPTION,        "label_sp_lpi"},
    {IDC_SCREEN_ANGLE_CAPTION,      "label_sp_angle"},
};

// clang-format on

} // namespace

std::span<const PageLabel> PageLabels(int position)
{
    switch (position) {
    case 0:
        return kMainLabels;
    case 1:
        return kColorLabels;
    case 2:
        return kCorrectionLabels;
    case 3:
        return kConsumptionLabels;
    case 4:
        return kInkControlLabels;
    case 5:
        return kScreenPrintingLabels;
    default:
        return {};
    }
}

} // namespace tintwerk
