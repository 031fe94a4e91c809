// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/FrameRate.h"

#include "tests/export/rules/NumericCases.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct RenderRateCase {
    const char* name;
    double source;
    int rate;
};

class RenderFrameRate : public testing::TestWithParam<RenderRateCase> { };

TEST_P(RenderFrameRate, IsAWholeNumberFrom24To60)
{
    EXPECT_EQ(renderFrameRate(GetParam().source), GetParam().rate);
}

INSTANTIATE_TEST_SUITE_P(Cases, RenderFrameRate,
                         testing::Values(RenderRateCase{"Fast", 90, 60}, RenderRateCase{"Slow", 15, 24},
                                         RenderRateCase{"Unknown", 0, 30}, RenderRateCase{"Negative", -25, 30},
                                         RenderRateCase{"Ntsc", 30000.0 / 1001, 30},
                                         RenderRateCase{"Film", 24000.0 / 1001, 24},
                                         RenderRateCase{"RoundsUp", 47.5, 48}, RenderRateCase{"RoundsDown", 47.4, 47},
                                         RenderRateCase{"Tiny", 1e-300, 24}, RenderRateCase{"Infinite", Infinite, 60},
                                         RenderRateCase{"NotANumber", NotANumber, 30}),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace quelto
