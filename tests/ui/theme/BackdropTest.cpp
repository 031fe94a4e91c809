// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/QmlFixture.h"

namespace quelto {
namespace {

class Backdrop : public test::QmlFixture { };

void expectNear(const QColor& actual, const QColor& expected)
{
    EXPECT_NEAR(actual.red(), expected.red(), 2);
    EXPECT_NEAR(actual.green(), expected.green(), 2);
    EXPECT_NEAR(actual.blue(), expected.blue(), 2);
}

TEST_F(Backdrop, SpreadsTheGradientEvenlyFromTopToBottom)
{
    show(QStringLiteral("Backdrop { anchors.fill: parent }"), {64, 401});
    for (const auto& palette : Palette::all()) {
        SCOPED_TRACE(palette.id.toStdString());
        settings.setColorTheme(palette.id);
        const auto image = window->grabWindow();
        const auto colors = palette.gradient.isEmpty() ? QList<QColor>{palette.bg, palette.bg} : palette.gradient;
        for (qsizetype i = 0; i < colors.size(); ++i) {
            expectNear(image.pixelColor(0, static_cast<int>(400 * i / (colors.size() - 1))), colors[i]);
        }
        EXPECT_EQ(image.pixelColor(0, 130), image.pixelColor(63, 130));
        const auto isPlain = image.pixelColor(0, 0) == image.pixelColor(0, 400);
        EXPECT_EQ(isPlain, palette.gradient.isEmpty());
    }
}

} // namespace
} // namespace quelto
