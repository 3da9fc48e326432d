// Sheet after sheet in one process: every control is worked, everything applied, and what the process holds
// of the system does not grow.
#include "tests/host/whole_story.h"

#include <cstdlib>
#include <iostream>

#include "host/sheet/sheet_controls.h"
#include "tests/support/template_pictures.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

class Soak : public WholeStory
{
protected:
    // Another value in every round.
    void Touch(HWND control)
    {
        const std::string kind = KindOfControl(control);
        if (kind == "slider") {
            DragSlider(control, static_cast<int>(
                                    SendMessageW(control, odd_ ? TBM_GETRANGEMAX : TBM_GETRANGEMIN, 0, 0)));
        } else if (kind == "popup") {
            const int last = static_cast<int>(ComboItems(control).size()) - 1;
            if (last >= 0) PickComboItem(control, odd_ ? last : 0);
        } else if (kind == "edit box") {
            TypeInto(control, odd_ ? TEXT("1") : TEXT("2"));
        } else if (kind == "tabs") {
            SendMessageW(control, TCM_SETCURFOCUS, odd_ ? 1 : 0, 0);
        } else if (kind == "text" || kind == "picture" || kind == "spin control") {
            return;
        } else {
            Click(control);
        }
        ++touched_;
    }

    void TouchEverything(ScriptPlayer& player)
    {
        for (int i = 0; i < player.PageCount(); ++i) {
            for (const HWND control : ControlsOf(player.ShowPage(i)))
                if (IsWindowVisible(control) && IsWindowEnabled(control)) Touch(control);
            OptionItemsPage* const items = player.Sheet().Pages()[static_cast<std::size_t>(i)].items;
            for (int item = 0; items && item < items->ItemCount(); ++item)
                touched_ += items->Choose(item, odd_ ? items->OptionCount(item) - 1 : 0);
        }
    }

    void OpenSheets(int count)
    {
        for (int i = 0; i < count; ++i) {
            odd_ = !odd_;
            Play({{"ok", ""}}, {}, [this](ScriptPlayer& player) { TouchEverything(player); });
            ASSERT_EQ(problem_, "");
        }
    }

    bool odd_ = false;
    int touched_ = 0;
};

void Tell(const char* when, const ProcessUse& use)
{
    std::cout << when << ": " << use.windows << " windows, " << use.gdiObjects << " GDI and "
              << use.userObjects << " user objects, " << use.handles << " handles, " << use.bytes
              << " bytes\n";
}

// TINTWERK_SOAK in the environment is the number of sheets.
TEST_F(Soak, NothingGrows)
{
    const char* const given = std::getenv("TINTWERK_SOAK");
    const int count = given ? std::atoi(given) : 20;
    Tell("first", UseOfProcess());
    OpenSheets(16); // what is made once and kept
    const int forgotten = ForgottenByAStatic(module_.Handle());
    const ProcessUse before = UseOfProcess();
    Tell("start", before);
    touched_ = 0;
    for (int done = 0; done < count && !HasFailure(); done += count / 4) {
        OpenSheets(count / 4);
        Tell("then ", UseOfProcess());
    }
    const ProcessUse after = UseOfProcess();
    std::cout << touched_ << " controls\n";
    EXPECT_GE(touched_, 70 * count);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects + forgotten * kTemplatePictures * count);
    EXPECT_EQ(after.userObjects, before.userObjects);
    EXPECT_LE(after.handles, before.handles + 4); // the system's threads come and go
    EXPECT_LE(after.bytes - before.bytes,
              4 << 10); // an allocator may count free blocks that it keeps at hand
}

} // namespace
} // namespace tintwerk
