#include "src/features/constraints.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "src/bindings/media_modes.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"
#include "src/features/control_access.h"
#include "src/features/feature_access.h"
#include "src/features/keyword_list.h"
#include "src/features/popup_filling.h"
#include "src/i18n/texts.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kConstrainedBytes = 8192; // of the list of all forbidden options of a feature

// Sliders and popups that a profile without colour data leaves nothing to do.
constexpr SliderRow kColorDataSliders[] = {
    kSliderBrightness, kSliderContrast,  kSliderGamut,   kSliderShadows,   kSliderRefLight,  kSliderGreyToneA,
    kSliderGreyToneB,  kSliderIntensity, kSliderTac,     kSliderInklimitK, kSliderInklimitY, kSliderInklimitM,
    kSliderInklimitC,  kSliderAdjustK,   kSliderAdjustY, kSliderAdjustM,   kSliderAdjustC,
};
constexpr PopupRow kColorDataPopups[] = {
    kPopupResolution, kPopupIntent, kPopupDithering, kPopupCartridge, kPopupCmykSpace, kPopupColorspace,
};

// The bright magenta slider with its caption, value label, scale labels and picture.
constexpr int kBrightMagentaColumn[] = {
    IDC_INK_BRIGHT_M_MAX,   IDC_INK_BRIGHT_M_NORM, IDC_INK_BRIGHT_M_MIN,    IDC_INK_BRIGHT_M_CAPTION,
    IDC_INK_BRIGHT_M_VALUE, IDC_INK_BRIGHT_M,      IDC_INK_BRIGHT_M_PICTURE};

bool Equal(const char* a, const char* b)
{
    return std::strcmp(a, b) == 0;
}

// Empty for none.
const char* SelectedKeyword(const SheetContext& context, PopupRow row, int selection)
{
    const OptionEntry* const selected = FindSelected(context.options->lists[row].data(), selection);
    return selected ? selected->keyword : "";
}

const char* SelectedKeyword(const SheetContext& context, PopupRow row)
{
    return SelectedKeyword(context, row, context.popups.selections[row]);
}

// Traces a text that is finished in 8 bits.
template <typename... Arguments> void TraceFormatted(const char* format, Arguments... arguments)
{
    char text[320];
    std::snprintf(text, sizeof text, format, arguments...);
    TraceText(text);
}

// Whether a media type is forbidden by the cartridge. One that is forbidden only by other features stays
// available: choosing it moves those instead.
bool ForbiddenByCartridge(const CoreArea& core, const char* feature, const char* option)
{
    char reply[kReplyBytes] = {};
    DWORD needed = kReplyBytes;
    if (core.helper->WhyConstrained(core.object, 0, feature, option, reply, kReplyBytes, &needed) != S_OK)
        return false;
    const char* const cartridge = WithoutAsterisk(kPopupTable[kPopupCartridge].keyword);
    for (const auto [constraining, selected] : PairList(reply, BytesGiven(needed, kReplyBytes))) {
        Trace(TEXT("Mediatype constrained by Feature: '%S'\n"), constraining);
        if (Equal(constraining, cartridge)) return true;
    }
    return false;
}

bool IsForbidden(const CoreArea& core, int row, const char* feature, const char* option,
                 const KeywordList& constrained)
{
    for (const char* keyword : constrained)
        if (Equal(keyword, option) && (row != kPopupMediaType || ForbiddenByCartridge(core, feature, option)))
            return true;
    return false;
}

void UpdateBrightInks(const SheetContext& context, int mode)
{
    const bool common = mode == kBrightCyanMode;
    const WideText label =
        CFCopyLocalizedString(common ? TEXT("Bright Inks\nUsage") : TEXT("Bright Cyan\nUsage"), TEXT(""));
    ShowControl(context.inkControl.brightCyanIcon, !common);
    ShowControl(context.inkControl.photoIcon, common);
    if (const HWND page = context.pages[PositionOfPage(kInkControlPage)])
        for (const int id : kBrightMagentaColumn)
            ShowControl(GetDlgItem(page, id), !common);
    if (const HWND caption = context.inkControl.brightCyanLabel; caption && label) {
        SetWindowTextW(caption, label.get());
        UpdateWindow(caption);
    }
}

void WarnOfIncompleteProfile(HWND owner)
{
    const WideText caption = CFCopyLocalizedString(TEXT("Attention:"), TEXT(""));
    const WideText text =
        CFCopyLocalizedString(TEXT("You have chosen an incomplete media profile without color data! ")
                                  TEXT("This profile should only be used for printing color charts!"),
                              TEXT(""));
    MessageBoxW(owner, OrEmpty(text.get()), OrEmpty(caption.get()), MB_OK | MB_ICONWARNING | MB_SYSTEMMODAL);
}

} // namespace

