// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/SceneryClips.h"

#include <QDateTime>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QProcess>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace quelto::test {

namespace {

constexpr QSize PictureSize{960, 540};
constexpr qreal Width = PictureSize.width();
constexpr qreal Height = PictureSize.height();
constexpr int Ridges = 5;

enum class Ground { hills, peaks, pines, city };
enum class Overlay { none, abilities, crosshair, bossBar };

/// Colours run from the far end of the landscape to the near one.
struct Scene {
    Ground ground = Ground::hills;
    Overlay overlay = Overlay::none;
    unsigned seed = 0;
    QRgb sky = 0;
    QRgb horizon = 0;
    QRgb nearest = 0;
    QRgb light = 0;
    /// Units: shares of the picture's sides.
    QPointF lightAt;
};

struct SceneryClip {
    QString game;
    /// Follows the date in the file name.
    QString suffix;
    /// Replaces date and suffix if it is not empty.
    QString title;
    int daysAgo = 0;
    QTime time;
    int seconds = 0;
    int megabytes = 0;
    Scene scene;
};

QColor between(QRgb from, QRgb to, qreal share)
{
    const QColor a(from);
    const QColor b(to);
    const auto mix = [share](float x, float y) { return x + static_cast<float>(share) * (y - x); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

QColor faded(QRgb color, qreal alpha)
{
    QColor result(color);
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}

/// The heights of one ridge, one value for each column of pixels, about -1 to 1.
QList<qreal> ridgeLine(Ground ground, std::mt19937& random)
{
    std::uniform_real_distribution<qreal> phase(0, 2 * std::numbers::pi);
    std::uniform_real_distribution<qreal> any(-1, 1);
    QList<qreal> heights(PictureSize.width() + 1);
    for (int octave = 0; octave < 7; ++octave) {
        const qreal start = phase(random);
        const qreal frequency = std::pow(2.0, octave) * (1 + 0.3 * any(random));
        for (int x = 0; x <= PictureSize.width(); ++x) {
            const qreal wave = std::sin(start + frequency * x / Width * 2 * std::numbers::pi);
            const qreal shape = ground == Ground::peaks ? 1 - 2 * std::abs(wave) : wave;
            heights[x] += shape * std::pow(ground == Ground::peaks ? 0.5 : 0.36, octave) * 0.55;
        }
    }
    int until = 0;
    qreal roof = 0;
    for (int x = 0; x <= PictureSize.width() && ground == Ground::city; ++x) {
        if (x >= until) {
            until = x + 26 + static_cast<int>(30 * (1 + any(random)));
            roof = heights[x] * 0.5 + 0.6 * any(random);
        }
        heights[x] = roof;
    }
    return heights;
}

void paintSky(QPainter& painter, const Scene& scene)
{
    QLinearGradient sky(0, 0, 0, Height * 0.75);
    sky.setColorAt(0, QColor(scene.sky));
    sky.setColorAt(1, QColor(scene.horizon));
    painter.fillRect(QRectF({0, 0}, PictureSize), sky);
    const QPointF center(scene.lightAt.x() * Width, scene.lightAt.y() * Height);
    QRadialGradient glow(center, Width * 0.45);
    glow.setColorAt(0, faded(scene.light, 0.85));
    glow.setColorAt(0.12, faded(scene.light, 0.45));
    glow.setColorAt(1, faded(scene.light, 0));
    painter.fillRect(QRectF({0, 0}, PictureSize), glow);
    painter.setBrush(between(scene.light, 0xffffffff, 0.6));
    painter.drawEllipse(center, 26, 26);
}

void paintPines(QPainter& painter, const QPolygonF& ridge, qreal tall, std::mt19937& random)
{
    std::uniform_real_distribution<qreal> any(0.5, 1.2);
    for (qsizetype i = 2; i < ridge.size() - 2; i += static_cast<qsizetype>(4 + tall * 0.16 * any(random))) {
        const auto foot = ridge.at(i) + QPointF(0, 3);
        const auto height = tall * any(random);
        painter.drawPolygon(
            QPolygonF{foot - QPointF(height * 0.2, 0), foot - QPointF(0, height), foot + QPointF(height * 0.2, 0)});
    }
}

void paintWindows(QPainter& painter, const QPolygonF& ridge, const Scene& scene, std::mt19937& random)
{
    std::uniform_int_distribution<int> lit(0, 4);
    painter.setBrush(faded(scene.light, 0.75));
    for (qsizetype i = 8; i < ridge.size() - 8; i += 11) {
        for (qreal y = ridge.at(i).y() + 12; y < Height; y += 15) {
            if (lit(random) == 0 && ridge.at(i + 5).y() < y && ridge.at(i - 2).y() < y) {
                painter.drawRect(QRectF(ridge.at(i).x(), y, 5, 7));
            }
        }
    }
}

void paintRidges(QPainter& painter, const Scene& scene)
{
    std::mt19937 random(scene.seed);
    for (int depth = 0; depth < Ridges; ++depth) {
        const qreal share = (depth + 1.0) / Ridges;
        const auto line = ridgeLine(scene.ground, random);
        QPolygonF ridge{{0, Height}};
        for (int x = 0; x <= PictureSize.width(); ++x) {
            ridge.append(QPointF(x, Height * (0.42 + 0.11 * depth) - line.at(x) * Height * (0.2 - 0.02 * depth)));
        }
        ridge.append({Width, Height});
        QLinearGradient slope(0, ridge.boundingRect().top(), 0, Height);
        const auto color = between(scene.horizon, scene.nearest, share);
        slope.setColorAt(0, color);
        slope.setColorAt(1, between(color.rgb(), scene.horizon, depth + 1 < Ridges ? 0.5 : 0));
        painter.setBrush(slope);
        painter.drawPolygon(ridge);
        painter.setBrush(color);
        if (scene.ground == Ground::pines) {
            paintPines(painter, ridge, 14.0 + 16 * depth, random);
        } else if (scene.ground == Ground::city && depth > 1) {
            paintWindows(painter, ridge, scene, random);
        }
    }
}

void paintBar(QPainter& painter, const QRectF& place, qreal share, QRgb color)
{
    painter.setBrush(faded(0xff000000, 0.6));
    painter.drawRoundedRect(place, 3, 3);
    painter.setBrush(QColor(color));
    painter.drawRoundedRect(
        QRectF(place.topLeft() + QPointF(2, 2), QSizeF((place.width() - 4) * share, place.height() - 4)), 2, 2);
}

/// The controls and status bars that a game draws over its scene.
void paintOverlay(QPainter& painter, const Scene& scene)
{
    const auto dark = faded(0xff0a0d12, 0.72);
    if (scene.overlay == Overlay::abilities) {
        painter.setBrush(dark);
        painter.drawRoundedRect(QRectF(300, 452, 360, 80), 8, 8);
        painter.drawRoundedRect(QRectF(8, 386, 146, 146), 6, 6);
        for (int i = 0; i < 6; ++i) {
            painter.setBrush(between(scene.light, scene.sky, i / 7.0));
            painter.drawRoundedRect(QRectF(312.0 + 57 * i, 462, 50, 34), 5, 5);
        }
        paintBar(painter, QRectF(312, 503, 335, 11), 0.72, 0xff4fc15e);
        paintBar(painter, QRectF(312, 516, 335, 11), 0.45, 0xff3f83e0);
        std::mt19937 random(scene.seed);
        std::uniform_real_distribution<qreal> place(12, 134);
        for (int i = 0; i < 10; ++i) {
            painter.setBrush(QColor(i % 2 == 0 ? 0xff57d16aU : 0xffe5514bU));
            painter.drawEllipse(QPointF(8 + place(random), 386 + place(random)), 5, 5);
        }
    } else if (scene.overlay == Overlay::crosshair) {
        painter.setBrush(QColor(0xff00d64f));
        for (const auto& line :
             {QRectF(478, 248, 4, 14), QRectF(478, 278, 4, 14), QRectF(458, 268, 14, 4), QRectF(488, 268, 14, 4)}) {
            painter.drawRect(line);
        }
        for (int i = 0; i < 3; ++i) {
            painter.setBrush(dark);
            painter.drawRoundedRect(QRectF(748, 18.0 + 34 * i, 194, 26), 4, 4);
            painter.setBrush(QColor(0xffe9c46a));
            painter.drawRect(QRectF(760, 28.0 + 34 * i, 62, 6));
            painter.setBrush(QColor(0xff7fb4e6));
            painter.drawRect(QRectF(866, 28.0 + 34 * i, 62, 6));
        }
        paintBar(painter, QRectF(26, 498, 190, 18), 0.38, 0xffe9e9e9);
        paintBar(painter, QRectF(236, 498, 120, 18), 0.8, 0xffe9c46a);
    } else if (scene.overlay == Overlay::bossBar) {
        paintBar(painter, QRectF(30, 410, 250, 15), 0.33, 0xffc9403c);
        paintBar(painter, QRectF(30, 430, 200, 11), 0.8, 0xff3f83e0);
        paintBar(painter, QRectF(30, 445, 170, 11), 0.6, 0xff58b368);
        paintBar(painter, QRectF(230, 492, 500, 16), 0.06, 0xffc9403c);
    }
}

QImage painted(const Scene& scene)
{
    QImage image(PictureSize, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintSky(painter, scene);
    paintRidges(painter, scene);
    paintOverlay(painter, scene);
    return image;
}

QList<SceneryClip> sceneryClips()
{
    const auto text = [](const char* words) { return QString::fromUtf8(words); };
    const auto league = text("League of Legends");
    const auto dota = text("Dota 2");
    const auto counterStrike = text("Counter-Strike 2");
    return {
        {league,
         text(" [EFSANE 170] PENTAKILL (Ahri)"),
         {},
         0,
         {21, 42, 8},
         47,
         84,
         {Ground::pines, Overlay::abilities, 11, 0xff14213d, 0xff6a7fc1, 0xff0b1a24, 0xffbfd7ff, {0.7, 0.2}}},
        {league,
         text(" [ORTA 63] Triple Kill (Ahri)"),
         {},
         0,
         {21, 33, 51},
         31,
         55,
         {Ground::pines, Overlay::abilities, 12, 0xff123c3a, 0xff5fb49c, 0xff06201d, 0xffd6ffe0, {0.24, 0.26}}},
        {counterStrike,
         {},
         text("1v4 clutch on the last round"),
         0,
         {20, 58, 12},
         30,
         53,
         {Ground::city, Overlay::crosshair, 13, 0xff7fb2d9, 0xffefd9b4, 0xff6b5138, 0xffffe6b0, {0.78, 0.18}}},
        {dota,
         text(" [EFSANE 185] RAMPAGE (Phantom Assassin)"),
         {},
         0,
         {19, 47, 30},
         58,
         101,
         {Ground::hills, Overlay::abilities, 14, 0xff2b1b4d, 0xffd1567a, 0xff1c0f2b, 0xffffc08a, {0.42, 0.34}}},
        {dota,
         text(" [ORTA 31] Double Kill (Phantom Assassin)"),
         {},
         0,
         {19, 21, 4},
         28,
         49,
         {Ground::hills, Overlay::abilities, 15, 0xff1d4d2b, 0xffb5c76a, 0xff10240f, 0xfff7ffc2, {0.62, 0.2}}},
        {counterStrike,
         {},
         {},
         0,
         {18, 35, 40},
         30,
         52,
         {Ground::city, Overlay::crosshair, 16, 0xff0d1330, 0xff4b3f72, 0xff0a0a16, 0xffffb45c, {0.2, 0.3}}},
        {text("Elden Ring"),
         {},
         text("Beaten at last, no summons"),
         1,
         {23, 12, 55},
         90,
         158,
         {Ground::peaks, Overlay::bossBar, 17, 0xff3b2a1a, 0xffd9a441, 0xff1d140c, 0xffffe9a8, {0.5, 0.22}}},
        {text("World of Warcraft"),
         text(" [EFSANE 94] Mythic+ 16"),
         {},
         1,
         {22, 40, 17},
         75,
         131,
         {Ground::peaks, Overlay::bossBar, 18, 0xff1b2a52, 0xffa9c4e8, 0xff1c2b45, 0xffffffff, {0.3, 0.18}}},
        {league,
         text(" [BASIT 15] Solo Kill (Jinx)"),
         {},
         1,
         {21, 5, 33},
         22,
         38,
         {Ground::pines, Overlay::abilities, 19, 0xff4a1e52, 0xffe58a6b, 0xff22102b, 0xffffd9a0, {0.55, 0.3}}},
    };
}

QString nameOf(const SceneryClip& clip, const QDateTime& date)
{
    const auto stamp = date.toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    return clip.game + QStringLiteral(" - ") + (clip.title.isEmpty() ? stamp + clip.suffix : clip.title) +
        QStringLiteral(".mp4");
}

} // namespace

void addSceneryClips(const QString& folder)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    const auto now = QDateTime::currentDateTime();
    for (const auto& clip : sceneryClips()) {
        const auto date = std::min(QDateTime(now.date().addDays(-clip.daysAgo), clip.time), now);
        const auto path = QDir(folder).filePath(nameOf(clip, date));
        const auto still = QDir(folder).filePath(QStringLiteral(".still.png"));
        ASSERT_TRUE(painted(clip.scene).save(still));
        const QStringList arguments{QStringLiteral("-v"),
                                    QStringLiteral("error"),
                                    QStringLiteral("-loop"),
                                    QStringLiteral("1"),
                                    QStringLiteral("-framerate"),
                                    QStringLiteral("1"),
                                    QStringLiteral("-i"),
                                    still,
                                    QStringLiteral("-t"),
                                    QString::number(clip.seconds),
                                    QStringLiteral("-preset"),
                                    QStringLiteral("ultrafast"),
                                    QStringLiteral("-pix_fmt"),
                                    QStringLiteral("yuv420p"),
                                    path};
        ASSERT_EQ(QProcess::execute(QStringLiteral("ffmpeg"), arguments), 0);
        ASSERT_TRUE(QFile::remove(still));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        // A sparse end gives the file the size of a real recording. Demuxers ignore it.
        ASSERT_TRUE(file.resize(qint64{clip.megabytes} * 1'000'000));
        ASSERT_TRUE(file.setFileTime(date, QFileDevice::FileModificationTime));
    }
}

} // namespace quelto::test
