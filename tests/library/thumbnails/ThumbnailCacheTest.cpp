// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailCache.h"

#include "tests/base/tasks/ManualQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using Ticket = ThumbnailCache::Ticket;

/// Of 400 bytes; three have room.
QImage picture()
{
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// The cache on queues that the test drives, with a reader that notes what it is asked for.
class ThumbnailCacheTest : public testing::Test {
protected:
    ThumbnailCacheTest() { make(); }

    void make()
    {
        cache = std::make_unique<ThumbnailCache>(ThumbnailCache::Dependencies{
            .main = main,
            .work = [this](Task task) { work.post(std::move(task)); },
            .read =
                [this](const QString& path, const std::stop_token& stop) {
                    read.push_back(path.toStdString());
                    token = stop;
                    if (onRead) {
                        onRead(path);
                    }
                    return reading;
                },
            .byteLimit = 1200,
        });
    }

    Ticket load(const char* path)
    {
        return cache->load(QString::fromUtf8(path), [this, path](const QImage& image, const ClipInfo& info) {
            shown.emplace_back(path);
            lastImage = image;
            lastInfo = info;
        });
    }
    void letReadersRun() { workTime.settle(); }
    void letMainRun() { mainTime.settle(); }
    void settle()
    {
        letReadersRun();
        letMainRun();
    }
    bool hasImage(const char* path) const { return !cache->cachedImage(QString::fromUtf8(path)).isNull(); }

    test::ManualTime mainTime;
    test::ManualTime workTime;
    test::ManualQueue main{mainTime};
    test::ManualQueue work{workTime};
    ClipPreview reading{.metadata = {.duration = 30, .width = 1920, .height = 1080, .fps = 60}, .thumbnail = picture()};
    std::function<void(const QString&)> onRead;
    std::vector<std::string> read;
    std::vector<std::string> shown;
    QImage lastImage;
    ClipInfo lastInfo;
    std::stop_token token;
    std::unique_ptr<ThumbnailCache> cache;
};

TEST_F(ThumbnailCacheTest, FileIsReadInTheBackgroundAndShownOnTheMainQueue)
{
    const auto ticket = load("a");
    EXPECT_TRUE(read.empty());
    letReadersRun();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_TRUE(shown.empty());
    letMainRun();
    EXPECT_THAT(shown, ElementsAre("a"));
    EXPECT_EQ(lastImage, picture());
    EXPECT_EQ(lastInfo, (ClipInfo{.duration = 30, .width = 1920, .height = 1080, .fps = 60}));
}

TEST_F(ThumbnailCacheTest, WhatWasReadIsShownAtOnceAndNotReadAgain)
{
    const auto first = load("a");
    settle();
    const auto second = load("a");
    EXPECT_THAT(shown, ElementsAre("a", "a"));
    EXPECT_EQ(lastImage, picture());
    EXPECT_EQ(lastInfo.duration, 30);
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_EQ(shown.size(), 2U);
}

TEST_F(ThumbnailCacheTest, NothingIsCachedBeforeTheFirstReading)
{
    EXPECT_FALSE(hasImage("a"));
    EXPECT_FALSE(cache->cachedInfo(QStringLiteral("a")));
    const auto ticket = load("a");
    letReadersRun();
    EXPECT_TRUE(hasImage("a"));
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("a"))->fps, 60);
}

TEST_F(ThumbnailCacheTest, FileWithoutAPictureKeepsItsDataAndIsReadAgain)
{
    reading = {};
    const auto first = load("broken");
    settle();
    EXPECT_TRUE(lastImage.isNull());
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("broken")), ClipInfo{});
    reading = {.metadata = {.duration = 5}, .thumbnail = picture()};
    const auto second = load("broken");
    settle();
    EXPECT_THAT(read, ElementsAre("broken", "broken"));
    EXPECT_EQ(lastImage, picture());
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("broken"))->duration, 5);
}

TEST_F(ThumbnailCacheTest, NewestWishIsReadFirst)
{
    const std::array tickets{load("a"), load("b"), load("c")};
    settle();
    EXPECT_THAT(read, ElementsAre("c", "b", "a"));
    EXPECT_THAT(shown, ElementsAre("c", "b", "a"));
}

TEST_F(ThumbnailCacheTest, WishThatIsRepeatedIsNewAgain)
{
    const std::array tickets{load("a"), load("b"), load("a")};
    settle();
    EXPECT_THAT(read, ElementsAre("a", "b"));
    EXPECT_THAT(shown, ElementsAre("a", "a", "b"));
}

TEST_F(ThumbnailCacheTest, WishThatComesWhileOthersAreReadIsNext)
{
    std::vector<Ticket> tickets;
    onRead = [&](const QString& path) {
        if (path == u"c") {
            tickets.push_back(load("d"));
        }
    };
    tickets.push_back(load("a"));
    tickets.push_back(load("b"));
    tickets.push_back(load("c"));
    settle();
    EXPECT_THAT(read, ElementsAre("c", "d", "b", "a"));
}

