// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/thumbnails/ThumbnailLru.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class ThumbnailLruTest : public testing::Test {
protected:
    /// A picture of 400 bytes.
    void put(const char* name) { shelf.put(QString::fromUtf8(name), QImage(10, 10, QImage::Format_RGB32)); }
    bool has(const char* name) { return !shelf.find(QString::fromUtf8(name)).isNull(); }

    ThumbnailLru shelf{1200};
};

TEST_F(ThumbnailLruTest, OldestGoesWhenThereIsNoMoreRoom)
{
    for (const auto* name : {"a", "b", "c", "d"}) {
        put(name);
    }
    EXPECT_FALSE(has("a"));
    EXPECT_TRUE(has("b") && has("c") && has("d"));
    EXPECT_EQ(shelf.bytes(), 1200);
}

TEST_F(ThumbnailLruTest, WhatWasAskedForStaysLonger)
{
    put("a");
    put("b");
    put("c");
    EXPECT_TRUE(has("a"));
    put("d");
    EXPECT_TRUE(has("a"));
    EXPECT_FALSE(has("b"));
}

TEST_F(ThumbnailLruTest, SamePathTakesItsRoomOnce)
{
    put("a");
    put("a");
    EXPECT_EQ(shelf.bytes(), 400);
}

TEST_F(ThumbnailLruTest, PinnedPicturesStayWhateverRoomTheyTake)
{
    for (const auto* name : {"a", "b", "c", "d", "e"}) {
        shelf.pin(QString::fromUtf8(name));
        put(name);
    }
    EXPECT_EQ(shelf.bytes(), 2000);
    EXPECT_TRUE(has("a"));
}

TEST_F(ThumbnailLruTest, UnpinnedPicturesGoAtOnceIfThereIsNoRoom)
{
    for (const auto* name : {"a", "b", "c", "d"}) {
        shelf.pin(QString::fromUtf8(name));
        put(name);
    }
    shelf.unpin(QStringLiteral("c"));
    EXPECT_FALSE(has("c"));
    EXPECT_TRUE(has("a") && has("b") && has("d"));
}

TEST_F(ThumbnailLruTest, PinsCount)
{
    shelf.pin(QStringLiteral("a"));
    shelf.pin(QStringLiteral("a"));
    shelf.unpin(QStringLiteral("a"));
    for (const auto* name : {"a", "b", "c", "d"}) {
        put(name);
    }
    EXPECT_TRUE(has("a"));
    shelf.unpin(QStringLiteral("a"));
    shelf.unpin(QStringLiteral("a"));
    put("e");
    put("f");
    put("g");
    EXPECT_FALSE(has("a"));
}

TEST_F(ThumbnailLruTest, PictureLargerThanTheShelfDoesNotStay)
{
    shelf.put(QStringLiteral("a"), QImage(100, 100, QImage::Format_RGB32));
    EXPECT_FALSE(has("a"));
    EXPECT_EQ(shelf.bytes(), 0);
}

} // namespace
} // namespace quelto
