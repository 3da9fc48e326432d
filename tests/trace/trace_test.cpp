// The diagnostic trace: the wide printf dialect, the cut at 260 characters, texts that look like formats.
#include "src/trace/trace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Texts = std::vector<DebugLines::Text>;

TEST(Trace, CutsAt260Characters)
{
    const DebugLines::Text whole(260, 'x');
    for (const size_t length : {259u, 260u, 261u, 5000u}) {
        DebugLines lines;
        EXPECT_EQ(1, Trace(TEXT("%S"), std::string(length, 'x').c_str()));
        EXPECT_EQ(Texts{whole.substr(0, length)}, lines.Lines()) << length;
        EXPECT_EQ(0, Trace(nullptr));
        EXPECT_EQ(1u, lines.Lines().size());
    }
}

TEST(Trace, ShowsFinishedTextAsItStandsAndNothingOfWhatIsNoUtf8)
{
    DebugLines lines;
    TraceText("CMYK-Mode - 100%s gr\xC3\xBCn\n");
    TraceText("CMYK-Mode - gr\xFCn\n");
    EXPECT_EQ(Texts{TEXT("CMYK-Mode - 100%s gr\u00FCn\n")}, lines.Lines());
}

} // namespace
} // namespace tintwerk
