// The dialog templates as they were built: every control that the pages look up is there, nothing overlaps or
// sticks out, and every text fits in both languages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>

#include "host/sheet/page_controls.h"
#include "platform/win32.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/consumption_lines.h"
#include "src/i18n/page_translation.h"
#include "src/i18n/string_table.h"
#include "src/i18n/texts.h"
#include "src/records/page_kinds.h"
#include "src/resources/control_ids.h"
#include "tests/support/dialog_font.h"
#include "tests/support/dialog_template.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr int kPane = -1;        // not a page of the list: the consumption pane
constexpr int kInformation = -2; // the page of the printer properties
// What printers under another maker's name do not offer: contrast, intensity and the preview.
const std::set<int> kNotOnReducedMain{
    IDC_MAIN_CONTRAST_CAPTION, IDC_MAIN_INTENSITY_CAPTION, IDC_MAIN_CONTRAST,        IDC_MAIN_INTENSITY,
    IDC_MAIN_CONTRAST_VALUE,   IDC_MAIN_INTENSITY_VALUE,   IDC_MAIN_PREVIEW_CAPTION, IDC_MAIN_PREVIEW};
// Check boxes of the table that no page carries.
const std::set<int> kNowhere{IDC_CORRECTION_COLOR_GAMMA, IDC_CONSUMPTION_NO_PRINT, IDC_MAIN_PS_INTERPRETER};
constexpr int kPopupHeight = 13; // of a closed popup, in dialog units

struct Page
{
    int number;
    int position; // in the page list, or one of the two above
    SIZE size;
};

// clang-format off
constexpr Page kPages[] = {
    {IDD_MAIN, 0, {285, 240}},            {IDD_COLOR, 1, {285, 240}},
    {IDD_CORRECTION, 2, {285, 240}},      {IDD_CONSUMPTION, 3, {285, 240}},
    {IDD_INK_CONTROL, 4, {285, 240}},     {IDD_SCREEN_PRINTING, 5, {285, 240}},
    {IDD_MAIN_REDUCED, 0, {285, 240}},
    {IDD_LEGACY_MAIN, 0, {252, 215}},     {IDD_LEGACY_COLOR, 1, {252, 215}},
    {IDD_LEGACY_CORRECTION, 2, {252, 215}}, {IDD_LEGACY_CONSUMPTION, 3, {252, 215}},
    {IDD_LEGACY_INK_CONTROL, 4, {252, 215}},
    {IDD_PANE_TOTALS, kPane, {271, 127}}, {IDD_PANE_LAST_JOB, kPane, {271, 127}},
    {IDD_INFORMATION, kInformation, {285, 202}},
};
// clang-format on

// What a control is for the user; anything that would not work as such is named by its window class.
std::string KindOf(const TemplateControl& control)
{
    const DWORD style = control.style, type = style & (control.kind == "button" ? BS_TYPEMASK : SS_TYPEMASK);
    // Arrow keys in the buddy move the arrows; the page writes the number itself, and a buddy's text that the
    // arrows write would undo that.
    const bool isSpin = style & UDS_ARROWKEYS && style & UDS_AUTOBUDDY && !(style & UDS_SETBUDDYINT);
    const bool isPopup = (style & 3) == CBS_DROPDOWNLIST && !(style & CBS_SORT) && style & WS_VSCROLL &&
                         control.area.bottom - control.area.top >= 5 * kPopupHeight;
    if (control.kind == "static")
        return type <= SS_RIGHT       ? "label"
               : type == SS_BITMAP    ? "picture"
               : type == SS_OWNERDRAW ? "bar"
                                      : "rule";
    if (control.kind == "button")
        return type == BS_AUTOCHECKBOX ? "check box"
               : type == BS_GROUPBOX   ? "group"
               : type == BS_PUSHBUTTON ? "button"
                                       : "?";
    if (control.kind == "combobox" && isPopup) return "popup";
    if (control.kind == "msctls_updown32" && isSpin) return "spin";
    if (control.kind == "msctls_trackbar32") return "slider";
    return control.kind == "systabcontrol32" ? "tabs" : control.kind;
}

bool ShowsText(const TemplateControl& control)
{
    const std::string kind = KindOf(control);
    return kind == "label" || kind == "check box" || kind == "group" || kind == "button";
}

using Requirements = std::vector<std::pair<int, std::string>>; // id and kind; an empty one shows a text

