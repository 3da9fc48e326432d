// The numbers of the module's dialogs, controls and pictures, shared by the resources and the code: lines
// that both compilers read. A control's number stands on every template of its page; pages use some numbers
// for different controls. Page events and trace lines carry them: they never change.
#pragma once

// clang-format off

// Dialogs. The legacy ones are the smaller pages for systems before version 6.1.
#define IDD_MAIN               193
#define IDD_MAIN_REDUCED       194
#define IDD_COLOR              189
#define IDD_CORRECTION         192
#define IDD_CONSUMPTION        191
#define IDD_INK_CONTROL        190
#define IDD_SCREEN_PRINTING    229
#define IDD_LEGACY_MAIN        149
#define IDD_LEGACY_COLOR       162
#define IDD_LEGACY_CORRECTION  163
#define IDD_LEGACY_CONSUMPTION 107
#define IDD_LEGACY_INK_CONTROL 164
#define IDD_PANE_LAST_JOB      188
#define IDD_PANE_TOTALS        187
#define IDD_INFORMATION        106

// Pictures.
#define IDB_PRODUCT_LOGO   190
#define IDB_MAKER_LOGO     148
#define IDB_INFORMATION    125
#define IDB_CYAN           174
#define IDB_MAGENTA        175
#define IDB_BLACK          176
#define IDB_YELLOW         184
#define IDB_ORANGE         232
#define IDB_GREY           234
#define IDB_GREEN          235
#define IDB_LIGHT_GREY     236
#define IDB_RED            239
#define IDB_BLUE           241
#define IDB_WHITE          242 // also for empty slots and chroma
#define IDB_BRIGHT_CYAN    301
#define IDB_BRIGHT_INKS    302 // bright cyan and bright magenta
#define IDB_BRIGHT_MAGENTA 303
#define IDB_ALL_INKS       304

// Main page.
#define IDC_MAIN_PAPER_GROUP        1159
#define IDC_MAIN_PAGE_SIZE_CAPTION  1161
#define IDC_MAIN_PAGE_SIZE          1022
#define IDC_MAIN_SIZE_LABEL         1224 // the selected size in millimetres
#define IDC_MAIN_INPUT_SLOT_CAPTION 1162
#define IDC_MAIN_INPUT_SLOT         1023
#define IDC_MAIN_OUTPUT_BIN_CAPTION 1163
#define IDC_MAIN_OUTPUT_BIN         1024
#define IDC_MAIN_BORDERLESS         1123
#define IDC_MAIN_OVERPRINT_CAPTION  1229
#define IDC_MAIN_OVERPRINT          1217
#define IDC_MAIN_OVERPRINT_MIN      1227
#define IDC_MAIN_OVERPRINT_MAX      1228
#define IDC_MAIN_PRINT_MODE_GROUP   1160
#define IDC_MAIN_MEDIA_TYPE_CAPTION 1165
#define IDC_MAIN_MEDIA_TYPE         1073
#define IDC_MAIN_RESOLUTION_CAPTION 1164
#define IDC_MAIN_RESOLUTION         1072
#define IDC_MAIN_CARTRIDGE_CAPTION  1115
#define IDC_MAIN_CARTRIDGE          1075
#define IDC_MAIN_BRIGHTNESS_CAPTION 1166
#define IDC_MAIN_BRIGHTNESS         1232
#define IDC_MAIN_BRIGHTNESS_VALUE   1093
#define IDC_MAIN_CONTRAST_CAPTION   1167
#define IDC_MAIN_CONTRAST           1078
#define IDC_MAIN_CONTRAST_VALUE     1094
#define IDC_MAIN_INTENSITY_CAPTION  1168
#define IDC_MAIN_INTENSITY          1090
#define IDC_MAIN_INTENSITY_VALUE    1095
#define IDC_MAIN_SCALE_MIN          1169
#define IDC_MAIN_SCALE_MAX          1170
#define IDC_MAIN_PREVIEW_CAPTION    1235
#define IDC_MAIN_PREVIEW            12346
#define IDC_MAIN_OEM_LOGO           1238
#define IDC_MAIN_PS_INTERPRETER     12345 // on no template

