// A sheet for every test of its pages, and the trace that it leaves.
#pragma once

#include <gtest/gtest.h>

#include "tests/pages/open_sheet.h"

namespace tintwerk {

class PageTest : public testing::Test
{
protected:
    // The first of these lines that the trace lacks since the last call.
    std::string Missing(const std::vector<std::string>& expected)
    {
        return MissingLine(trace.Take(), expected);
    }

    DebugLines trace;
    OpenSheet sheet;
};

} // namespace tintwerk