// Controls that no table names: the pages' own rules look them up.
// clang-format off
const std::pair<int, Requirements> kNamedByRules[] = {
    {0, {{IDC_MAIN_SIZE_LABEL, "label"}, {IDC_MAIN_OEM_LOGO, "picture"}, {IDC_MAIN_BORDERLESS, "check box"}}},
    {3, {{IDC_CONSUMPTION_TABS, "tabs"}, {IDC_CONSUMPTION_RESET, "button"}, {IDC_CONSUMPTION_SIMULATE, "check box"}}},
    {4, {{IDC_INK_BRIGHT_C_CAPTION, "label"}, {IDC_INK_BRIGHT_C_PICTURE, "picture"},
         {IDC_INK_BRIGHT_INKS_PICTURE, "picture"}, {IDC_INK_BRIGHT_M_PICTURE, "picture"}}},
    {kPane, {{IDC_PANE_SUM, "label"}, {IDC_PANE_SUM_CAPTION, "label"}}},
    {kInformation, {{IDC_INFORMATION_MAKER_LOGO, "picture"}, {IDC_INFORMATION_PRODUCT_LOGO, "picture"},
                    {IDC_INFORMATION_PICTURE, "picture"}, {IDC_INFORMATION_VERSION, "label"},
                    {IDC_INFORMATION_MODULE_VERSIONS, "label"}}},
};
// clang-format on

Requirements Required(int position)
{
    Requirements all;
    for (const auto& [page, controls] : kNamedByRules)
        if (page == position) all = controls;
    if (position == kPane)
        for (const PaneLine& line : kPaneLineTable)
            all.insert(all.end(), {{line.barId, "bar"}, {line.numberId, "label"}, {line.nameId, "label"}});
    if (position < 0) return all;

    all.emplace_back(kPageKindTable[position].centringControl, "");
    for (const PageLabel& label : PageLabels(position))
        all.emplace_back(label.controlId, "");
    for (const PageControl& control : PageControls()) {
        if (control.page != PageOfTab(kPageKindTable[position].tabBit) || kNowhere.contains(control.id))
            continue;
        all.emplace_back(control.id, control.slider     ? "slider"
                                     : control.number   ? "edit"
                                     : control.checkBox ? "check box"
                                                        : "popup");
        if (control.slider && control.slider->labelId) all.emplace_back(control.slider->labelId, "label");
        if (control.number) all.emplace_back(control.number->spinId, "spin");
    }
    for (int row = 0; position == 5 && row < kCartridgeRows; ++row)
        all.insert(all.end(), {{kCartridgeIconIds[row], "picture"}, {kCartridgeNameIds[row], "label"}});
    return all;
}

class DialogTemplates : public testing::TestWithParam<Page>
{
protected:
    const Page page = GetParam();
    const DialogPage dialog{page.number};
};

INSTANTIATE_TEST_SUITE_P(All, DialogTemplates, testing::ValuesIn(kPages),
                         [](const auto& each) { return std::to_string(each.param.number); });

TEST_P(DialogTemplates, HoldEveryControlThatThePagesLookUp)
{
    for (const auto& [id, kind] : Required(page.position)) {
        const TemplateControl* const control = dialog.Find(id);
        EXPECT_EQ(page.number == IDD_MAIN_REDUCED && kNotOnReducedMain.contains(id), !control) << id;
        EXPECT_TRUE(!control || (kind.empty() ? ShowsText(*control) : kind == KindOf(*control)))
            << id << " " << kind;
    }
    for (const int id : kNowhere)
        EXPECT_FALSE(dialog.Find(id)) << id;
}

// Controls of which the pages show one at a time.
bool ShareAPlace(int position, int a, int b)
{
    const std::set<int> pair{a, b};
    return (position == 1 && pair == std::set{IDC_COLOR_CMYK_SPACE, IDC_COLOR_SPACE}) ||
           (position == 4 && pair == std::set{IDC_INK_BRIGHT_C_PICTURE, IDC_INK_BRIGHT_INKS_PICTURE});
}

// Captions of a scale's ends name a position of a slider, not the slider.
bool NamesAControl(const Page& page, const TemplateControl& label)
{
    if (page.position < 0) return true;
    for (const PageLabel& row : PageLabels(page.position))
        if (row.controlId == label.id) return !std::string_view(row.key).starts_with("label_scale_");
    return page.position == 4 && label.id == IDC_INK_BRIGHT_C_CAPTION; // its text depends on the media
}