// Colours page.
#define IDC_COLOR_INTERPRETATION_GROUP 1158
#define IDC_COLOR_MODEL_CAPTION        1145
#define IDC_COLOR_MODEL                1273
#define IDC_COLOR_SPACE_CAPTION        1148
#define IDC_COLOR_SPACE                1113
#define IDC_COLOR_CMYK_SPACE           1112
#define IDC_COLOR_INTENT_CAPTION       1147
#define IDC_COLOR_INTENT               1111
#define IDC_COLOR_DITHERING_CAPTION    1146
#define IDC_COLOR_DITHERING            1021
#define IDC_COLOR_ADAPTION_GROUP       1153
#define IDC_COLOR_REF_LIGHT_CAPTION    1144
#define IDC_COLOR_REF_LIGHT            1186
#define IDC_COLOR_REF_LIGHT_DAYLIGHT   1151
#define IDC_COLOR_REF_LIGHT_VALUE      1191
#define IDC_COLOR_GAMUT_CAPTION        1149
#define IDC_COLOR_GAMUT                1177
#define IDC_COLOR_GAMUT_VALUE          1192
#define IDC_COLOR_GAMUT_MIN            1171
#define IDC_COLOR_GAMUT_NORM           1152
#define IDC_COLOR_GAMUT_MAX            1170
#define IDC_COLOR_SHADOWS_CAPTION      1159
#define IDC_COLOR_SHADOWS              1178
#define IDC_COLOR_SHADOWS_VALUE        1194
#define IDC_COLOR_SHADOWS_MIN          1173
#define IDC_COLOR_SHADOWS_NORM         1160
#define IDC_COLOR_SHADOWS_MAX          1172
#define IDC_COLOR_GREY_TONE_CAPTION    1150
#define IDC_COLOR_GREY_TONE_A          1180
#define IDC_COLOR_GREY_TONE_A_GREEN    1156
#define IDC_COLOR_GREY_TONE_A_RED      1157
#define IDC_COLOR_GREY_TONE_A_VALUE    1193
#define IDC_COLOR_GREY_TONE_B          1179
#define IDC_COLOR_GREY_TONE_B_BLUE     1155
#define IDC_COLOR_GREY_TONE_B_YELLOW   1154
#define IDC_COLOR_GREY_TONE_B_VALUE    1196

// Correction page.
#define IDC_CORRECTION_GROUP       1172
#define IDC_CORRECTION_K_CAPTION   1173
#define IDC_CORRECTION_K           1296
#define IDC_CORRECTION_K_MAX       1177
#define IDC_CORRECTION_K_NORM      1185
#define IDC_CORRECTION_K_MIN       1181
#define IDC_CORRECTION_K_VALUE     1297
#define IDC_CORRECTION_C_CAPTION   1174
#define IDC_CORRECTION_C           1287
#define IDC_CORRECTION_C_MAX       1178
#define IDC_CORRECTION_C_NORM      1186
#define IDC_CORRECTION_C_MIN       1182
#define IDC_CORRECTION_C_VALUE     1292
#define IDC_CORRECTION_M_CAPTION   1175
#define IDC_CORRECTION_M           1288
#define IDC_CORRECTION_M_MAX       1179
#define IDC_CORRECTION_M_NORM      1187
#define IDC_CORRECTION_M_MIN       1183
#define IDC_CORRECTION_M_VALUE     1293
#define IDC_CORRECTION_Y_CAPTION   1176
#define IDC_CORRECTION_Y           1289
#define IDC_CORRECTION_Y_MAX       1180
#define IDC_CORRECTION_Y_NORM      1188
#define IDC_CORRECTION_Y_MIN       1184
#define IDC_CORRECTION_Y_VALUE     1294
#define IDC_CORRECTION_COLOR_GAMMA 12342 // on no template

// Consumption page.
#define IDC_CONSUMPTION_HEADER   1225
#define IDC_CONSUMPTION_TABS     1223
#define IDC_CONSUMPTION_SIMULATE 1118
#define IDC_CONSUMPTION_RESET    1214
#define IDC_CONSUMPTION_NO_PRINT 12344 // on no template

// Pane of the consumption page; its lines are numbered from 1.
#define IDC_PANE_NAME(line)  (3210 + (line))
#define IDC_PANE_BAR(line)   (3010 + (line))
#define IDC_PANE_NUMBER_1    3111
#define IDC_PANE_NUMBER_2    3112
#define IDC_PANE_NUMBER_3    3113
#define IDC_PANE_NUMBER_4    3114
#define IDC_PANE_NUMBER_5    3115
#define IDC_PANE_NUMBER_6    3116
#define IDC_PANE_NUMBER_7    3117
#define IDC_PANE_NUMBER_8    3118
#define IDC_PANE_NUMBER_9    3127
#define IDC_PANE_NUMBER_10   3128
#define IDC_PANE_NUMBER_11   3119
#define IDC_PANE_NUMBER_12   3129
#define IDC_PANE_SUM_CAPTION 1212
#define IDC_PANE_SUM         3130

