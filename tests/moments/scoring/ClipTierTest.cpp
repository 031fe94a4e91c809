// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/ClipTier.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(ClipTier, DependsOnScore)
{
    EXPECT_EQ(tierFromScore(7), std::nullopt);
    EXPECT_EQ(tierFromScore(8), ClipTier::basic);
    EXPECT_EQ(tierFromScore(29), ClipTier::basic);
    EXPECT_EQ(tierFromScore(30), ClipTier::medium);
    EXPECT_EQ(tierFromScore(89), ClipTier::medium);
    EXPECT_EQ(tierFromScore(90), ClipTier::epic);
}

TEST(ClipTier, RoundTripsThroughItsExactTag)
{
    for (const auto tier : AllClipTiers) {
        EXPECT_EQ(tierFromTag(tagOf(tier)), tier);
    }
    EXPECT_EQ(tierFromTag(QStringLiteral("efsane")), std::nullopt);
    EXPECT_EQ(tierFromTag(QString()), std::nullopt);
}

TEST(ClipTier, HasTranslatedLabel)
{
    EXPECT_EQ(labelOf(ClipTier::epic), QStringLiteral("Efsane"));
    EXPECT_EQ(labelOf(ClipTier::medium), QStringLiteral("Orta"));
    EXPECT_EQ(labelOf(ClipTier::basic), QStringLiteral("Basit"));
}

} // namespace
} // namespace quelto
