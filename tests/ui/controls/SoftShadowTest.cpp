// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/SoftShadow.h"

#include "tests/ui/QmlFixture.h"

namespace quelto {
namespace {

constexpr ShadowShape Shape{.box = {60, 40}, .cornerRadius = 8, .radius = 10, .color = {}};

ShadowShape shapeIn(const QColor& color)
{
    auto shape = Shape;
    shape.color = color;
    return shape;
}

TEST(SoftShadow, ReachesItsRadiusBeyondTheBox)
{
    const auto image = softShadow(shapeIn(Qt::black), 1);
    EXPECT_EQ(image.size(), QSize(80, 60));
    EXPECT_EQ(qAlpha(image.pixel(40, 0)), 0);
    EXPECT_GT(qAlpha(image.pixel(40, 2)), 0);
    EXPECT_NEAR(qAlpha(image.pixel(40, 10)), 128, 12);
    EXPECT_EQ(qAlpha(image.pixel(40, 30)), 255);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(SoftShadow, FadesWithoutSteps)
{
    const auto image = softShadow(shapeIn(Qt::black), 1);
    for (int y = 1; y < 30; ++y) {
        const auto step = qAlpha(image.pixel(40, y)) - qAlpha(image.pixel(40, y - 1));
        EXPECT_GE(step, 0) << y;
        EXPECT_LT(step, 24) << y;
    }
}

TEST(SoftShadow, IsSymmetric)
{
    const auto image = softShadow(shapeIn(Qt::black), 1);
    EXPECT_EQ(image.mirrored(true, false), image);
    EXPECT_EQ(image.mirrored(false, true), image);
}

TEST(SoftShadow, KeepsItsColourWhileItFades)
{
    const auto image = softShadow(shapeIn(QColor(255, 197, 61, 153)), 1);
    const auto edge = image.pixelColor(40, 10);
    EXPECT_NEAR(edge.red(), 255, 3);
    EXPECT_NEAR(edge.green(), 197, 3);
    EXPECT_NEAR(edge.blue(), 61, 3);
    EXPECT_EQ(qAlpha(image.pixel(40, 30)), 153);
}

TEST(SoftShadow, UsesThePixelDensityOfTheScreen)
{
    const auto image = softShadow(shapeIn(Qt::black), 2);
    EXPECT_EQ(image.size(), QSize(160, 120));
    EXPECT_EQ(image.devicePixelRatio(), 2);
}

TEST(SoftShadow, IsEmptyWithoutARadiusOrABox)
{
    auto shape = shapeIn(Qt::black);
    shape.radius = 0;
    EXPECT_EQ(qAlpha(softShadow(shape, 1).pixel(30, 20)), 0);
    shape = shapeIn(Qt::black);
    shape.box = {0, 0};
    EXPECT_EQ(qAlpha(softShadow(shape, 1).pixel(10, 10)), 0);
}

class Shadow : public test::QmlFixture { };

TEST_F(Shadow, LiesBehindItsBoxAndBelowByTheOffset)
{
    show(QStringLiteral("Rectangle { anchors.fill: parent; color: 'white'\n"
                        "Rectangle { x: 50; y: 50; width: 60; height: 40; color: 'red'\n"
                        "Shadow { radius: 10; offset: 4; color: 'black' } } }"),
         {160, 150});
    const auto image = window->grabWindow();
    EXPECT_EQ(image.pixelColor(80, 70), QColor(Qt::red));
    const auto lightAt = [&](int y) { return image.pixelColor(80, y).lightness(); };
    EXPECT_EQ(lightAt(43), 255);
    EXPECT_LT(lightAt(48), 255);
    EXPECT_LT(lightAt(91), lightAt(48));
    EXPECT_LT(lightAt(101), 255);
    EXPECT_EQ(lightAt(105), 255);
}

} // namespace
} // namespace quelto
