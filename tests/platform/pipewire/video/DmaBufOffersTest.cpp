// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/DmaBufOffers.h"

#include "platform/pipewire/video/DmaBufQuery.h"

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

using Formats = std::vector<DmaBufFormat>;

constexpr std::uint32_t FirstFormat = 1;
constexpr std::uint32_t SecondFormat = 2;

TEST(DmaBufOffers, FormatsKeepTheirOrder)
{
    const Formats formats = {{SecondFormat, {9, 5}}, {FirstFormat, {5}}};
    EXPECT_EQ(DmaBufOffers(formats).formats(), formats);
}

TEST(DmaBufOffers, FormatsWithoutModifiersAreNotOffered)
{
    EXPECT_TRUE(DmaBufOffers(Formats{{FirstFormat, {}}}).formats().empty());
    EXPECT_TRUE(DmaBufOffers(Formats{}).formats().empty());
}

TEST(DmaBufOffers, ContainEachModifierOfItsFormatUntilTheyAreWithdrawn)
{
    DmaBufOffers offers(Formats{{FirstFormat, {5, 6}}, {SecondFormat, {5}}});
    EXPECT_TRUE(offers.contains(FirstFormat, 6));
    EXPECT_TRUE(offers.contains(SecondFormat, 5));
    EXPECT_FALSE(offers.contains(SecondFormat, 6));
    EXPECT_TRUE(offers.withdraw());
    EXPECT_TRUE(offers.formats().empty());
    EXPECT_FALSE(offers.contains(FirstFormat, 6));
    EXPECT_FALSE(offers.withdraw()) << "an encoder may reject several frames";
}

/// Machines without a graphics card have an empty list.
TEST(DmaBufQuery, ListsOnlyFormatsWithModifiers)
{
    for (const DmaBufFormat& format : queryDmaBufFormats()) {
        EXPECT_NE(format.format, 0u);
        EXPECT_FALSE(format.modifiers.empty());
    }
}

} // namespace
} // namespace quelto::pipewire