// A screen reader calls a control by its own text, or by the label before it.
TEST_P(DialogTemplates, NameEveryControlForAScreenReader)
{
    const TemplateControl* before = nullptr;
    std::string kindBefore;
    for (const TemplateControl& control : dialog.controls) {
        const std::string kind = KindOf(control);
        SCOPED_TRACE(kind + " " + std::to_string(control.id));
        if (kind == "picture" || kind == "rule") continue; // says nothing
        if (kind == "button" || kind == "check box") {
            const bool namedByItsCartridge =
                std::ranges::count(kCheckBoxTable.begin() + kCheckCartridge0, kCheckBoxTable.end(),
                                   control.id, &CheckBoxBinding::controlId) == 1;
            EXPECT_NE(namedByItsCartridge, !control.text.empty());
        } else if (kind == "spin") {
            ASSERT_EQ("edit", kindBefore); // its buddy, beside which it stands
            EXPECT_TRUE(before->area.right == control.area.left && before->area.top == control.area.top &&
                        before->area.bottom == control.area.bottom);
        } else if (kind == "popup" || kind == "slider" || kind == "edit" || kind == "tabs") {
            ASSERT_TRUE(before);
            EXPECT_TRUE(ShareAPlace(page.position, before->id, control.id) ||
                        (kindBefore == "label" && !before->text.empty() && NamesAControl(page, *before)));
        }
        before = &control;
        kindBefore = kind;
    }
}

TEST_P(DialogTemplates, HaveTheSizesAndFontsOfTheirKind)
{
    const bool isInformation = page.position == kInformation;
    EXPECT_EQ(page.size.cx, dialog.size.cx);
    EXPECT_EQ(page.size.cy, dialog.size.cy);
    EXPECT_EQ(isInformation ? TEXT("MS Sans Serif") : TEXT("MS Shell Dlg"), dialog.font);
    EXPECT_EQ(8, dialog.points);
    EXPECT_EQ(isInformation ? TEXT("Information") : TEXT(""), dialog.caption);
    EXPECT_EQ(page.position == kPane ? WS_CHILD | WS_VISIBLE : WS_CHILD,
              dialog.style & (WS_CHILD | WS_VISIBLE));
}

// What the user sees of a control: a popup's height is that of its open list.
RECT ShownArea(const TemplateControl& control)
{
    RECT area = control.area;
    if (control.kind == "combobox") area.bottom = area.top + kPopupHeight;
    return area;
}

// Centring makes every control a pixel wider and higher; a group box then hides the frame of one that touches
// it.
bool Overlap(const RECT& a, const TemplateControl& control)
{
    const RECT b = ShownArea(control);
    const LONG bottom = b.bottom + (KindOf(control) == "group");
    return a.left < b.right && b.left < a.right && a.top < bottom && b.top < a.bottom;
}

// Inside a group box with room for its frame and its caption.
bool Frames(const TemplateControl& group, const RECT& inside)
{
    const RECT& frame = group.area;
    return KindOf(group) == "group" && inside.left >= frame.left + 4 && inside.right <= frame.right - 4 &&
           inside.top >= frame.top + 8 && inside.bottom <= frame.bottom - 3;
}

TEST_P(DialogTemplates, KeepControlsApartAndInsideThePage)
{
    std::set<int> ids;
    for (size_t i = 0; i < dialog.controls.size(); ++i) {
        const TemplateControl& control = dialog.controls[i];
        EXPECT_TRUE(control.id == -1 || ids.insert(control.id).second) << control.id << " twice";
        const RECT area = ShownArea(control);
        EXPECT_TRUE(area.left >= 2 && area.top >= 0 && area.right <= dialog.size.cx - 2 &&
                    area.bottom <= dialog.size.cy - 1)
            << control.id << " leaves the page";
        for (size_t k = 0; k < i; ++k) {
            const TemplateControl& other = dialog.controls[k];
            if (!(control.style & other.style & WS_VISIBLE) ||
                ShareAPlace(page.position, control.id, other.id))
                continue;
            EXPECT_TRUE(!Overlap(area, other) || Frames(other, area))
                << control.id << " overlaps " << other.id;
        }
    }
}

TEST_P(DialogTemplates, StayInsideThePageWhenTheyAreCentred)
{
    if (page.position < 0) return;
    const auto pixels = [](int units) { return units * kDialogBaseWidth / 4; };
    const RECT& reference = dialog.Find(kPageKindTable[page.position].centringControl)->area;
    // In a sheet that leaves ten pixels on either side of the page; a negative move is none.
    const int width = pixels(reference.right - reference.left) + 1;
    const int move = std::max(0, (pixels(dialog.size.cx) - 20 - width) / 2 - pixels(reference.left));
    for (const TemplateControl& control : dialog.controls)
        EXPECT_LE(pixels(control.area.right) + move + 1, pixels(dialog.size.cx)) << control.id;
}

