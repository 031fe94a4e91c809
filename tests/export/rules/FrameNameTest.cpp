// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/FrameName.h"

#include "base/files/FileName.h"
#include "library/naming/ClipName.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quelto {
namespace {

std::string nameOf(const char* clip, double seconds, int attempt = 1)
{
    return frameFileName(QString::fromUtf8(clip), seconds, attempt).toStdString();
}

TEST(FrameNameTest, HasTheClipsNameAndTheTime)
{
    EXPECT_EQ(nameOf("Dota 2 - Ace.mp4", 12.345), "Dota 2 - Ace 0m12.345s.png");
    EXPECT_EQ(nameOf("Dota 2 - Ace.v2.MOV", 0), "Dota 2 - Ace.v2 0m00.000s.png");
    EXPECT_EQ(nameOf("a.mp4", 5.0004), "a 0m05.000s.png");
    EXPECT_EQ(nameOf("a.mp4", 59.9996), "a 1m00.000s.png");
    EXPECT_EQ(nameOf("a.mp4", 3661.5), "a 61m01.500s.png");
}

TEST(FrameNameTest, FurtherAttemptsCount)
{
    EXPECT_EQ(nameOf("a.mp4", 12.345, 2), "a 0m12.345s 2.png");
    EXPECT_EQ(nameOf("a.mp4", 12.345, 13), "a 0m12.345s 13.png");
}

TEST(FrameNameTest, TimesThatAreNoneCountAsTheStart)
{
    EXPECT_EQ(nameOf("a.mp4", -1), "a 0m00.000s.png");
    EXPECT_EQ(nameOf("a.mp4", std::nan("")), "a 0m00.000s.png");
}

TEST(FrameNameTest, IsNoClip)
{
    EXPECT_FALSE(isClipFileName(nameOf("Dota 2 - Ace.mp4", 1).c_str()));
}

TEST(FrameNameTest, LongNamesLoseTheEndOfTheStemInWholeCharacters)
{
    for (const auto* letter : {u"x", u"ğ", u"€", u"😀"}) {
        const auto stem = QString::fromUtf16(letter).repeated(250);
        for (const int attempt : {1, 2, 1000}) {
            const auto name = frameFileName(stem + QStringLiteral(".mp4"), 1, attempt);
            const auto bytes = encodeFileName(name).size();
            EXPECT_LE(bytes, MaxFileNameBytes);
            EXPECT_GT(bytes, MaxFileNameBytes - 4);
            EXPECT_EQ(name.toUtf8(), encodeFileName(name)) << "half a character is left";
        }
    }
}

TEST(FrameNameTest, ShortenedStemDoesNotEndWithABlank)
{
    const auto name = frameFileName(QStringLiteral("Dota 2 - Ace.mp4"), 1, 1, 21);
    EXPECT_EQ(name, QStringLiteral("Dota 2 0m01.000s.png"));
    EXPECT_EQ(frameFileName(QStringLiteral("Dota 2 - Ace.mp4"), 1, 1, 5), QStringLiteral("0m01.000s.png"));
}

TEST(FrameNameTest, KeepsBytesThatAreNotText)
{
    const auto name = frameFileName(decodeFileName("B\xfcy\xfck.mp4"), 1);
    EXPECT_EQ(encodeFileName(name), "B\xfcy\xfck 0m01.000s.png");
}

} // namespace
} // namespace quelto
