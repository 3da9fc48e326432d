// A printer's counter file: how it is cut into lines, what a line says, how it gets into the sheet, and the
// reset that zeroes it.
#include "src/ink/ink_file.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/function_hook.h"
#include "src/i18n/string_table.h"
#include "src/ink/ink_channels.h"
#include "src/ink/ink_parsing.h"
#include "tests/support/message_boxes.h"
#include "tests/support/temp_file.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using namespace std::string_literals;

std::vector<std::string> Cut(const std::string& text, size_t chunk)
{
    std::vector<std::string> lines;
    const auto take = [&lines](std::string_view line) { lines.emplace_back(line); };
    InkLines cutter;
    for (size_t at = 0; at < text.size(); at += chunk)
        cutter.Feed(std::string_view(text).substr(at, chunk), take);
    cutter.Finish(take);
    return lines;
}

TEST(InkLines, AreCutAlikeHoweverTheBytesArrive)
{
    const std::string x255(255, 'x'), y255(255, 'y');
    // clang-format off
    const struct { const char* what; std::string text; std::vector<std::string> lines; } cases[] = {
        {"nothing", "", {}},
        {"LF", "one\ntwo\n", {"one", "two"}},
        {"CR LF, no end of line", "one\r\ntwo", {"one", "two"}},
        {"empty lines", "\n\r\n\none\n\n", {"one"}},
        {"a lone CR is text", "a\rb\n", {"a\rb"}},
        {"of two CR the second belongs to the LF", "a\r\r\nb\r\r", {"a\r", "b\r\r"}},
        {"Ctrl-Z ends the text", "one\ntw\x1Ao\nthree\n", {"one", "tw"}},
        {"zero bytes are text", "a\0b\n"s, {"a\0b"s}},
        {"255 characters", x255 + "\nz\n", {x255, "z"}},
        {"255 characters, CR LF", x255 + "\r\nz\r\n", {x255, "z"}},
        {"256 characters", x255 + "y\n", {x255, "y"}},
        {"254 characters and a CR", x255.substr(1) + "\r\r\n", {x255.substr(1) + "\r"}},
        {"255 characters and a CR", x255 + "\r\r\n", {x255, "\r"}},
        {"two full pieces", x255 + y255 + "\nz", {x255, y255, "z"}},
    };
    // clang-format on
    for (const auto& row : cases) {
        for (const size_t chunk : {1u, 2u, 3u, 7u, 254u, 255u, 256u, 257u, 100000u})
            EXPECT_EQ(row.lines, Cut(row.text, chunk)) << row.what << " in chunks of " << chunk;
    }
}

TEST(InkLine, SaysWhichCounterHasWhichValue)
{
    // clang-format off
    const struct { const char* line; bool total; const char* code; int value; } cases[] = {
        {"TotalInk_K=1500", true, "K", 1500}, {"LastInk_KP =12", false, "KP", 12},
        {"  x LastInk_C2= \t 7 percent", false, "C2", 7}, {"LastInk_K=1 TotalInk_C=2", true, "C", 2},
        {"TotalInk_K=1 LastInk_C=2", true, "K", 1}, {"TotalInk_KPX=5", true, "KP", 5},
        {"TotalInk_M x=5", true, "M", 5}, {"TotalInk_=5", true, "=5", 5}, {"LastInk_K =12", false, "K", 12},
        {"LastInk_Y=+5", false, "Y", 5}, {"LastInk_Y=-5", false, "Y", -5}, {"LastInk_Y=0x10", false, "Y", 0},
        {"LastInk_Y=007.9", false, "Y", 7}, {"LastInk_Y=2147483647", false, "Y", 2147483647},
        {"LastInk_Y=2147483648", false, "Y", 2147483647},
        {"LastInk_Y=-2147483648", false, "Y", -2147483647 - 1},
        {"LastInk_Y=-99999999999999999999999", false, "Y", -2147483647 - 1},
        {"LastInk_Y=99999999999999999999999", false, "Y", 2147483647},
    };
    // clang-format on
    for (const auto& row : cases) {
        const std::optional<InkLine> line = ParseInkLine(row.line);
        ASSERT_TRUE(line) << row.line;
        EXPECT_EQ((InkLine{row.total, row.code, row.value}), *line) << row.line;
    }
    for (const char* ignored : {"", "[Last]", "; LastInk_", "TotalInk_", "TotalInk_K", "TotalInk_K=",
                                "TotalInk_K= ", "TotalInk_K=x", "TotalInk_K=- 5", "TotalInk_K=+-5",
                                "K=5 TotalInk_K", "totalink_K=5", "LastInk K=5", "TotalInk_K=\r"})
        EXPECT_FALSE(ParseInkLine(ignored)) << ignored;
}

constexpr int kBlack = 0, kCyan = 6, kOptimizer = 13; // positions in the channel table

class InkFile : public testing::Test
{
protected:
    InkFile() : file("printer0001.ink") {}

    InkCounters& Read(const std::string& content)
    {
        file.Write(content);
        ReadInkFile(file.path.c_str(), context);
        return context.inkCounters;
    }

    std::map<int, DWORD> Ranks() const
    {
        std::map<int, DWORD> ranks;
        for (int channel = 0; channel < kInkChannels; ++channel) {
            if (context.inkCounters.shownRank[channel])
                ranks[channel] = context.inkCounters.shownRank[channel];
        }
        return ranks;
    }

    TempFile file;
    DebugLines trace;
    SheetContext context{};
};