Text Wide(const char* text)
{
    return CopyWideFromUtf8(text).get();
}

const StringRow& Row(std::string_view key)
{
    return *std::find_if(std::begin(kStringTable), std::end(kStringTable),
                         [key](const StringRow& row) { return row.key == key; });
}

// The texts that a control shows at run time, widest cases included.
std::vector<Text> RuntimeTexts(int position, int id)
{
    std::vector<Text> texts;
    const auto both = [&texts](std::string_view key) {
        texts.insert(texts.end(), {Wide(Row(key).english.data()), Wide(Row(key).german)});
    };
    const std::map<std::pair<int, int>, Text> widest{
        {{kPane, IDC_PANE_SUM}, TEXT("999999")},
        {{kInformation, IDC_INFORMATION_VERSION}, TEXT("Version: 10.0.22621.1234567890123")},
        {{kInformation, IDC_INFORMATION_MODULE_VERSIONS},
         TEXT("[ drv: 10.0.22621.12345678 / pscript: 10.0.22621.12345678 / psui: 10.0.22621.12345678 ]")},
        {{0, IDC_MAIN_SIZE_LABEL}, TEXT("(1118 x 15000 mm)")}};
    if (const auto text = widest.find({position, id}); text != widest.end()) texts.push_back(text->second);
    if (position == kPane) {
        if (std::ranges::count(kPaneLineTable, id, &PaneLine::nameId))
            for (const StringRow& row : kStringTable)
                if (row.key.starts_with("to_ink_")) both(row.key);
        if (id == IDC_PANE_SUM_CAPTION) both("wtxt_counter_total");
        if (std::ranges::count(kPaneLineTable, id, &PaneLine::numberId)) texts.emplace_back(TEXT("99999"));
    }
    if (position < 0) return texts;

    for (const PageLabel& label : PageLabels(position))
        if (label.controlId == id) both(label.key);
    for (const ControlBinding& slider : kSliderTable)
        if (slider.tabBit == kPageKindTable[position].tabBit && slider.labelId == id)
            for (const int end : {slider.minimum, slider.maximum}) {
                char text[32];
                std::snprintf(text, sizeof text, slider.format, DisplayValue(slider, end));
                texts.push_back(Wide(text));
            }
    if (position == 4 && id == IDC_INK_BRIGHT_C_CAPTION) {
        both("label_ctrl_brcyan");
        both("label_ctrl_brinks");
    }
    if (position == 5 && std::ranges::count(kCartridgeNameIds, id))
        for (const CartridgeColor& color : kCartridgeColorTable)
            texts.emplace_back(color.code);
    return texts;
}

// Lines that a text takes when it is broken at blanks; 99 when a single word is too wide.
int LinesOf(const Text& text, int width)
{
    int lines = 0;
    for (size_t start = 0; start <= text.size(); ++lines) {
        size_t end = std::min(text.find(TEXT('\n'), start), text.size());
        while (DialogTextWidth({text.data() + start, end - start}) > width) {
            end = text.find_last_of(TEXT(' '), end - 1);
            if (end == Text::npos || end <= start) return 99;
        }
        start = end + 1;
    }
    return lines;
}

bool Fits(const TemplateControl& control, const Text& text)
{
    const int width = (control.area.right - control.area.left) * kDialogBaseWidth / 4;
    const int height = (control.area.bottom - control.area.top) * kDialogLineHeight / 8;
    if (KindOf(control) == "label") return LinesOf(text, width) * kDialogLineHeight <= height;
    const int surroundings =
        KindOf(control) == "check box" ? 18 : 16; // the box, the ends of a frame, a button's border
    return text.empty() || DialogTextWidth(text) + surroundings <= width;
}

TEST_P(DialogTemplates, ShowGermanTextsAndHaveRoomForBothLanguages)
{
    for (const TemplateControl& control : dialog.controls) {
        if (!ShowsText(control)) continue;
        std::vector<Text> texts = RuntimeTexts(page.position, control.id);
        texts.push_back(control.text);
        for (const Text& text : texts)
            EXPECT_TRUE(Fits(control, text))
                << control.id << " cuts " << std::string(text.begin(), text.end());
        for (const PageLabel& label : PageLabels(std::max(page.position, 0)))
            EXPECT_TRUE(page.position < 0 || label.controlId != control.id ||
                        Wide(Row(label.key).german) == control.text)
                << control.id;
    }
}

