// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailLru.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class ThumbnailLruTest : public testing::Test {
protected:
    /// A picture of 400 bytes.
    void put(const char* name) { cache.put(QString::fromUtf8(name), QImage(10, 10, QImage::Format_RGB32)); }
    bool has(const char* name) { return !cache.find(QString::fromUtf8(name)).isNull(); }

    ThumbnailLru cache{1200};
};

TEST_F(ThumbnailLruTest, EvictsTheOldestOverTheLimit)
{
    for (const auto* name : {"a", "b", "c", "d"}) {
        put(name);
    }
    EXPECT_FALSE(has("a"));
    EXPECT_TRUE(has("b") && has("c") && has("d"));
    EXPECT_EQ(cache.bytes(), 1200);
}

TEST_F(ThumbnailLruTest, FindMakesAPictureTheMostRecent)
{
    put("a");
    put("b");
    put("c");
    EXPECT_TRUE(has("a"));
    put("d");
    EXPECT_TRUE(has("a"));
    EXPECT_FALSE(has("b"));
}

TEST_F(ThumbnailLruTest, ReplacedPictureIsCountedOnce)
{
    put("a");
    put("a");
    EXPECT_EQ(cache.bytes(), 400);
}

TEST_F(ThumbnailLruTest, PinnedPicturesMayExceedTheLimit)
{
    for (const auto* name : {"a", "b", "c", "d", "e"}) {
        cache.pin(QString::fromUtf8(name));
        put(name);
    }
    EXPECT_EQ(cache.bytes(), 2000);
    EXPECT_TRUE(has("a"));
}

TEST_F(ThumbnailLruTest, UnpinEvictsAtOnceOverTheLimit)
{
    for (const auto* name : {"a", "b", "c", "d"}) {
        cache.pin(QString::fromUtf8(name));
        put(name);
    }
    cache.unpin(QStringLiteral("c"));
    EXPECT_FALSE(has("c"));
    EXPECT_TRUE(has("a") && has("b") && has("d"));
}

TEST_F(ThumbnailLruTest, PinsAreCounted)
{
    cache.pin(QStringLiteral("a"));
    cache.pin(QStringLiteral("a"));
    cache.unpin(QStringLiteral("a"));
    for (const auto* name : {"a", "b", "c", "d"}) {
        put(name);
    }
    EXPECT_TRUE(has("a"));
    cache.unpin(QStringLiteral("a"));
    cache.unpin(QStringLiteral("a"));
    put("e");
    put("f");
    put("g");
    EXPECT_FALSE(has("a"));
}

TEST_F(ThumbnailLruTest, PictureLargerThanTheLimitIsNotCached)
{
    cache.put(QStringLiteral("a"), QImage(100, 100, QImage::Format_RGB32));
    EXPECT_FALSE(has("a"));
    EXPECT_EQ(cache.bytes(), 0);
}

} // namespace
} // namespace quelto
