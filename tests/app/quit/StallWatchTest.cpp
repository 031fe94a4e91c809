// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/quit/StallWatch.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using std::chrono::seconds;

constexpr HostTime Start{std::chrono::hours(1)};

TEST(StallWatch, StallsAfterItsTimeWithoutProgress)
{
    StallWatch watch(seconds(10));
    EXPECT_FALSE(watch.isStalled(Start, 5));
    EXPECT_FALSE(watch.isStalled(Start + seconds(9), 5));
    EXPECT_TRUE(watch.isStalled(Start + seconds(10), 5));
}

TEST(StallWatch, SlowWorkIsNotStalled)
{
    StallWatch watch(seconds(10));
    for (std::uint64_t progress = 0; progress < 20; ++progress) {
        EXPECT_FALSE(watch.isStalled(Start + seconds(9 * progress), progress));
    }
}

} // namespace
} // namespace quelto
