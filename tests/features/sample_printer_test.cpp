// The sample printers as the core driver stand-in plays them: how often a sheet asks when it opens, and that
// an apply of nothing changed changes nothing.
#include <algorithm>

#include "host/core/core_driver.h"
#include "host/ppd/ppd_reader.h"
#include "platform/owners.h"
#include "src/features/feature_access.h"
#include "src/features/initial_read.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

class SamplePrinterTest : public FeatureTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(SamplePrinterTest, OpensWithOneQuestionAFeatureAndOption)
{
    const PpdResult printer = ReadPpd(std::string(TINTWERK_SOURCE_DIR "/samples/") + GetParam());
    ASSERT_TRUE(printer) << printer.error.Full();
    Selections selections;
    CoreDriver driver(*printer.ppd, selections);
    ComPtr<IPrintCoreUI2> helper;
    ASSERT_EQ(S_OK,
              driver.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(helper.Receive())));
    context.core = {driver.CoreObject(), helper.Get(), nullptr, heap};
    ASSERT_EQ(S_OK, InitPPDSettings(context));

    size_t popups = 0, options = 0;
    for (int row = 0; row < kPopupRows; ++row) {
        const std::string feature = WithoutAsterisk(kPopupTable[static_cast<size_t>(row)].keyword);
        auto offered = driver.Options(feature);
        std::erase(offered, "*UseFormTrayTable");
        const OptionEntry* const list = table->lists[static_cast<size_t>(row)].data();
        ASSERT_EQ(offered.size(), static_cast<size_t>(CountOptions(list))) << feature;
        popups += !offered.empty();
        options += offered.size();
        if (row == kPopupPageSize || offered.empty()) continue;
        EXPECT_EQ(driver.Selected(feature), FindSelected(list, context.popups.selections[row])->keyword)
            << feature;
    }
    EXPECT_LT(8u, options);
    constexpr size_t kSingleFeatures =
        kSliderRows + 13 + 2 * kNumberFieldRows; // 13 check boxes have a feature
    EXPECT_EQ(static_cast<size_t>(kPopupRows), driver.Calls().Count(CoreMethod::EnumOptions));
    EXPECT_EQ(popups + kSingleFeatures, driver.Calls().Count(CoreMethod::GetOptions));
    EXPECT_EQ(options + 1, driver.Calls().Count(CoreMethod::GetOptionAttribute));
    EXPECT_EQ(kPopupRows + popups + kSingleFeatures + options + 1, driver.Calls().Total());
}

INSTANTIATE_TEST_SUITE_P(All, SamplePrinterTest,
                         testing::Values("tintwerk-x12.ppd", "tintwerk-s8.ppd", "tintwerk-lite.ppd"),
                         [](const auto& printer) {
                             std::string name = printer.param;
                             std::erase_if(name, [](char c) { return c == '-' || c == '.'; });
                             return name;
                         });

} // namespace
} // namespace tintwerk
