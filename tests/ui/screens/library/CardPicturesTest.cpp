// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/tasks/ManualQueue.h"
#include "tests/ui/screens/library/LibraryScreenFixture.h"

namespace quelto {
namespace {

/// Which files the visible cards read. The test controls when reads run.
class CardPicturesTest : public test::LibraryScreenFixture {
protected:
    void SetUp() override
    {
        LibraryScreenFixture::SetUp();
        setClipReader(
            [this](const QString& path) {
                read.append(Clip(path).displayTitle());
                ClipPreview reading;
                if (!unfinished.contains(path)) {
                    reading.thumbnail = QImage(64, 36, QImage::Format_RGB32);
                    reading.thumbnail.fill(Qt::darkGreen);
                }
                return reading;
            },
            [this](Task task) { reader.post(std::move(task)); });
    }

    void open(int count)
    {
        for (int i = 0; i < count; ++i) {
            makeFile(QStringLiteral("Dota 2 - Nr %1.mp4").arg(i, 3, 10, QLatin1Char('0')).toUtf8().constData(), i * 60);
        }
        reload();
        show();
    }
    void scrollTo(qreal y)
    {
        itemsOf("CardGrid").value(0)->findChild<QQuickItem*>(QStringLiteral("cards"))->setProperty("contentY", y);
        settle(100);
    }
    int pictures() const
    {
        int count = 0;
        test::visitVisible(window->contentItem(), [&](QQuickItem* each) {
            count += each->inherits("quelto::ThumbnailItem") && each->property("hasPicture").toBool() ? 1 : 0;
        });
        return count;
    }

    test::ManualTime readerTime;
    test::ManualQueue reader{readerTime};
    QStringList read;
    QStringList unfinished;
};

TEST_F(CardPicturesTest, SkipsCardsThatScrolledOutOfView)
{
    open(200);
    EXPECT_TRUE(read.isEmpty()) << "no read runs before the test allows it";
    scrollTo(3000);
    scrollTo(6000);
    const auto seen = cardTitles();
    ASSERT_FALSE(seen.contains(QStringLiteral("Nr 000")));
    readerTime.settle();
    settle(50);
    auto sorted = read;
    sorted.sort();
    EXPECT_EQ(sorted, seen);
    EXPECT_EQ(pictures(), seen.size());
}

TEST_F(CardPicturesTest, ReadsNewlyVisibleCardsFirst)
{
    open(200);
    const auto before = cardTitles();
    scrollTo(500);
    const auto after = cardTitles();
    const auto isNew = [&](const QString& title) { return !before.contains(title); };
    const auto newCount = std::ranges::count_if(after, isNew);
    ASSERT_GT(newCount, 0);
    ASSERT_LT(newCount, after.size()) << "some cards stay visible";
    readerTime.settle();
    EXPECT_TRUE(std::all_of(read.cbegin(), read.cbegin() + newCount, isNew)) << read.join(u' ').toStdString();
    EXPECT_EQ(read.size(), after.size());
}

TEST_F(CardPicturesTest, KeepsThumbnailsOnReload)
{
    open(5);
    readerTime.settle();
    settle(50);
    EXPECT_EQ(pictures(), 5);
    makeFile("Dota 2 - Older.mp4", 4000);
    reload();
    EXPECT_EQ(pictures(), 5) << "no thumbnail disappears, not even for one frame";
    readerTime.settle();
    settle(50);
    EXPECT_EQ(pictures(), 6);
    EXPECT_EQ(read.size(), 6);
}

TEST_F(CardPicturesTest, LoadsTheThumbnailOnceAClipIsFullyCopied)
{
    unfinished.append(path("Dota 2 - Nr 000.mp4"));
    open(2);
    readerTime.settle();
    settle(50);
    EXPECT_EQ(pictures(), 1);
    QFile file(unfinished.takeFirst());
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("the rest");
    file.close();
    reload();
    readerTime.settle();
    settle(50);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(read.size(), 3);
}

} // namespace
} // namespace quelto
