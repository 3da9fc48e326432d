// The labels of a page in the language of its sheet.
#include "src/i18n/page_translation.h"

#include <gtest/gtest.h>

#include <string>

#include "src/i18n/string_table.h"
#include "src/records/page_kinds.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

// A page with the given controls, each showing "template" until it is translated.
class Page
{
public:
    explicit Page(std::initializer_list<int> controls)
        : window(CreateWindowExW(0, TEXT("Static"), TEXT("page"), WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr))
    {
        for (const int id : controls)
            CreateWindowExW(0, TEXT("Static"), TEXT("template"), WS_CHILD, 0, 0, 100, 20, window,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                            nullptr);
    }
    ~Page() { DestroyWindow(window); }

    Text operator[](int id) const
    {
        WCHAR text[512] = {};
        GetDlgItemTextW(window, id, text, 512);
        return text;
    }

    const HWND window;
};

class PageTranslation : public testing::Test
{
protected:
    ~PageTranslation() override { UseStringTable(nullptr); }

    DebugLines trace;
};

TEST_F(PageTranslation, TracesOneTableRowPerTranslatedControl)
{
    InitStringTable("en");
    const Page page{1214}; // the other two controls of the page are missing
    trace.Take();
    TranslateDialogPage(kConsumptionPage, page.window);
    EXPECT_EQ((std::vector<Text>{TEXT("----- TRANSLAGE DLGPAGE dlgidx is 8\n"), TEXT("DLGPAGE is 3\n"),
                                 TEXT("defaultstring found #70: Reset counters\n"),
                                 TEXT("{\"wlabel_consume_reset\",\"Reset counters\"},\n")}),
              trace.Take());
}

TEST_F(PageTranslation, ChoosesThePageByTheLowestBit)
{
    struct
    {
        DWORD bits;
        const WCHAR* line;
        const WCHAR* control1159; // the paper frame of the main page, the shadows of the colour page
    } const cases[] = {
        {0, TEXT("DLGPAGE is 8\n"), TEXT("template")},
        {1, TEXT("DLGPAGE is 0\n"), TEXT("Paper")},
        {3, TEXT("DLGPAGE is 0\n"), TEXT("Paper")},
        {2, TEXT("DLGPAGE is 1\n"), TEXT("Shadows:")},
        {4, TEXT("DLGPAGE is 2\n"), TEXT("template")},
        {32, TEXT("DLGPAGE is 5\n"), TEXT("template")},
        {64, TEXT("DLGPAGE is 6\n"), TEXT("template")},
        {128, TEXT("DLGPAGE is 7\n"), TEXT("template")},
        {0xFFFFFF00, TEXT("DLGPAGE is 8\n"), TEXT("template")},
    };
    InitStringTable("en");
    for (const auto& row : cases) {
        const Page page{1159};
        trace.Take();
        TranslateDialogPage(row.bits, page.window);
        EXPECT_TRUE(trace.Contains(row.line)) << row.bits;
        EXPECT_EQ(row.control1159, page[1159]) << row.bits;
    }
}

TEST_F(PageTranslation, CleansAndCutsTheTexts)
{
    const std::string a254(254, 'a');
    struct
    {
        const char* what;
        std::string text;
        Text shown;
    } const cases[] = {
        {"plain line breaks stay", "Black Level\n(UCR)", TEXT("Black Level\n(UCR)")},
        {"markup is removed", "<b>bold</b> <i>x</i>", TEXT("bold x")},
        {"with the breaks that it turned line breaks into", "<b>one\ntwo", TEXT("onetwo")},
        {"a lone < stays", "a > b < c", TEXT("a > b < c")},
        {"255 bytes stay", a254 + "b", Text(254, 'a') + TEXT("b")},
        {"the rest goes", a254 + "bc", Text(254, 'a') + TEXT("b")},
        {"and with it half a character", a254 + "\xC3\xBC", Text(254, 'a')},
    };
    for (const auto& row : cases) {
        const StringRow rows[] = {{"wlabel_consume_reset", row.text.c_str(), ""}};
        const StringTable table{rows, false};
        UseStringTable(&table);
        const Page page{1214};
        TranslateDialogPage(kConsumptionPage, page.window);
        EXPECT_EQ(row.shown, page[1214]) << row.what;
    }
}

} // namespace
} // namespace tintwerk
