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

/// A picture of 400 bytes; the cache holds three.
QImage picture()
{
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// A cache on manual queues, with a reader that records the requested paths.
class ThumbnailCacheTest : public testing::Test {
protected:
    ThumbnailCacheTest() { makeCache(); }

    void makeCache()
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
                    return result;
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
    void runWorkers() { workTime.settle(); }
    void runMain() { mainTime.settle(); }
    void settle()
    {
        runWorkers();
        runMain();
    }
    bool hasImage(const char* path) const { return !cache->cachedImage(QString::fromUtf8(path)).isNull(); }

    test::ManualTime mainTime;
    test::ManualTime workTime;
    test::ManualQueue main{mainTime};
    test::ManualQueue work{workTime};
    ClipPreview result{.info = {.duration = 30, .width = 1920, .height = 1080, .fps = 60}, .thumbnail = picture()};
    std::function<void(const QString&)> onRead;
    std::vector<std::string> read;
    std::vector<std::string> shown;
    QImage lastImage;
    ClipInfo lastInfo;
    std::stop_token token;
    std::unique_ptr<ThumbnailCache> cache;
};

TEST_F(ThumbnailCacheTest, ReadsOnWorkersAndCallsBackOnTheMainQueue)
{
    const auto ticket = load("a");
    EXPECT_TRUE(read.empty());
    runWorkers();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_TRUE(shown.empty());
    runMain();
    EXPECT_THAT(shown, ElementsAre("a"));
    EXPECT_EQ(lastImage, picture());
    EXPECT_EQ(lastInfo, (ClipInfo{.duration = 30, .width = 1920, .height = 1080, .fps = 60}));
}

TEST_F(ThumbnailCacheTest, CachedPictureIsReturnedAtOnceAndNotReadAgain)
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

TEST_F(ThumbnailCacheTest, NothingIsCachedBeforeTheFirstRead)
{
    EXPECT_FALSE(hasImage("a"));
    EXPECT_FALSE(cache->cachedInfo(QStringLiteral("a")));
    const auto ticket = load("a");
    runWorkers();
    EXPECT_TRUE(hasImage("a"));
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("a"))->fps, 60);
}

TEST_F(ThumbnailCacheTest, FileWithoutPictureCachesItsDataAndIsReadAgain)
{
    result = {};
    const auto first = load("broken");
    settle();
    EXPECT_TRUE(lastImage.isNull());
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("broken")), ClipInfo{});
    result = {.info = {.duration = 5}, .thumbnail = picture()};
    const auto second = load("broken");
    settle();
    EXPECT_THAT(read, ElementsAre("broken", "broken"));
    EXPECT_EQ(lastImage, picture());
    EXPECT_EQ(cache->cachedInfo(QStringLiteral("broken"))->duration, 5);
}

TEST_F(ThumbnailCacheTest, NewestRequestIsReadFirst)
{
    const std::array tickets{load("a"), load("b"), load("c")};
    settle();
    EXPECT_THAT(read, ElementsAre("c", "b", "a"));
    EXPECT_THAT(shown, ElementsAre("c", "b", "a"));
}

TEST_F(ThumbnailCacheTest, RepeatedRequestMovesToTheFront)
{
    const std::array tickets{load("a"), load("b"), load("a")};
    settle();
    EXPECT_THAT(read, ElementsAre("a", "b"));
    EXPECT_THAT(shown, ElementsAre("a", "a", "b"));
}

TEST_F(ThumbnailCacheTest, RequestDuringAReadIsReadNext)
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

TEST_F(ThumbnailCacheTest, DroppedRequestIsNotRead)
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

TEST_F(ThumbnailCacheTest, SharedReadSurvivesADroppedTicket)
{
    auto first = load("a");
    const auto second = load("a");
    first = {};
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_THAT(shown, ElementsAre("a"));
}

TEST_F(ThumbnailCacheTest, ResultOfARequestDroppedDuringTheReadIsCachedOnly)
{
    auto ticket = load("a");
    onRead = [&](const QString&) { ticket = {}; };
    settle();
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(hasImage("a"));
    EXPECT_TRUE(cache->cachedInfo(QStringLiteral("a")));
}

TEST_F(ThumbnailCacheTest, RequestForAFileBeingReadSharesTheRead)
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

TEST_F(ThumbnailCacheTest, RequestDroppedBeforeDeliveryIsNotCalledBack)
{
    auto ticket = load("a");
    runWorkers();
    ticket = {};
    runMain();
    EXPECT_TRUE(shown.empty());
}

TEST_F(ThumbnailCacheTest, CallbackMayDropItsTicketAndRequestAnother)
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

TEST_F(ThumbnailCacheTest, CallbackMayOwnItsTicket)
{
    const auto ticket = std::make_shared<Ticket>();
    const std::weak_ptr<Ticket> seen = ticket;
    *ticket = cache->load(QStringLiteral("a"), [ticket](const QImage&, const ClipInfo&) {});
    settle();
    EXPECT_EQ(seen.use_count(), 1);
}

TEST_F(ThumbnailCacheTest, PicturesWithTicketsAreNotEvicted)
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

TEST_F(ThumbnailCacheTest, EvictedPictureIsReadAgain)
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

TEST_F(ThumbnailCacheTest, TicketOfACachedPicturePreventsEviction)
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

TEST_F(ThumbnailCacheTest, MovedTicketKeepsItsRequest)
{
    auto ticket = load("a");
    Ticket moved(std::move(ticket));
    ticket = std::move(moved);
    settle();
    EXPECT_THAT(shown, ElementsAre("a"));
}

TEST_F(ThumbnailCacheTest, DestroyedCacheReadsAndCallsBackNothing)
{
    const auto a = load("a");
    runWorkers();
    const auto b = load("b");
    cache.reset();
    settle();
    EXPECT_THAT(read, ElementsAre("a"));
    EXPECT_TRUE(shown.empty());
}

TEST_F(ThumbnailCacheTest, DestructionRequestsTheReaderToStop)
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

TEST_F(ThumbnailCacheTest, CallbackMayDestroyTheCache)
{
    const auto first = cache->load(QStringLiteral("a"), [&](const QImage&, const ClipInfo&) { cache.reset(); });
    const auto second = load("a");
    settle();
    EXPECT_TRUE(shown.empty());
}

} // namespace
} // namespace quelto
