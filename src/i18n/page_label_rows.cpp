#include "src/i18n/page_labels.h"

namespace tintwerk {

namespace {

// clang-format off
constexpr PageLabel kMainLabels[] = {
    {1165, "label_pr_paper"},
    {1161, "label_pa_pagesize"},
    {1163, "label_pa_tray"},
    {1162, "label_pa_feed"},
    {1164, "label_pr_quality"},
    {1166, "label_gr_brightness"},
    {1167, "label_gr_contrast"},
    {1168, "wlabel_gr_intensity"},
    {1123, "wlabel_pr_borderless"},
    {1115, "label_pr_cartridge"},
    {1169, "label_scale_min*9"},
    {1170, "label_scale_max*9"},
    {1227, "label_scale_min*9"},
    {1228, "label_scale_max*9"},
    {1229, "wlabel_pr_overprint"},
    {1159, "wlabel_group_paper"},
    {1160, "wlabel_group_printmode"},
    {1235, "wlabel_pr_preview"},
    {12346, "wlabel_pr_prevactivate"},
};

constexpr PageLabel kColorLabels[] = {
    {1144, "label_col_reflight"},
    {1145, "label_pr_colormode"},
    {1146, "label_gr_dithering"},
    {1147, "label_col_intent"},
    {1148, "label_col_colorspace"},
    {1149, "label_col_gamut"},
    {1159, "label_col_shadow"},
    {1150, "label_col_tone"},
    {1157, "label_col_red"},
    {1156, "label_col_green"},
    {1155, "label_col_blue"},
    {1154, "label_col_yellow"},
    {1152, "label_scale_norm*9"},
    {1160, "label_scale_norm*9"},
    {1171, "label_scale_min*9"},
    {1170, "label_scale_max*9"},
    {1173, "label_scale_min*9"},
    {1172, "label_scale_max*9"},
    {1151, "label_col_D65"},
    {1153, "wlabel_color_adaption"},
    {1158, "wlabel_color_interpretation"},
};

constexpr PageLabel kCorrectionLabels[] = {
    {1181, "label_scale_min*9"},
    {1182, "label_scale_min*9"},
    {1183, "label_scale_min*9"},
    {1184, "label_scale_min*9"},
    {1185, "label_scale_norm*9"},
    {1186, "label_scale_norm*9"},
    {1187, "label_scale_norm*9"},
    {1188, "label_scale_norm*9"},
    {1177, "label_scale_max*9"},
    {1178, "label_scale_max*9"},
    {1179, "label_scale_max*9"},
    {1180, "label_scale_max*9"},
    {1176, "label_gr_yellow*1"},
    {1175, "label_gr_magenta*1"},
    {1174, "label_gr_cyan*1"},
    {1173, "label_gr_black*1"},
    {1172, "label_co_correction"},
};

constexpr PageLabel kConsumptionLabels[] = {
    {1214, "wlabel_consume_reset"},
    {1118, "wlabel_consume_simulate"},
    {1225, "wlabel_consume_header"},
};

constexpr PageLabel kInkControlLabels[] = {
    {1190, "label_ctrl_blacklevel"},
    {1192, "label_ctrl_brmagenta"},
    {1189, "label_ctrl_TAC"},
    {1203, "label_scale_min*9"},
    {1204, "label_scale_min*9"},
    {1205, "label_scale_min*9"},
    {1206, "label_scale_min*9"},
    {1207, "label_scale_min*9"},
    {1208, "label_scale_norm*9"},
    {1209, "label_scale_norm*9"},
    {1210, "label_scale_norm*9"},
    {1211, "label_scale_norm*9"},
    {1198, "label_scale_max*9"},
    {1199, "label_scale_max*9"},
    {1200, "label_scale_max*9"},
    {1201, "label_scale_max*9"},
    {1202, "label_scale_max*9"},
    {1197, "label_gr_yellow*1"},
    {1196, "label_gr_magenta*1"},
    {1195, "label_gr_cyan*1"},
    {1194, "label_gr_black*1"},
    {1193, "label_inksaturation"},
};

constexpr PageLabel kScreenPrintingLabels[] = {
    {1118, "label_sp_screenPrinting"},
    {1287, "label_sp_inkcolume"},
    {1288, "label_scale_min*9"},
    {1289, "label_scale_max*9"},
    {1190, "label_sp_dropsize"},
    {1290, "label_sp_commentdropsize"},
    {1239, "label_sp_multiblack"},
    {1291, "label_sp_halftone"},
    {1146, "label_sp_halftoneshape"},
    {1292, "label_sp_lpi"},
    {1293, "label_sp_angle"},
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