// Ink control page.
#define IDC_INK_UCR_CAPTION         1190
#define IDC_INK_UCR                 1498
#define IDC_INK_UCR_MAX             1199
#define IDC_INK_UCR_NORM            1209
#define IDC_INK_UCR_MIN             1204
#define IDC_INK_UCR_VALUE           1405
#define IDC_INK_BRIGHT_C_CAPTION    1191
#define IDC_INK_BRIGHT_C            1499
#define IDC_INK_BRIGHT_C_MAX        1200
#define IDC_INK_BRIGHT_C_NORM       1210
#define IDC_INK_BRIGHT_C_MIN        1205
#define IDC_INK_BRIGHT_C_VALUE      1404
#define IDC_INK_BRIGHT_C_PICTURE    1237
#define IDC_INK_BRIGHT_INKS_PICTURE 1238 // in the same place
#define IDC_INK_BRIGHT_M_CAPTION    1192
#define IDC_INK_BRIGHT_M            1400
#define IDC_INK_BRIGHT_M_MAX        1201
#define IDC_INK_BRIGHT_M_NORM       1211
#define IDC_INK_BRIGHT_M_MIN        1206
#define IDC_INK_BRIGHT_M_VALUE      1403
#define IDC_INK_BRIGHT_M_PICTURE    1226
#define IDC_INK_TAC_CAPTION         1189
#define IDC_INK_TAC                 1401
#define IDC_INK_TAC_MAX             1202
#define IDC_INK_TAC_MIN             1207
#define IDC_INK_TAC_VALUE           1402
#define IDC_INK_LIMIT_GROUP         1193
#define IDC_INK_LIMIT_MAX           1198
#define IDC_INK_LIMIT_NORM          1208
#define IDC_INK_LIMIT_MIN           1203
#define IDC_INK_LIMIT_K_CAPTION     1194
#define IDC_INK_LIMIT_K             1506
#define IDC_INK_LIMIT_K_VALUE       1510
#define IDC_INK_LIMIT_C_CAPTION     1195
#define IDC_INK_LIMIT_C             1507
#define IDC_INK_LIMIT_C_VALUE       1511
#define IDC_INK_LIMIT_M_CAPTION     1196
#define IDC_INK_LIMIT_M             1508
#define IDC_INK_LIMIT_M_VALUE       1512
#define IDC_INK_LIMIT_Y_CAPTION     1197
#define IDC_INK_LIMIT_Y             1509
#define IDC_INK_LIMIT_Y_VALUE       1513

// Screen printing page; its cartridge slots are numbered from 0.
#define IDC_SCREEN_FRAME                1294
#define IDC_SCREEN_PRINTING             1118
#define IDC_SCREEN_SATURATION_CAPTION   1287
#define IDC_SCREEN_SATURATION           1255
#define IDC_SCREEN_SATURATION_VALUE     1256
#define IDC_SCREEN_SATURATION_MIN       1288
#define IDC_SCREEN_SATURATION_MAX       1289
#define IDC_SCREEN_DROP_SIZE_CAPTION    1190
#define IDC_SCREEN_DROP_SIZE_HINT       1290
#define IDC_SCREEN_HALFTONE_CAPTION     1291
#define IDC_SCREEN_HALFTONE             1257
#define IDC_SCREEN_SHAPE_CAPTION        1146
#define IDC_SCREEN_SHAPE                1274
#define IDC_SCREEN_LPI_CAPTION          1292
#define IDC_SCREEN_LPI                  1244
#define IDC_SCREEN_LPI_SPIN             1250
#define IDC_SCREEN_ANGLE_CAPTION        1293
#define IDC_SCREEN_ANGLE                1251
#define IDC_SCREEN_ANGLE_SPIN           1252
#define IDC_SCREEN_MULTI_BLACK          1239
#define IDC_SCREEN_CARTRIDGE_0          1240
#define IDC_SCREEN_CARTRIDGE_1          1241
#define IDC_SCREEN_CARTRIDGE_2          1242
#define IDC_SCREEN_CARTRIDGE_3          1243
#define IDC_SCREEN_CARTRIDGE_4          1245
#define IDC_SCREEN_CARTRIDGE_5          1246
#define IDC_SCREEN_CARTRIDGE_6          1247
#define IDC_SCREEN_CARTRIDGE_7          1248
#define IDC_SCREEN_CARTRIDGE_8          1249
#define IDC_SCREEN_CARTRIDGE_9          1253
#define IDC_SCREEN_CARTRIDGE_10         1254
#define IDC_SCREEN_CARTRIDGE_11         1258
#define IDC_SCREEN_CARTRIDGE_ICON(slot) (1261 + (slot))
#define IDC_SCREEN_CARTRIDGE_NAME_0     1286
#define IDC_SCREEN_CARTRIDGE_NAME_1     1275
#define IDC_SCREEN_CARTRIDGE_NAME_2     1276
#define IDC_SCREEN_CARTRIDGE_NAME_3     1277
#define IDC_SCREEN_CARTRIDGE_NAME_4     1278
#define IDC_SCREEN_CARTRIDGE_NAME_5     1279
#define IDC_SCREEN_CARTRIDGE_NAME_6     1280
#define IDC_SCREEN_CARTRIDGE_NAME_7     1281
#define IDC_SCREEN_CARTRIDGE_NAME_8     1282
#define IDC_SCREEN_CARTRIDGE_NAME_9     1283
#define IDC_SCREEN_CARTRIDGE_NAME_10    1284
#define IDC_SCREEN_CARTRIDGE_NAME_11    1285

// Information page.
#define IDC_INFORMATION_PRODUCT_LOGO    1063
#define IDC_INFORMATION_PICTURE         1066
#define IDC_INFORMATION_VERSION         1070
#define IDC_INFORMATION_MODULE_VERSIONS 1071
#define IDC_INFORMATION_MAKER_LOGO      1062

// clang-format on