void CheckConstraints(SheetContext& context, int row)
{
    TraceText("check win contraints\n");
    const HWND combo = context.popups.windows[row];
    if (!combo || !context.core.helper) return;
    int current = SelectedItemData(combo);

    const char* const feature = WithoutAsterisk(kPopupTable[static_cast<size_t>(row)].keyword);
    char reply[kConstrainedBytes] = {};
    DWORD needed = kConstrainedBytes;
    if (context.core.helper->EnumConstrainedOptions(context.core.object, 0, feature, reply, kConstrainedBytes,
                                                    &needed) != S_OK)
        return;
    const KeywordList constrained(reply, BytesGiven(needed, kConstrainedBytes));

    const OptionEntry* const list = PopupList(context, row);
    const int count = CountOptions(list);
    int available[kMaxOptions] = {};
    int last = 0;
    for (int selection = 1; selection <= count; ++selection) {
        const bool forbidden =
            IsForbidden(context.core, row, feature, list[selection - 1].keyword, constrained);
        available[selection - 1] = !forbidden;
        if (!forbidden)
            last = selection;
        else if (current == selection)
            ++current; // the next one, and on again when that is forbidden too
    }
    const int selection = std::min(current, last);
    FillPopUp(combo, list, available, selection);
    context.popups.selections[row] = selection;
}

void checkAvailabilityforMenus(SheetContext& context, int row)
{
    const HWND combo = context.popups.windows[row];
    const int mediaType = std::max(context.popups.selections[kPopupMediaType], 1);
    TraceFormatted("checkAvailabilityforMenus: item=kPOP_MEDIATYPE, selection=%d\n", mediaType);
    const char* const media = SelectedKeyword(context, kPopupMediaType, mediaType);
    const int mode = MediaMode(media);
    TraceFormatted("got MediaMode: %d - %.100s\n", mode, media);
    if (!combo) return;
    context.popups.selections[kPopupMediaType] = mediaType;
    TraceFormatted("Availabilitycheck - Mediamode = %d\n", mode);

    const MediaRules rules{mode, CountOptions(PopupList(context, kPopupColorModel)),
                           SelectedKeyword(context, kPopupIntent)};
    const OptionEntry* const list = PopupList(context, row);
    const int count = CountOptions(list);
    int available[kMaxOptions] = {};
    int current = SelectedItemData(combo);
    int last = 0;
    for (int selection = 1; selection <= count; ++selection) {
        const char* const option = list[selection - 1].keyword;
        available[selection - 1] = row == kPopupIntent ? rules.AllowIntent(option) : rules.AllowModel(option);
        if (available[selection - 1]) {
            Trace(TEXT("SetItemEnabled: %d/%d\n"), selection, 3);
            last = selection;
        } else if (current == selection) {
            current = last ? last : selection + 1; // the nearest one before, else the next one
        }
    }
    FillPopUp(combo, list, available, current);
    // Past the end nothing is available; what is kept names the first option then, as the popup would show
    // it.
    context.popups.selections[row] = current > count ? 1 : current;
}

void UpdateMediaModeControls(SheetContext& context, int controlId)
{
    const int mode = MediaMode(SelectedKeyword(context, kPopupMediaType));
    const bool hasColorData = mode != kIncompleteProfile;
    const auto& sliders = context.sliders.windows;
    EnableControl(sliders[kSliderBrightC], mode >= kBrightCyanMode);
    EnableControl(sliders[kSliderBrightM], mode >= kBrightMagentaMode);
    EnableControl(sliders[kSliderUcr], mode >= kUcrMode);
    UpdateBrightInks(context, mode);
    for (const PopupRow row : kColorDataPopups)
        EnableControl(context.popups.windows[row], hasColorData);
    for (const SliderRow row : kColorDataSliders)
        EnableControl(sliders[row], hasColorData);
    if (controlId == IDC_MAIN_MEDIA_TYPE && !hasColorData) WarnOfIncompleteProfile(context.owner);
}

void UpdateColorModeControls(SheetContext& context)
{
    int& selection = context.popups.selections[kPopupColorModel];
    selection = std::min(selection, std::max(CountOptions(PopupList(context, kPopupColorModel)), 1));
    const char* const model = SelectedKeyword(context, kPopupColorModel, selection);
    TraceFormatted("colmode=%d\n", selection);
    TraceFormatted("colmodename=%s\n", model);

    const bool cmyk = std::strncmp(model, "CMYK", 4) == 0;
    ShowControl(context.popups.windows[kPopupColorspace], !cmyk);
    ShowControl(context.popups.windows[kPopupCmykSpace], cmyk);
    TraceFormatted(cmyk ? "CMYK-Mode - %s\n" : "RGB-Mode - %s\n", model);
}

void EnableColorControls(SheetContext& context, bool enable)
{
    for (const SliderRow row : {kSliderAdjustK, kSliderAdjustC, kSliderAdjustM, kSliderAdjustY})
        EnableControl(context.sliders.windows[row], enable);
    Trace(enable ? TEXT("UI:  colors enabled\n") : TEXT("UI:  colors disabled\n"));
}

} // namespace tintwerk
