// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/ShrinkPasses.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr ShrinkPasses TenMegabytes{.limitMB = 10};

TEST(ShrinkPasses, ClipUpTo97PercentOfTheLimitIsSmallEnough)
{
    for (const int limit : {8, 10, 25, 50, 100, 500}) {
        const ShrinkPasses passes{.limitMB = limit};
        const qint64 largest = limit * 970'000LL;
        EXPECT_TRUE(passes.isSmallEnough(largest)) << limit;
        EXPECT_FALSE(passes.isSmallEnough(largest + 1)) << limit;
    }
    EXPECT_TRUE(TenMegabytes.isSmallEnough(9'600'000));
    EXPECT_FALSE(TenMegabytes.isSmallEnough(9'800'000));
    EXPECT_TRUE(TenMegabytes.isSmallEnough(0));
}

TEST(ShrinkPasses, EachTargetIsLower)
{
    EXPECT_DOUBLE_EQ(TenMegabytes.targetBytes(0), 9'000'000);
    EXPECT_DOUBLE_EQ(TenMegabytes.targetBytes(1), 7'200'000);
    EXPECT_DOUBLE_EQ(TenMegabytes.targetBytes(2), 5'760'000);
}

TEST(ShrinkPasses, FileUpToTheLimitIsAccepted)
{
    for (int pass = 0; pass < ShrinkPasses::Count; ++pass) {
        EXPECT_EQ(TenMegabytes.verdict(pass, 10'000'000), ShrinkVerdict::accept);
        EXPECT_EQ(TenMegabytes.verdict(pass, 0), ShrinkVerdict::accept);
    }
}

TEST(ShrinkPasses, LastFileIsAcceptedThoughTooLarge)
{
    EXPECT_EQ(TenMegabytes.verdict(0, 10'000'001), ShrinkVerdict::tryAgain);
    EXPECT_EQ(TenMegabytes.verdict(1, 10'000'001), ShrinkVerdict::tryAgain);
    EXPECT_EQ(TenMegabytes.verdict(2, 10'000'001), ShrinkVerdict::acceptTooLarge);
}

TEST(ShrinkPasses, LargeLimitsDoNotOverflow)
{
    const ShrinkPasses passes{.limitMB = 2'000'000'000};
    EXPECT_DOUBLE_EQ(passes.targetBytes(0), 1.8e15);
    EXPECT_TRUE(passes.isSmallEnough(1'000'000'000'000));
    EXPECT_EQ(passes.verdict(0, 2'000'000'000'000'001), ShrinkVerdict::tryAgain);
}

} // namespace
} // namespace quelto
