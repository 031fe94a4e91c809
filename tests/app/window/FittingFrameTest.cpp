// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/WindowFrame.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

constexpr QSize Smallest{1020, 640};
constexpr QMargins Decoration{1, 20, 1, 5};
constexpr QRect Screen{0, 0, 1920, 1080};
constexpr QRect RightScreen{1920, 200, 1366, 768};
constexpr QRect SmallScreen{0, 0, 1366, 768};

struct Row {
    const char* name;
    QRect wanted;
    QList<QRect> screens;
    QRect expected;
};

class FittingFrameTest : public testing::TestWithParam<Row> { };

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

TEST_P(FittingFrameTest, IsEntirelyOnOneScreen)
{
    const auto& row = GetParam();
    const auto frame = fittingFrame(row.wanted, Decoration, Smallest, row.screens);
    EXPECT_EQ(frame, row.expected) << frame.x() << ' ' << frame.y() << ' ' << frame.width() << ' ' << frame.height();
    EXPECT_EQ(fittingFrame(frame, Decoration, Smallest, row.screens), frame) << "it creeps";
}

INSTANTIATE_TEST_SUITE_P(
    Places, FittingFrameTest,
    testing::Values(
        Row{"Inside", {200, 90, 1100, 700}, {Screen}, {200, 90, 1100, 700}},
        Row{"TouchingEveryEdge", {1, 20, 1918, 1055}, {Screen}, {1, 20, 1918, 1055}},
        Row{"TitleBarAbove", {200, 0, 1100, 700}, {Screen}, {200, 20, 1100, 700}},
        Row{"FarAbove", {100, -560, 1100, 700}, {Screen}, {100, 20, 1100, 700}},
        Row{"PastTheLeft", {-300, 90, 1100, 700}, {Screen}, {1, 90, 1100, 700}},
        Row{"PastTheLowerRight", {1900, 1060, 1100, 700}, {Screen}, {819, 375, 1100, 700}},
        Row{"LargerThanTheScreen", {0, 0, 3000, 1600}, {SmallScreen}, {1, 20, 1364, 743}},
        Row{"TallerThanTheScreen", {63, -6, 1240, 780}, {SmallScreen}, {63, 20, 1240, 743}},
        Row{"BelowAPanel", {63, 10, 1240, 680}, {{0, 40, 1366, 728}}, {63, 60, 1240, 680}},
        Row{"ScreenTooSmallForIt", {100, 100, 1240, 780}, {{0, 0, 1000, 600}}, {1, 20, 998, 575}},
        Row{"SmallerThanItMayBe", {100, 100, 300, 200}, {Screen}, {100, 100, 1020, 640}},
        Row{"OnNoScreen", {5000, 200, 1100, 700}, {Screen, RightScreen}, {410, 198, 1100, 700}},
        Row{"BesideNoScreenWithItsEdge", {-1100, 90, 1100, 700}, {Screen}, {410, 198, 1100, 700}},
        Row{"OnTheSecond", {2000, 250, 1100, 700}, {Screen, RightScreen}, {2000, 250, 1100, 700}},
        Row{"MostlyOnTheFirst", {1200, 300, 1100, 640}, {Screen, RightScreen}, {819, 300, 1100, 640}},
        Row{"MostlyOnTheSecond", {1500, 300, 1100, 640}, {Screen, RightScreen}, {1921, 300, 1100, 640}},
        Row{"EquallyOnBoth", {1370, 300, 1100, 640}, {Screen, RightScreen}, {819, 300, 1100, 640}},
        Row{"LeftOfThePrimary", {-1300, 100, 1100, 650}, {Screen, {-1366, 0, 1366, 768}}, {-1300, 100, 1100, 650}},
        Row{"LargerThanTheSecond", {1930, 210, 1900, 1050}, {Screen, RightScreen}, {1921, 220, 1364, 743}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(FittingFrame, IsTheWantedFrameWithoutAnyScreen)
{
    EXPECT_EQ(fittingFrame({1, 2, 1100, 700}, Decoration, Smallest, {}), QRect(1, 2, 1100, 700));
}

} // namespace
} // namespace quelto
