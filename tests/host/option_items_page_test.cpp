// What the host makes of descriptions of option items that a plug-in should not hand over.
#include <gtest/gtest.h>

#include "host/sheet/option_items_page.h"

namespace tintwerk {

struct Description
{
    WCHAR name[8] = TEXT("name");
    OPTPARAM parameters[2]{};
    OPTTYPE type{};
    OPTITEM items[2]{};
    COMPROPSHEETUI sheet{};

    Description()
    {
        for (OPTPARAM& parameter : parameters) {
            parameter.cbSize = sizeof(OPTPARAM);
            parameter.pData = name;
        }
        type.cbSize = sizeof type;
        type.Type = TVOT_COMBOBOX;
        type.Count = 2;
        type.pOptParam = parameters;
        for (OPTITEM& item : items)
            item.cbSize = sizeof(OPTITEM);
        items[0].pName = name;
        items[1].pName = name;
        items[1].pOptType = &type;
        sheet.cbSize = sizeof sheet;
        sheet.pCallerName = name;
        sheet.pOptItemName = name;
        sheet.pOptItem = items;
        sheet.cOptItem = 2;
        sheet.pDlgPage = CPSUI_PDLGPAGE_TREEVIEWONLY;
    }
};

TEST(OptionItems, BadDescriptionsAreRefusedWithTheSystemsErrorNumbers)
{
    const struct
    {
        const char* word;
        void (*spoil)(Description&);
        LONG error;
    } cases[] = {
        {"sound", [](Description&) {}, 0},
        {"no options", [](Description& d) { d.type.Count = 0; }, 0},
        {"record size", [](Description& d) { d.sheet.cbSize = 8; }, ERR_CPSUI_INVALID_PDATA},
        {"no caller", [](Description& d) { d.sheet.pCallerName = nullptr; }, ERR_CPSUI_NULL_CALLERNAME},
        {"no name", [](Description& d) { d.sheet.pOptItemName = nullptr; }, ERR_CPSUI_NULL_OPTITEMNAME},
        {"no items", [](Description& d) { d.sheet.pOptItem = nullptr; }, ERR_CPSUI_NULL_POPTITEM},
        {"zero items", [](Description& d) { d.sheet.cOptItem = 0; }, ERR_CPSUI_ZERO_OPTITEM},
        {"too many items", [](Description& d) { d.sheet.cOptItem = 0xFFFF; }, ERR_CPSUI_ZERO_OPTITEM},
        {"header size", [](Description& d) { d.items[0].cbSize = 0; }, ERR_CPSUI_INVALID_OPTITEM_CBSIZE},
        {"item size", [](Description& d) { d.items[1].cbSize = 0; }, ERR_CPSUI_INVALID_OPTITEM_CBSIZE},
        {"type size", [](Description& d) { d.type.cbSize = 1; }, ERR_CPSUI_INVALID_OPTTYPE_CBSIZE},
        {"kind of type", [](Description& d) { d.type.Type = TVOT_EDITBOX; }, ERR_CPSUI_INVALID_TVOT_TYPE},
        {"count", [](Description& d) { d.type.Count = 0xFFFF; }, ERR_CPSUI_INVALID_OPTTYPE_COUNT},
        {"no parameters", [](Description& d) { d.type.pOptParam = nullptr; }, ERR_CPSUI_NULL_POPTPARAM},
        {"parameter size", [](Description& d) { d.parameters[1].cbSize = 3; },
         ERR_CPSUI_INVALID_OPTPARAM_CBSIZE},
    };
    for (const auto& row : cases) {
        Description description;
        row.spoil(description);
        EXPECT_EQ(OptionItemsPage::Check(&description.sheet), row.error) << row.word;
    }
    EXPECT_EQ(OptionItemsPage::Check(nullptr), ERR_CPSUI_INVALID_PDATA);
}

} // namespace tintwerk
