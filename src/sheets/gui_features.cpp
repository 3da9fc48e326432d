#include "src/sheets/gui_features.h"

#include <cstring>

#include "src/features/keyword_list.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr char kRequest[] = "halvGuiMode\0halvGuiIcon\0halvScreenmode\0"; // and the closing zero
constexpr SIZE_T kGuiReplyBytes = 12512;

// Keywords cannot hold a path separator: the first "-" stands for it.
void TakeLogoFileName(GuiChoice& choice, const char* option)
{
    lstrcpynA(choice.oemLogoFileName, option, sizeof choice.oemLogoFileName);
    if (char* const separator = std::strchr(choice.oemLogoFileName, '-')) *separator = '\\';
}

void TakeFeature(GuiFeatures& gui, const KeywordPair& pair)
{
    Trace(TEXT("UI:  **Feature Option %S is %S\r\n"), pair.feature, pair.option);
    if (std::strcmp(pair.feature, "halvGuiMode") == 0)
        gui.choice.mode = GuiModeOf(pair.option, gui.choice.mode);
    else if (std::strcmp(pair.feature, "halvGuiIcon") == 0)
        TakeLogoFileName(gui.choice, pair.option);
    else if (std::strcmp(pair.feature, "halvScreenmode") == 0)
        gui.screenPrinting = true;
}

} // namespace

GuiFeatures ReadGuiFeatures(const CoreArea& core)
{
    GuiFeatures gui;
    if (!core.helper) return gui;
    char reply[kGuiReplyBytes] = {};
    DWORD needed = 0;
    const HRESULT status =
        core.helper->GetOptions(core.object, 0, kRequest, sizeof(kRequest), reply, sizeof(reply), &needed);
    if (FAILED(status)) {
        Trace(TEXT("UI:  GetOptions failed with result = %x\n"), static_cast<unsigned>(status));
        return gui;
    }
    Trace(TEXT("UI:  Reply length=%d\n"), static_cast<int>(needed));
    for (const KeywordPair& pair : PairList(reply, BytesGiven(needed, sizeof(reply))))
        TakeFeature(gui, pair);
    return gui;
}

} // namespace tintwerk
