// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/x11/CursorOverlay.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr QSize ImageSize{8, 8};
constexpr int Stride = 8 * 4;

std::vector<std::uint8_t> grey()
{
    return std::vector<std::uint8_t>(Stride * 8, 100);
}

/// 3 × 3 pixels with the hot spot in the middle.
CursorOverlay redSquare(std::uint32_t colour = 0xffff0000)
{
    CursorOverlay overlay;
    overlay.setShape({.size = {3, 3}, .hotSpot = {1, 1}, .pixels = std::vector<std::uint32_t>(9, colour)});
    return overlay;
}

const std::uint8_t* at(const std::vector<std::uint8_t>& pixels, int x, int y)
{
    return pixels.data() + y * Stride + x * 4;
}

TEST(CursorOverlay, HotSpotIsAtThePosition)
{
    auto pixels = grey();
    redSquare().draw(pixels.data(), Stride, ImageSize, {4, 4});
    EXPECT_EQ(at(pixels, 3, 3)[2], 255);
    EXPECT_EQ(at(pixels, 5, 5)[0], 0);
    EXPECT_EQ(at(pixels, 2, 4)[2], 100);
    EXPECT_EQ(at(pixels, 6, 4)[2], 100);
}

TEST(CursorOverlay, BlendsPremultipliedColour)
{
    auto pixels = grey();
    redSquare(0x80400000).draw(pixels.data(), Stride, ImageSize, {4, 4});
    EXPECT_EQ(at(pixels, 4, 4)[2], 64 + 50);
    EXPECT_EQ(at(pixels, 4, 4)[1], 50);
}

TEST(CursorOverlay, EraseRestoresTheImage)
{
    auto pixels = grey();
    auto overlay = redSquare();
    for (const auto position : {QPoint(4, 4), QPoint(0, 0), QPoint(8, 7), QPoint(40, -3)}) {
        overlay.draw(pixels.data(), Stride, ImageSize, position);
        overlay.erase(pixels.data(), Stride);
        EXPECT_EQ(pixels, grey()) << position.x();
    }
}

TEST(CursorOverlay, IsClippedAtEveryEdge)
{
    const auto overlay = redSquare();
    EXPECT_EQ(overlay.visibleArea({0, 0}, ImageSize), QRect(0, 0, 2, 2));
    EXPECT_EQ(overlay.visibleArea({8, 8}, ImageSize), QRect(7, 7, 1, 1));
    EXPECT_TRUE(overlay.visibleArea({9, 4}, ImageSize).isEmpty());
    EXPECT_TRUE(overlay.visibleArea({4, -2}, ImageSize).isEmpty());
    auto pixels = grey();
    auto drawn = redSquare();
    drawn.draw(pixels.data(), Stride, ImageSize, {0, 7});
    EXPECT_EQ(at(pixels, 0, 6)[2], 255);
    EXPECT_EQ(at(pixels, 1, 7)[2], 255);
    EXPECT_EQ(at(pixels, 2, 7)[2], 100);
}

} // namespace
} // namespace quelto
