// The main function of every test program. A test fails, whatever it looked at, when it leaves a damaged heap.
#include <gtest/gtest.h>

#include "tests/support/testing.h"

namespace {

class HeapCheck : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        EXPECT_TRUE(tintwerk::HeapsAreSound()) << "a block was written past its end or after it was freed";
    }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new HeapCheck);
    return RUN_ALL_TESTS();
}
