// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/wayland/OverlayFade.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

const OverlayPicture Picture{.fadeIn = 150ms, .displayTime = 2600ms, .fadeOut = 300ms};

TEST(OverlayFadeTest, FadesInStaysAndFadesOut)
{
    EXPECT_EQ(fadeAt(Picture, 0ms).opacity, 0.0);
    EXPECT_EQ(fadeAt(Picture, 75ms).opacity, 0.5);
    EXPECT_EQ(fadeAt(Picture, 150ms).opacity, 1.0);
    EXPECT_EQ(fadeAt(Picture, 2599ms).opacity, 1.0);
    EXPECT_EQ(fadeAt(Picture, 2600ms).opacity, 1.0);
    EXPECT_EQ(fadeAt(Picture, 2750ms).opacity, 0.5);
    EXPECT_EQ(fadeAt(Picture, 2900ms), OverlayFade());
    EXPECT_EQ(fadeAt(Picture, 1h), OverlayFade());
}

TEST(OverlayFadeTest, DrawsOnlyWhileItFades)
{
    EXPECT_EQ(fadeAt(Picture, 100ms).next, 16ms);
    EXPECT_EQ(fadeAt(Picture, 150ms).next, 2450ms) << "nothing changes until the fade-out";
    EXPECT_EQ(fadeAt(Picture, 2700ms).next, 16ms);
}

TEST(OverlayFadeTest, PictureWithoutFadesIsShownAtOnce)
{
    const OverlayPicture plain{.displayTime = 100ms};
    EXPECT_EQ(fadeAt(plain, 0ms).opacity, 1.0);
    EXPECT_EQ(fadeAt(plain, 100ms), OverlayFade());
}

} // namespace
} // namespace quelto
