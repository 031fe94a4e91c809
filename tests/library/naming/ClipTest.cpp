// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/Clip.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

Clip clip(const char* name)
{
    return Clip(QStringLiteral("/clips/") + QString::fromUtf8(name));
}

TEST(Clip, SplitsGameAndTitleAtTheFirstSeparator)
{
    const auto found = clip("A - B - 2026-03-01 20.15.07.mp4");
    EXPECT_EQ(found.game, QStringLiteral("A"));
    EXPECT_EQ(found.title, QStringLiteral("B - 2026-03-01 20.15.07"));
    EXPECT_FALSE(found.hasDefaultTitle());
}

TEST(Clip, BelongsToOtherWithoutASeparator)
{
    const auto found = clip("holiday.video.mp4");
    EXPECT_EQ(found.game, QStringLiteral("Diğer"));
    EXPECT_EQ(found.title, QStringLiteral("holiday.video"));
    EXPECT_EQ(found.displayTitle(), QStringLiteral("holiday.video"));
}

TEST(Clip, ShowsATitleThatTheUserGave)
{
    const auto found = clip("Game - My Title.mp4");
    EXPECT_FALSE(found.hasDefaultTitle());
    EXPECT_EQ(found.displayTitle(), QStringLiteral("My Title"));
}

TEST(Clip, ShowsTheGameForADefaultTitle)
{
    EXPECT_TRUE(clip("Dota 2 - 2026-03-01 20.15.07.mp4").hasDefaultTitle());
    EXPECT_EQ(clip("Dota 2 - 2026-03-01 20.15.07.mp4").displayTitle(), QStringLiteral("Dota 2 klibi"));
    EXPECT_EQ(clip("Dota 2 - 2026-03-01 20.15.07 (2).mp4").displayTitle(), QStringLiteral("Dota 2 klibi (2)"));
}

TEST(Clip, ReadsTierScoreAndLabel)
{
    const auto found = clip("League of Legends - 2026-03-01 20.15.07 (2) [EFSANE 95] Penta Kill.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 95);
    EXPECT_EQ(found.autoLabel, QStringLiteral("Penta Kill"));
    EXPECT_EQ(found.displayTitle(), QStringLiteral("Penta Kill"));
}

TEST(Clip, KeepsItsTierWhenItWasDerived)
{
    EXPECT_EQ(clip("League of Legends - 2026-03-01 20.15.07 [EFSANE 95] Penta Kill (Discord).mp4").autoLabel,
              QStringLiteral("Penta Kill (Discord)"));
}

TEST(Clip, ReadsATierWithoutADateBeforeIt)
{
    const auto found = clip("[EFSANE 95] x.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 95);
    EXPECT_EQ(found.autoLabel, QStringLiteral("x"));
}

TEST(Clip, ReadsNoTierInLowerCase)
{
    const auto found = clip("Game - [efsane 95] x.mp4");
    EXPECT_EQ(found.autoTier, std::nullopt);
    EXPECT_EQ(found.autoScore, 0);
    EXPECT_EQ(found.autoLabel, std::nullopt);
}

TEST(Clip, TakesAScoreThatDoesNotFitForZero)
{
    const auto found = clip("[EFSANE 99999999999999999999] x.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 0);
    EXPECT_EQ(found.autoLabel, QStringLiteral("x"));
}

TEST(Clip, IsTallByTheMarksOfTheExport)
{
    EXPECT_TRUE(clip("Game - x (9x16).mp4").isTall());
    EXPECT_TRUE(clip("Game - x (4x5).mp4").isTall());
    EXPECT_FALSE(clip("Game - x (1x1).mp4").isTall());
}

TEST(Clip, ReadsDateAndSizeOfItsFile)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("Dota 2 - x.mp4"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("12345");
    file.close();
    EXPECT_EQ(Clip(path).size, 5);
    EXPECT_LE(std::abs(Clip(path).date.secsTo(QDateTime::currentDateTime())), 5);
}

TEST(Clip, ACopyKeepsTheDayOfItsModification)
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("Dota 2 - x.mp4"));
    const QDateTime old(QDate(2024, 3, 1), QTime(20, 15, 7));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setFileTime(old, QFileDevice::FileModificationTime));
    file.close();
    EXPECT_EQ(Clip(path).date, old);
}

TEST(Clip, AMissingFileHasThePresentTimeAndNoSize)
{
    const auto found = clip("Dota 2 - x.mp4");
    EXPECT_LE(std::abs(found.date.secsTo(QDateTime::currentDateTime())), 5);
    EXPECT_EQ(found.size, 0);
}

} // namespace
} // namespace quelto
