// What opening and closing sheets leaves behind: nothing, however often it happens and whichever allocation
// fails.
#include "tests/sheets/sheet_fixture.h"

namespace tintwerk {
namespace {

class SheetMemory : public SheetTest
{
protected:
    SheetMemory()
    {
        core.features = {{"%Orientation", {"Portrait", "Landscape"}, "Landscape"},
                         {"halvLanguage", {"de", "en"}, "de"},
                         {"halvGuiIcon", {"a-b"}, "a-b"},
                         {"halvScreenmode", {"off", "on"}, "on"},
                         {"PageSize", {"A4", "A4Borderless"}, "A4"},
                         {"halvSettingA", {"1", "2"}, "2", {{"", TEXT("First")}, {"1", TEXT("One")}}}};
        TestSheet(&core, core.object).Open(); // what the process keeps is made
    }

    // The plug-in heap lives with the sheet, as the core driver's does.
    HRESULT Round()
    {
        TestSheet sheet(&core, core.object);
        const HRESULT result = sheet.Open();
        if (result == 1) {
            sheet.Call(PROPSHEETUI_REASON_DESTROY);
            EXPECT_EQ(0u, sheet.info.UserData);
        }
        return result;
    }
};

TEST_F(SheetMemory, StaysTheSameWhicheverAllocationFails)
{
    HeapWatch heap;
    ASSERT_EQ(1, Round());
    const int allocations = heap.Calls();
    const int kept = heap.LiveBlocks(); // the texts in the sheet's language, which the next sheet replaces
    EXPECT_GE(1, kept);
    int refused = 0;
    for (int failing = 1; failing <= allocations; ++failing) {
        for (const int count : {1, allocations}) {
            heap.Fail(failing, count);
            const HRESULT result = Round();
            EXPECT_TRUE(result == 1 || result == E_FAIL) << failing;
            EXPECT_GE(kept, heap.LiveBlocks()) << failing;
            if (count == 1 && result == E_FAIL) ++refused;
        }
    }
    EXPECT_EQ(3, refused); // the record, its context and the option buffer
}

// The option lists of the popups go with the plug-in heap; nothing else may wait for that.
TEST_F(SheetMemory, GoesWithTheSheetWhenThePluginHeapStays)
{
    core.features.resize(3);
    HeapWatch heap;
    TestSheet sheet(&core, core.object);
    ASSERT_EQ(1, sheet.Open());
    sheet.Call(PROPSHEETUI_REASON_DESTROY);
    const int kept = heap.LiveBlocks();
    ASSERT_EQ(1, sheet.Open());
    sheet.Call(PROPSHEETUI_REASON_DESTROY);
    const int lists = heap.LiveBlocks() - kept;
    EXPECT_EQ(1, lists); // of the page sizes alone
    core.features.push_back({"halvSettingA", {"1", "2"}, "2"});
    sheet.Open();
    sheet.Call(PROPSHEETUI_REASON_DESTROY);
    EXPECT_EQ(kept + 2 * lists, heap.LiveBlocks());
}

} // namespace
} // namespace tintwerk
