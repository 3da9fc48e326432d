// The counter file as bytes: how it is cut into lines, and what a line says.
#include "src/ink/ink_parsing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

} // namespace
} // namespace tintwerk