TEST_F(ThumbnailCacheTest, DroppedWishIsNotRead)
{
    auto a = load("a");
    const auto b = load("b");
    a = {};
    settle();
    EXPECT_THAT(read, ElementsAre("b"));
    EXPECT_THAT(shown, ElementsAre("b"));
    EXPECT_FALSE(cache->cachedInfo(QStringLiteral("a")));
    const auto again = load("a");
    settle();
    EXPECT_THAT(read, ElementsAre("b", "a"));
}

TEST_F(ThumbnailCacheTest, WishOfManyIsReadOnceForThoseThatAreLeft)
{
    auto first = load("a");
    const auto second = load("a");
    first = {};
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_THAT(shown, ElementsAre("a"));
}

TEST_F(ThumbnailCacheTest, WishDroppedWhileItIsReadIsKeptAndNotShown)
{
    auto ticket = load("a");
    onRead = [&](const QString&) { ticket = {}; };
    settle();
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(hasImage("a"));
    EXPECT_TRUE(cache->cachedInfo(QStringLiteral("a")));
}

TEST_F(ThumbnailCacheTest, WishThatComesWhileTheFileIsReadSharesTheReading)
{
    auto first = load("a");
    Ticket second;
    onRead = [&](const QString&) {
        first = {};
        second = load("a");
    };
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_THAT(shown, ElementsAre("a"));
}

TEST_F(ThumbnailCacheTest, WishDroppedOnTheWayToTheMainQueueIsNotShown)
{
    auto ticket = load("a");
    letReadersRun();
    ticket = {};
    letMainRun();
    EXPECT_TRUE(shown.empty());
}

TEST_F(ThumbnailCacheTest, CallbackMayDropItsTicketAndWishAnew)
{
    Ticket ticket;
    Ticket other;
    ticket = cache->load(QStringLiteral("a"), [&](const QImage&, const ClipInfo&) {
        ticket = {};
        other = load("b");
    });
    settle();
    settle();
    EXPECT_THAT(shown, ElementsAre("b"));
}

TEST_F(ThumbnailCacheTest, CallbackMayOwnItsOwnTicket)
{
    const auto ticket = std::make_shared<Ticket>();
    const std::weak_ptr<Ticket> seen = ticket;
    *ticket = cache->load(QStringLiteral("a"), [ticket](const QImage&, const ClipInfo&) {});
    settle();
    EXPECT_EQ(seen.use_count(), 1);
}

TEST_F(ThumbnailCacheTest, PicturesOnScreenStayAndOthersGo)
{
    std::vector<Ticket> onScreen;
    for (const auto* path : {"a", "b", "c", "d", "e"}) {
        onScreen.push_back(load(path));
        settle();
    }
    for (const auto* path : {"a", "b", "c", "d", "e"}) {
        EXPECT_TRUE(hasImage(path)) << path;
    }
    onScreen.clear();
    EXPECT_FALSE(hasImage("a"));
    EXPECT_TRUE(hasImage("e"));
    EXPECT_TRUE(cache->cachedInfo(QStringLiteral("a")));
}

TEST_F(ThumbnailCacheTest, PictureThatWentIsReadAgain)
{
    for (const auto* path : {"a", "b", "c", "d"}) {
        const auto ticket = load(path);
        settle();
    }
    ASSERT_FALSE(hasImage("a"));
    const auto ticket = load("a");
    EXPECT_EQ(shown.size(), 4U);
    settle();
    EXPECT_EQ(shown.size(), 5U);
    EXPECT_EQ(read.back(), "a");
}

TEST_F(ThumbnailCacheTest, PictureShownFromTheCacheIsOnScreenToo)
{
    {
        const auto ticket = load("a");
        settle();
    }
    const auto again = load("a");
    for (const auto* path : {"b", "c", "d", "e"}) {
        const auto ticket = load(path);
        settle();
    }
    EXPECT_TRUE(hasImage("a"));
}

TEST_F(ThumbnailCacheTest, MovedTicketIsTheSameWish)
{
    auto ticket = load("a");
    Ticket moved(std::move(ticket));
    ticket = std::move(moved);
    settle();
    EXPECT_THAT(shown, ElementsAre("a"));
}

TEST_F(ThumbnailCacheTest, NothingIsReadOrShownAfterItsEnd)
{
    const auto a = load("a");
    letReadersRun();
    const auto b = load("b");
    cache.reset();
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_TRUE(shown.empty());
}

TEST_F(ThumbnailCacheTest, ReaderIsToldToStopAtTheEnd)
{
    const auto ticket = load("a");
    onRead = [&](const QString&) {
        EXPECT_FALSE(token.stop_requested());
        cache.reset();
        EXPECT_TRUE(token.stop_requested());
    };
    settle();
    EXPECT_TRUE(shown.empty());
}

TEST_F(ThumbnailCacheTest, CallbackMayEndTheCache)
{
    const auto first = cache->load(QStringLiteral("a"), [&](const QImage&, const ClipInfo&) { cache.reset(); });
    const auto second = load("a");
    settle();
    EXPECT_TRUE(shown.empty());
}

} // namespace
} // namespace quelto
