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
        SetDebugSink(
            [](const WCHAR* line, void* self) { static_cast<TraceTest*>(self)->lines.push_back(line); },
            this);
    }
    ~TraceTest() override { SetDebugSink(nullptr, nullptr); }

    std::vector<Text> lines;
};

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
    TraceText("CMYK-Mode - gr\xFCn\n"); // not UTF-8
    EXPECT_EQ(1u, lines.size());
}

} // namespace
} // namespace tintwerk
