// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ClipPicture.h"

#include "tests/queues/ManualQueue.h"
#include "ui/screens/library/LibraryForQml.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace quelto {
namespace {

QImage filled(QSize size, QColor color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(CoveringPicture, FillsTheSizeAndCutsWhatStandsOver)
{
    // Red left and right of a green square.
    auto wide = filled({300, 100}, Qt::red);
    QPainter(&wide).fillRect(100, 0, 100, 100, Qt::green);
    const auto square = coveringPicture(wide, {50, 50}, 0);
    EXPECT_EQ(square.size(), QSize(50, 50));
    EXPECT_EQ(square.pixelColor(2, 25), QColor(Qt::green));
    EXPECT_EQ(square.pixelColor(47, 25), QColor(Qt::green));
}

TEST(CoveringPicture, RoundsItsUpperCornersOnly)
{
    const auto image = coveringPicture(filled({64, 64}, Qt::blue), {40, 40}, 8);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(39, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(20, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(0, 39), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(39, 39), QColor(Qt::blue));
}

TEST(CoveringPicture, OfNothingIsNothing)
{
    EXPECT_TRUE(coveringPicture({}, {40, 40}, 8).isNull());
    EXPECT_TRUE(coveringPicture(filled({64, 64}, Qt::blue), {0, 40}, 8).isNull());
}

class ClipPictureTest : public testing::Test {
protected:
    ClipPictureTest() { ThumbnailsForQml::instance = &cache; }
    ~ClipPictureTest() override { ThumbnailsForQml::instance = nullptr; }

    test::ManualTime time;
    test::ManualQueue main{time};
    test::ManualQueue work{time};
    QStringList read;
    ThumbnailCache cache{ThumbnailCache::Parts{.main = main,
                                               .work = [this](Task task) { work.post(std::move(task)); },
                                               .read =
                                                   [this](const QString& path, const std::stop_token&) {
                                                       read.append(path);
                                                       ClipReading reading;
                                                       reading.facts.duration = path == u"/long" ? 65 : 0;
                                                       if (path != u"/broken") {
                                                           reading.picture = filled({64, 36}, Qt::red);
                                                       }
                                                       return reading;
                                                   },
                                               .byteLimit = 1 << 20}};
    ClipPicture picture;
};

TEST_F(ClipPictureTest, ShowsItsClipWhenItWasRead)
{
    picture.setPath(QStringLiteral("/long"));
    EXPECT_FALSE(picture.hasPicture());
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QStringLiteral("1:05"));
}

TEST_F(ClipPictureTest, NeverShowsAnotherClip)
{
    picture.setPath(QStringLiteral("/long"));
    time.settle();
    picture.setPath(QStringLiteral("/other"));
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QString()) << "nor its length";
    picture.setPath({});
    time.settle();
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(read, QStringList{QStringLiteral("/long")}) << "what left before it was read is not read";
}

TEST_F(ClipPictureTest, KeepsToItsPlaceholderForABrokenClip)
{
    picture.setPath(QStringLiteral("/broken"));
    time.settle();
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QString());
}

TEST_F(ClipPictureTest, AsksForNothingWhilePassingButShowsWhatIsThere)
{
    picture.setPath(QStringLiteral("/long"));
    time.settle();
    picture.setPassing(true);
    picture.setPath(QStringLiteral("/other"));
    time.settle();
    EXPECT_EQ(read.size(), 1);
    picture.setPath(QStringLiteral("/long"));
    EXPECT_TRUE(picture.hasPicture());
    picture.setPath(QStringLiteral("/other"));
    picture.setPassing(false);
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    EXPECT_EQ(read.size(), 2);
}

} // namespace
} // namespace quelto
