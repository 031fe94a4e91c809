// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/operations/VideoTools.h"
#include "export/rules/TitleGeometry.h"
#include "export/title/TitleText.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/DecodedPictures.h"

namespace quelto {
namespace {

using namespace test;

constexpr QSize Canvas(1280, 720);

class RenderTitleTest : public ExportTest {
protected:
    QString rendered(const std::optional<QString>& title) const
    {
        const auto clip = clips.make(QStringLiteral("X.mp4"),
                                     QStringLiteral("-f lavfi -i color=c=0x808080:s=1280x720:r=24:d=3.5 -c:v libx264 "
                                                    "-preset ultrafast -qp 4 -pix_fmt yuv420p"));
        auto output = clips.path(QStringLiteral("out.mp4"));
        const auto result = attempt([&](const ExportControl& control) {
            VideoTools::render({.clips = {clip}, .title = title, .output = output}, control);
            return output;
        });
        EXPECT_EQ(result.message.toStdString(), "");
        return output;
    }
};

void expectColour(QColor actual, double red, double green, double blue)
{
    constexpr double Tolerance = 5;
    EXPECT_NEAR(actual.red(), red, Tolerance);
    EXPECT_NEAR(actual.green(), green, Tolerance);
    EXPECT_NEAR(actual.blue(), blue, Tolerance);
}

/// The colour of a part of the card over grey, by the card's opacity.
double over(double colour, double opacity)
{
    return colour * opacity + 0x80 * (1 - opacity);
}

TEST_F(RenderTitleTest, CardStandsAtItsPlaceForThreeSeconds)
{
    const auto title = QStringLiteral("Pentakill");
    const auto output = rendered(title);
    const auto geometry = titleGeometry(Canvas, TitleText(title, titleFontSize(Canvas)).size());
    const auto& plate = geometry.plate;
    const auto bar = geometry.bar.adjusted(2, 4, -2, -4).toRect();
    // Above the text and beside the bar.
    const QRect dark(QPoint(qCeil(geometry.bar.right()) + 4, qCeil(plate.top()) + 3),
                     QSize(qFloor(plate.width()) - 40, qFloor(geometry.text.top() - plate.top()) - 6));
    const auto bars = meanColors(output, bar);
    const auto darks = meanColors(output, dark);
    // The first frame that shows each time.
    const std::vector<std::pair<double, double>> opacities{
        {0, 0}, {3.0 / 24, 3.0 / 24 / 0.3}, {0.5, 1}, {1.5, 1}, {2.75, 1}, {3, 0.5}, {77.0 / 24, 0}, {3.4, 0}};
    for (const auto& [time, opacity] : opacities) {
        SCOPED_TRACE(time);
        expectColour(colorAt(bars, time), over(255, opacity), over(0.35 * 255, opacity), over(0.12 * 255, opacity));
        const auto grey = over(0, 0.6 * opacity);
        expectColour(colorAt(darks, time), grey, grey, grey);
    }

    const auto standing = decodePictures(output, {}, {}, QStringLiteral("gray")).at(36).bytes;
    const auto lumaAt = [&](double x, double y) {
        return static_cast<std::uint8_t>(standing[qFloor(y) * qsizetype{Canvas.width()} + qFloor(x)]);
    };
    const auto outside = lumaAt(2, 2);
    for (const auto& point :
         {plate.topLeft() + QPointF(-4, -4), plate.bottomRight() + QPointF(4, 4),
          QPointF(plate.center().x(), plate.top() - 4), QPointF(plate.center().x(), plate.bottom() + 4),
          QPointF(plate.right() + 4, plate.center().y())}) {
        EXPECT_NEAR(lumaAt(point.x(), point.y()), outside, 4);
    }
    int white = 0;
    for (auto y = geometry.text.top(); y < geometry.text.bottom(); ++y) {
        for (auto x = geometry.text.left(); x < geometry.text.right(); ++x) {
            white += lumaAt(x, y) > 225 ? 1 : 0;
        }
    }
    EXPECT_GT(white, geometry.text.width() * geometry.text.height() / 20);
}

TEST_F(RenderTitleTest, WithoutTitleThePictureIsUnchanged)
{
    for (const auto& title : {std::optional<QString>(), std::optional(QStringLiteral("  "))}) {
        for (const auto& [time, color] : meanColors(rendered(title), QRect(0, 0, 1280, 400))) {
            expectColour(color, 0x80, 0x80, 0x80);
        }
    }
}

} // namespace
} // namespace quelto
