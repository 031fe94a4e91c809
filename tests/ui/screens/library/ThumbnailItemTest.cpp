// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/ThumbnailItem.h"

#include "tests/base/tasks/ManualQueue.h"
#include "ui/screens/library/ClipCommands.h"
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

TEST(CoveringPicture, FillsTheSizeAndCropsTheExcess)
{
    // A green square with red at both sides.
    auto wide = filled({300, 100}, Qt::red);
    QPainter(&wide).fillRect(100, 0, 100, 100, Qt::green);
    const auto square = coveringPicture(wide, {50, 50}, 0);
    EXPECT_EQ(square.size(), QSize(50, 50));
    EXPECT_EQ(square.pixelColor(2, 25), QColor(Qt::green));
    EXPECT_EQ(square.pixelColor(47, 25), QColor(Qt::green));
}

TEST(CoveringPicture, RoundsOnlyTheUpperCorners)
{
    const auto image = coveringPicture(filled({64, 64}, Qt::blue), {40, 40}, 8);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(39, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(20, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(0, 39), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(39, 39), QColor(Qt::blue));
}

TEST(CoveringPicture, IsNullForANullPictureOrAnEmptySize)
{
    EXPECT_TRUE(coveringPicture({}, {40, 40}, 8).isNull());
    EXPECT_TRUE(coveringPicture(filled({64, 64}, Qt::blue), {0, 40}, 8).isNull());
}

TEST(DragPicture, Fits200LogicalPixelsAtEveryScale)
{
    const auto wide = filled({640, 360}, Qt::blue);
    const auto once = dragPicture(wide, 1);
    EXPECT_EQ(once.size(), QSize(200, 112));
    const auto twice = dragPicture(wide, 2);
    EXPECT_EQ(twice.size(), QSize(400, 225));
    EXPECT_EQ(twice.devicePixelRatio(), 2);
    EXPECT_EQ(twice.deviceIndependentSize(), QSizeF(200, 112.5));
    EXPECT_EQ(twice.pixelColor(200, 100), QColor(Qt::blue));
    EXPECT_EQ(dragPicture(filled({360, 640}, Qt::blue), 2).size(), QSize(225, 400));
    EXPECT_TRUE(dragPicture({}, 2).isNull());
}

class ThumbnailItemTest : public testing::Test {
protected:
    ThumbnailItemTest() { ThumbnailsForQml::instance = &cache; }
    ~ThumbnailItemTest() override { ThumbnailsForQml::instance = nullptr; }

    test::ManualTime time;
    test::ManualQueue main{time};
    test::ManualQueue work{time};
    QStringList read;
    /// A file that is still being copied.
    QString unfinished;
    ThumbnailCache cache{ThumbnailCache::Dependencies{.main = main,
                                                      .work = [this](Task task) { work.post(std::move(task)); },
                                                      .read =
                                                          [this](const QString& path, const std::stop_token&) {
                                                              read.append(path);
                                                              ClipPreview reading;
                                                              reading.info.duration = path == u"/long" ? 65 : 0;
                                                              if (path != u"/broken" && path != unfinished) {
                                                                  reading.thumbnail = filled({64, 36}, Qt::red);
                                                              }
                                                              return reading;
                                                          },
                                                      .byteLimit = 1 << 20}};
    ThumbnailItem picture;
};

TEST_F(ThumbnailItemTest, ShowsTheThumbnailOnceRead)
{
    picture.setPath(QStringLiteral("/long"));
    EXPECT_FALSE(picture.hasPicture());
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QStringLiteral("1:05"));
}

TEST_F(ThumbnailItemTest, ClearsTheThumbnailOnAChangeOfPath)
{
    picture.setPath(QStringLiteral("/long"));
    time.settle();
    picture.setPath(QStringLiteral("/other"));
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QString()) << "the duration is cleared too";
    picture.setPath({});
    time.settle();
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(read, QStringList{QStringLiteral("/long")}) << "a cancelled request is not read";
}

TEST_F(ThumbnailItemTest, HasNoPictureForABrokenClip)
{
    picture.setPath(QStringLiteral("/broken"));
    time.settle();
    EXPECT_FALSE(picture.hasPicture());
    EXPECT_EQ(picture.durationText(), QString());
    EXPECT_EQ(read.size(), 1);
}

TEST_F(ThumbnailItemTest, ShowsOnlyCachedThumbnailsDuringFastScrolling)
{
    picture.setPath(QStringLiteral("/long"));
    time.settle();
    picture.setCacheOnly(true);
    picture.setPath(QStringLiteral("/other"));
    time.settle();
    EXPECT_EQ(read.size(), 1);
    picture.setPath(QStringLiteral("/long"));
    EXPECT_TRUE(picture.hasPicture());
    picture.setPath(QStringLiteral("/other"));
    picture.setCacheOnly(false);
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    EXPECT_EQ(read.size(), 2);
}

TEST_F(ThumbnailItemTest, RequestsAgainWhenAFileWithoutThumbnailChanges)
{
    unfinished = QStringLiteral("/copy");
    picture.setPath(unfinished);
    time.settle();
    ASSERT_FALSE(picture.hasPicture());
    picture.setVersion(1);
    time.settle();
    EXPECT_EQ(read.size(), 2) << "the file has changed, but still has no thumbnail";
    EXPECT_FALSE(picture.hasPicture());
    unfinished.clear();
    picture.setVersion(2);
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    picture.setVersion(3);
    time.settle();
    EXPECT_EQ(read.size(), 3) << "an existing thumbnail is kept";
}

TEST_F(ThumbnailItemTest, RequestsAgainWhenTheFileChangedDuringTheRead)
{
    unfinished = QStringLiteral("/copy");
    picture.setPath(unfinished);
    work.post([this] {
        // The file has been read; the result is not delivered yet.
        unfinished.clear();
        picture.setVersion(1);
    });
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
    EXPECT_EQ(read.size(), 2);
}

TEST_F(ThumbnailItemTest, RequestsAChangedFileAfterFastScrolling)
{
    unfinished = QStringLiteral("/copy");
    picture.setPath(unfinished);
    time.settle();
    picture.setCacheOnly(true);
    unfinished.clear();
    picture.setVersion(1);
    time.settle();
    EXPECT_EQ(read.size(), 1);
    picture.setCacheOnly(false);
    time.settle();
    EXPECT_TRUE(picture.hasPicture());
}

} // namespace
} // namespace quelto
