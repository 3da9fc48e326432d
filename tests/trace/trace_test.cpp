// The diagnostic trace: the wide printf dialect, the cut at 260 characters, texts that look like formats.
#include "src/trace/trace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/debug_sink.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

class TraceTest : public testing::Test
{
protected:
    TraceTest()
    {
        SetDebugSink([](const WCHAR* line, void* self) { static_cast<TraceTest*>(self)->lines.push_back(line); }, this);
    }
    ~TraceTest() override { SetDebugSink(nullptr, nullptr); }

    std::vector<Text> lines;
};

TEST_F(TraceTest, SpeaksTheWideDialect)
{
    EXPECT_EQ(1, Trace(TEXT("%s|%S|%ls|%#S|%.3S|%.2ls\r\n"), TEXT("wide"), "narrow", TEXT("long"), "alt", "cut off",
                       TEXT("cut off")));
    Trace(TEXT("%d|%#d|%x|%#x|%#lx|%.04d|%u|%%"), -5, 7, 255u, 0x80004005u, 16ul, 7, 4000000000u);
    Trace(TEXT("%p"), reinterpret_cast<void*>(0x1234ABCDu));

    ASSERT_EQ(3u, lines.size());
    EXPECT_EQ(TEXT("wide|narrow|long|alt|cut|cu\r\n"), lines[0]);
    EXPECT_EQ(TEXT("-5|7|ff|0x80004005|0x10|0007|4000000000|%"), lines[1]);
    EXPECT_EQ(TEXT("000000001234ABCD"), lines[2]);
}

TEST_F(TraceTest, CutsAt260Characters)
{
    for (const size_t length : {259u, 260u, 261u, 5000u}) {
        lines.clear();
        EXPECT_EQ(1, Trace(TEXT("%S"), std::string(length, 'x').c_str()));
        ASSERT_EQ(1u, lines.size()) << length;
        EXPECT_EQ(Text(std::min<size_t>(length, 260), 'x'), lines[0]) << length;
    }
}

TEST_F(TraceTest, EmitsNothingWithoutAFormat)
{
    EXPECT_EQ(0, Trace(nullptr));
    EXPECT_TRUE(lines.empty());
}

TEST_F(TraceTest, ShowsFinishedTextAsItStands)
{
    TraceText("CMYK-Mode - 100%s gr\xC3\xBCn\n");
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(TEXT("CMYK-Mode - 100%s gr\u00FCn\n"), lines[0]);
}

} // namespace
} // namespace tintwerk