TEST_F(InkFile, FillsTheCountersOfItsPrinter)
{
    const InkCounters& counters =
        Read("[Tintwerk_Ink_Info]\n[Total]\nTotalInk_K=1500\r\nTotalInk_C=20\n"
             "[Last]\nLastInk_C=5\nLastInk_Z=1\nLastInk_C=9\nTotalInk_M=\nLastInk_O=7");
    EXPECT_EQ(1500, counters.total[kBlack]);
    EXPECT_EQ(20, counters.total[kCyan]);
    EXPECT_EQ(9, counters.lastJob[kCyan]) << "the last line wins";
    EXPECT_EQ(7, counters.lastJob[kOptimizer]);
    EXPECT_EQ((std::map<int, DWORD>{{kBlack, 1}, {kCyan, 2}, {kOptimizer, 3}}), Ranks());
    EXPECT_EQ("",
              MissingLine(trace.Take(), {"Start ink-data-Scan\n", "UI:  Total1 Value for 'K' = 1500\n",
                                         "UI:  Total1 Value for 'C' = 20\n", "UI:  Last Value for 'C' = 5\n",
                                         "UI:  Last Value for 'C' = 9\n", "UI:  Last Value for 'O' = 7\n"}));
}

TEST_F(InkFile, HidesPlainBlackBesideASpecialOne)
{
    for (const auto& [code, position] :
         std::map<std::string, int>{{"KP", 1}, {"KR", 16}, {"KM", 17}, {"KG", 18}}) {
        const InkCounters& counters = Read("TotalInk_K=1500\nLastInk_" + code + "=300\n");
        EXPECT_EQ(1500, counters.total[kBlack]) << "kept";
        EXPECT_EQ((std::map<int, DWORD>{{position, 1}}), Ranks()) << code;
    }
    Read("TotalInk_K=1\nTotalInk_K2=1\nTotalInk_K3=1\nTotalInk_K4=1\n");
    EXPECT_EQ(4u, Ranks().size()) << "greys are no special blacks";
}

TEST_F(InkFile, HidesEverythingWhenItIsMissing)
{
    Read("LastInk_K=1\n");
    trace.Take();
    const TempFile missing("no-such-file.ink");
    ReadInkFile(missing.path.c_str(), context);
    EXPECT_EQ((std::map<int, DWORD>{}), Ranks());
    EXPECT_EQ(0, context.inkCounters.lastJob[kBlack]);
    EXPECT_EQ("", MissingLine(trace.Take(), {"UI:  Inkdata-File not found:" + missing.path + "\n"}));
}

TEST_F(InkFile, ReadsLongFilesAcrossItsBuffer)
{
    std::string content;
    for (int line = 0; line <= 5000; ++line)
        content += "LastInk_C=" + std::to_string(line) + (line % 2 ? "\r\n" : "\n");
    EXPECT_EQ(5000, Read(content).lastJob[kCyan]);
    EXPECT_EQ(17, Read(std::string(1000000, 'x') + "\nLastInk_C=17\n").lastJob[kCyan])
        << "behind an endless line";
}

class InkReset : public InkFile
{
protected:
    InkReset()
    {
        InitStringTable("de");
        file.path.copy(context.inkFilePath, sizeof context.inkFilePath - 1);
        context.consumption.firstLine = -1;
        context.owner = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x1234));
        Read(kContent);
    }
    ~InkReset() override { UseStringTable(nullptr); }

    static constexpr char kContent[] = "TotalInk_KP=1500\nTotalInk_K=7\nLastInk_C=5\nLastInk_M=4\n";
    MessageBoxes boxes;
};

TEST_F(InkReset, AsksFirst)
{
    for (const int answer : {IDCANCEL, 0, -1}) { // 0, -1: the box cannot be shown
        boxes.answer = answer;
        ResetInkCounters(context);
        EXPECT_EQ(5, context.inkCounters.lastJob[kCyan]);
        EXPECT_EQ(kContent, file.Content());
    }
    EXPECT_EQ(context.owner, boxes.shown.at(0).owner);
    EXPECT_EQ(TEXT("Achtung:"), boxes.shown[0].caption);
    EXPECT_EQ(
        TEXT("M\u00F6chten Sie wirklich alle Tintenz\u00E4hler f\u00FCr diesen Drucker zur\u00FCcksetzen? "
             "Dies kann nicht r\u00FCckg\u00E4ngig gemacht werden!"),
        boxes.shown[0].text);
    EXPECT_EQ(static_cast<UINT>(MB_OKCANCEL | MB_ICONWARNING | MB_SYSTEMMODAL), boxes.shown[0].type);
}

TEST_F(InkReset, LeavesOnlyZeroLastJobsOfTheShownChannels)
{
    trace.Take();
    ResetInkCounters(context);
    EXPECT_EQ("[Tintwerk_Ink_Info]\r\n[Last]\r\nLastInk_KP=0\r\nLastInk_M=0\r\nLastInk_C=0\r\n",
              file.Content());
    EXPECT_TRUE(trace.Contains(TEXT("Setting inkChannels (curInkDisplay=0)\n"))) << "the page is drawn again";

    for (int channel = 0; channel < kInkChannels; ++channel)
        EXPECT_EQ(0, context.inkCounters.lastJob[channel] + context.inkCounters.total[channel]);
}

TEST_F(InkReset, LeavesTheOldFileWhenItCannotWrite)
{
    ReplaceFunction(
        "WriteFile", +[](HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED) WINAPI -> BOOL {
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
        });
    ResetInkCounters(context);
    RestoreFunction("WriteFile");
    EXPECT_EQ(kContent, file.Content());
    EXPECT_EQ(0, context.inkCounters.lastJob[kCyan]) << "the page shows 0 all the same";

    const TempFile nowhere("no-such-directory/printer0001.ink");
    lstrcpyA(context.inkFilePath, nowhere.path.c_str());
    ResetInkCounters(context);
    EXPECT_FALSE(nowhere.Exists());
}

} // namespace
} // namespace tintwerk
