// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailCache.h"

#include "base/tasks/MainQueue.h"
#include "tests/media/reader/GeneratedClips.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

namespace quelto {
namespace {

/// A cache with its own threads, real files and a real event loop.
class ThumbnailFilesTest : public testing::Test {
protected:
    int argumentCount = 0;
    QCoreApplication application{argumentCount, nullptr};
    test::GeneratedClips clips;
    MainQueue main;
};

TEST_F(ThumbnailFilesTest, LoadsAndCachesManyClips)
{
    const auto bytes = test::GeneratedClips::read(
        clips.make(QStringLiteral("a.mp4"),
                   QStringLiteral("-f lavfi -i testsrc=s=1280x720:r=30:d=3 -c:v libx264 -preset ultrafast -g 30")));
    QStringList paths;
    for (int i = 0; i < 24; ++i) {
        paths.append(clips.write(QStringLiteral("%1.mp4").arg(i), bytes));
    }
    paths.append(clips.write(QStringLiteral("broken.mp4"), QByteArray(1000, 'x')));

    ThumbnailCache cache(main);
    QEventLoop loop;
    std::vector<ThumbnailCache::Ticket> tickets;
    qsizetype loaded = 0;
    const auto thread = std::this_thread::get_id();
    for (const auto& path : paths) {
        tickets.push_back(cache.load(path, [&](const QImage&, const ClipInfo&) {
            EXPECT_EQ(std::this_thread::get_id(), thread);
            if (++loaded == paths.size()) {
                loop.quit();
            }
        }));
    }
    loop.exec();
    const auto broken = paths.takeLast();
    for (const auto& path : paths) {
        EXPECT_EQ(cache.cachedImage(path).size(), QSize(640, 360));
        EXPECT_EQ(cache.cachedInfo(path)->durationText(), QStringLiteral("0:03"));
    }
    EXPECT_TRUE(cache.cachedImage(broken).isNull());
    EXPECT_EQ(cache.cachedInfo(broken), ClipInfo{});
}

TEST_F(ThumbnailFilesTest, DestructionWhileReadingIsSafe)
{
    const auto clip =
        clips.make(QStringLiteral("a.mp4"),
                   QStringLiteral("-f lavfi -i testsrc=s=1920x1080:r=60:d=3 -c:v libx264 -preset ultrafast -g 900"));
    for (int round = 0; round < 5; ++round) {
        ThumbnailCache cache(main);
        std::vector<ThumbnailCache::Ticket> tickets;
        for (int i = 0; i < 50; ++i) {
            // Each spelling of the path is a separate cache key.
            const auto path = clips.path(QStringLiteral("./").repeated(i) + QStringLiteral("a.mp4"));
            tickets.push_back(cache.load(path, [](const QImage&, const ClipInfo&) { ADD_FAILURE(); }));
        }
        std::this_thread::yield();
    }
    QCoreApplication::processEvents();
}

TEST_F(ThumbnailFilesTest, CacheMayBeQueriedFromAnyThread)
{
    const auto clip =
        clips.make(QStringLiteral("a.mp4"), QStringLiteral("-f lavfi -i color=s=64x64:r=30:d=1 -c:v libx264"));
    ThumbnailCache cache(main);
    std::atomic<bool> isCached = false;
    std::thread other([&] {
        while (!cache.cachedInfo(clip) || cache.cachedImage(clip).isNull()) {
            std::this_thread::yield();
        }
        isCached = true;
    });
    QEventLoop loop;
    const auto ticket = cache.load(clip, [&](const QImage&, const ClipInfo&) { loop.quit(); });
    loop.exec();
    other.join();
    EXPECT_TRUE(isCached);
}

} // namespace
} // namespace quelto
