// The document sheet of the sample printers, over the core driver stand-in and their PPDs.
#include "tests/sheets/sheet_fixture.h"

#include "host/core/core_driver.h"
#include "host/ppd/ppd_reader.h"
#include "platform/owners.h"

namespace tintwerk {
namespace {

struct SamplePrinter
{
    explicit SamplePrinter(const std::string& name)
        : ppd(std::move(ReadPpd(std::string(TINTWERK_SOURCE_DIR "/samples/") + name + ".ppd").ppd)),
          core(*ppd, selections)
    {
        core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(helper.Receive()));
    }

    std::unique_ptr<Ppd> ppd;
    Selections selections;
    CoreDriver core;
    ComPtr<IPrintCoreUI2> helper;
};

using SampleSheets = SheetTest;

TEST_F(SampleSheets, ShowThePagesOfTheirPrinter)
{
    const struct
    {
        const char* printer;
        const char* pages;
        const WCHAR* firstTitle;
        int layoutItems;
    } cases[] = {{"tintwerk-x12", "193 layout 189 192 191 190 229 advanced", TEXT("Main"), 4},
                 {"tintwerk-s8", "193 layout 189 192 191 190 229 advanced", TEXT("Druck"), 3},
                 {"tintwerk-lite", "194 layout 191 advanced", TEXT("Main"), 3}};
    for (const auto& row : cases) {
        SamplePrinter printer(row.printer);
        TestSheet sheet(printer.helper.Get(), printer.core.CoreObject());
        sheet.Open();
        EXPECT_EQ(row.pages, sheet.Pages()) << row.printer;
        EXPECT_EQ(row.firstTitle, sheet.added[0].title) << row.printer;
        EXPECT_EQ(row.layoutItems, sheet.Find("layout")->items.cOptItem) << row.printer;
    }
}

TEST_F(SampleSheets, WriteWhatTheirItemsStandAt)
{
    for (const char* name : {"tintwerk-x12", "tintwerk-s8", "tintwerk-lite"}) {
        SamplePrinter printer(name);
        TestSheet sheet(printer.helper.Get(), printer.core.CoreObject());
        sheet.Open();
        const auto selected = [&] {
            std::map<std::string, std::string> options;
            for (const std::string_view feature : printer.core.Features())
                options[std::string(feature)] = printer.core.Selected(feature);
            return options;
        };
        const auto apply = [&](const COMPROPSHEETUI& page) {
            CPSUICBPARAM parameters{};
            parameters.Reason = CPSUICB_REASON_APPLYNOW;
            parameters.UserData = page.UserData;
            page.pfnCallBack(&parameters);
        };
        const auto before = selected();
        for (const char* page : {"layout", "advanced"})
            apply(sheet.Find(page)->items);
        EXPECT_EQ(before, selected()) << name;

        // The next option of every item, looked up in the PPD by the name that the item shows.
        std::map<std::string, std::string> expected = before;
        const COMPROPSHEETUI& advanced = sheet.Find("advanced")->items;
        for (OPTITEM& item : std::span(advanced.pOptItem, advanced.cOptItem)) {
            if (!item.pOptType) continue;
            for (const PpdFeature& feature : printer.ppd->Features()) {
                if (!std::ranges::equal(feature.text, Text(item.pName))) continue;
                item.Sel = (item.Sel + 1) % item.pOptType->Count;
                expected[std::string(feature.keyword)] =
                    feature.options[static_cast<std::size_t>(item.Sel)].keyword;
            }
        }
        EXPECT_NE(before, expected) << name;
        apply(advanced);
        EXPECT_EQ(expected, selected()) << name;
    }
}

} // namespace
} // namespace tintwerk