TEST_P(DialogTemplates, LeadTheKeyboardFromTopToBottomAndFromColumnToColumn)
{
    const TemplateControl* previous = nullptr;
    for (const TemplateControl& control : dialog.controls) {
        const bool passive =
            control.kind == "static" || KindOf(control) == "group" || control.kind == "msctls_updown32";
        EXPECT_EQ(!passive, (control.style & WS_TABSTOP) != 0) << control.id;
        if (passive) continue;
        if (previous && !ShareAPlace(page.position, control.id, previous->id)) {
            const RECT before = ShownArea(*previous), now = ShownArea(control);
            EXPECT_TRUE(now.top >= before.bottom || now.left >= before.right)
                << previous->id << " to " << control.id;
        }
        previous = &control;
    }
}

TEST(ConsumptionPane, HasTwelveEqualLinesThatFitBothPages)
{
    const DialogPage pane{IDD_PANE_LAST_JOB};
    const LONG first = pane.Find(IDC_PANE_NAME(1))->area.top;
    const LONG pitch = pane.Find(IDC_PANE_NAME(2))->area.top - first;
    LONG top = first;
    for (const PaneLine& line : kPaneLineTable) {
        for (const int id : {line.nameId, line.numberId, line.barId})
            EXPECT_EQ(top, pane.Find(id)->area.top) << id;
        top += pitch;
    }
    for (const int number : {IDD_CONSUMPTION, IDD_LEGACY_CONSUMPTION}) {
        SCOPED_TRACE(number);
        const RECT tabs = DialogPage(number).Find(IDC_CONSUMPTION_TABS)->area;
        for (const TemplateControl& control : pane.controls) {
            EXPECT_LE(control.area.right, tabs.right - tabs.left - 6) << control.id;
            EXPECT_LE(control.area.bottom, tabs.bottom - tabs.top - 20) << control.id; // below the tabs
        }
    }
}

// Where pictures are shown, the system's own colours take the place of the first pixel's colour and of three
// greys.
TEST(Pictures, FitTheirControlsAndLeaveTheirOutsideToTheSystem)
{
    const DialogPage information = DialogPage(IDD_INFORMATION),
                     screenPrinting = DialogPage(IDD_SCREEN_PRINTING);
    std::vector<std::pair<int, TemplateControl>> all{
        {IDB_MAKER_LOGO, *information.Find(IDC_INFORMATION_MAKER_LOGO)},
        {IDB_PRODUCT_LOGO, *information.Find(IDC_INFORMATION_PRODUCT_LOGO)},
        {IDB_INFORMATION, *information.Find(IDC_INFORMATION_PICTURE)}};
    for (const CartridgeColor& color : kCartridgeColorTable)
        for (const int icon : kCartridgeIconIds)
            all.emplace_back(color.picture, *screenPrinting.Find(icon));
    for (const Page& page : kPages)
        for (const TemplateControl& control : DialogPage(page.number).controls)
            if (control.picture) all.emplace_back(control.picture, control);
    const HMODULE module = GetModuleHandleW(nullptr);
    for (const auto& [number, control] : all) {
        SCOPED_TRACE(number);
        const HRSRC resource =
            FindResourceW(module, MAKEINTRESOURCEW(number), MAKEINTRESOURCEW(2)); // RT_BITMAP
        ASSERT_TRUE(resource);
        BITMAPINFOHEADER header{};
        const BYTE* const data = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
        std::memcpy(&header, data, sizeof header);
        // The control is wide enough even where a dialog unit is smallest.
        EXPECT_LE(header.biWidth, (control.area.right - control.area.left) * 6 / 4);
        EXPECT_LE(header.biHeight, (control.area.bottom - control.area.top) * 13 / 8);
        ASSERT_GE(8, header.biBitCount);
        std::vector<DWORD> palette(header.biClrUsed ? header.biClrUsed : size_t{1} << header.biBitCount);
        std::memcpy(palette.data(), data + sizeof header, palette.size() * sizeof(DWORD));
        const BYTE first = data[sizeof header + palette.size() * sizeof(DWORD)];
        EXPECT_EQ(0, header.biBitCount == 8 ? first : first >> 4) << "not of the first colour";
        for (const DWORD mapped : {DWORD{0x808080}, DWORD{0xC0C0C0}, DWORD{0xDFDFDF}, palette[0]})
            EXPECT_EQ(mapped == palette[0] ? 1 : 0, std::ranges::count(palette, mapped))
                << std::hex << mapped;
    }
}

} // namespace
} // namespace tintwerk
