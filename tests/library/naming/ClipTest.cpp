// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/Clip.h"

#include "base/files/FileName.h"
#include "base/language/L10n.h"

#include "tests/base/language/TimeZone.h"

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

TEST(Clip, NameWithoutSeparatorHasTheGameOther)
{
    const auto found = clip("holiday.video.mp4");
    EXPECT_EQ(found.game, QStringLiteral("Diğer"));
    EXPECT_EQ(found.title, QStringLiteral("holiday.video"));
    EXPECT_EQ(found.displayTitle(), QStringLiteral("holiday.video"));
}

TEST(Clip, DisplayTitleIsTheUsersTitle)
{
    const auto found = clip("Game - My Title.mp4");
    EXPECT_FALSE(found.hasDefaultTitle());
    EXPECT_EQ(found.displayTitle(), QStringLiteral("My Title"));
}

TEST(Clip, DisplayTitleOfADefaultTitleNamesTheGame)
{
    EXPECT_TRUE(clip("Dota 2 - 2026-03-01 20.15.07.mp4").hasDefaultTitle());
    EXPECT_EQ(clip("Dota 2 - 2026-03-01 20.15.07.mp4").displayTitle(), QStringLiteral("Dota 2 klibi"));
    EXPECT_EQ(clip("Dota 2 - 2026-03-01 20.15.07 (2).mp4").displayTitle(), QStringLiteral("Dota 2 klibi (2)"));
}

TEST(Clip, VisibleTitleOfABlankTitleIsTheFileName)
{
    EXPECT_EQ(clip("a - .mp4").displayTitle(), QString());
    EXPECT_EQ(clip("a - .mp4").visibleTitle(), QStringLiteral("a - .mp4"));
    EXPECT_EQ(Clip(decodeFileName("/c/a\xff - .mp4")).visibleTitle(), QStringLiteral("a\uFFFD - .mp4"));
    EXPECT_EQ(clip("a -   .mp4").visibleTitle(), QStringLiteral("a -   .mp4"));
    EXPECT_EQ(clip("a - b.mp4").visibleTitle(), QStringLiteral("b"));
}

TEST(Clip, ParsesTierScoreAndLabel)
{
    const auto found = clip("League of Legends - 2026-03-01 20.15.07 (2) [EFSANE 95] Penta Kill.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 95);
    EXPECT_EQ(found.autoLabel, QStringLiteral("Penta Kill"));
    EXPECT_EQ(found.displayTitle(), QStringLiteral("Penta Kill"));
}

TEST(Clip, DerivedFileKeepsItsTier)
{
    EXPECT_EQ(clip("League of Legends - 2026-03-01 20.15.07 [EFSANE 95] Penta Kill (Discord).mp4").autoLabel,
              QStringLiteral("Penta Kill (Discord)"));
}

TEST(Clip, ParsesATierWithoutADate)
{
    const auto found = clip("[EFSANE 95] x.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 95);
    EXPECT_EQ(found.autoLabel, QStringLiteral("x"));
}

TEST(Clip, TierTagIsCaseSensitive)
{
    const auto found = clip("Game - [efsane 95] x.mp4");
    EXPECT_EQ(found.autoTier, std::nullopt);
    EXPECT_EQ(found.autoScore, 0);
    EXPECT_EQ(found.autoLabel, std::nullopt);
}

TEST(Clip, ScoreOutOfRangeIsZero)
{
    const auto found = clip("[EFSANE 99999999999999999999] x.mp4");
    EXPECT_EQ(found.autoTier, ClipTier::epic);
    EXPECT_EQ(found.autoScore, 0);
    EXPECT_EQ(found.autoLabel, QStringLiteral("x"));
}

TEST(Clip, IsTallIfTheTitleHasAnExportMark)
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

TEST(Clip, CopyKeepsItsModificationTime)
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

TEST(Clip, MomentMarkMustReachTheEndOfTheTitle)
{
    for (const char* name : {"Game - [EFSANE 95].mp4", "Game - [EFSANE 95] .mp4", "Game - [EFSANE 95]x.mp4",
                             "Game - [EFSANE] x.mp4", "Game - [EFSANE -5] x.mp4", "Game - [EFSANE  5] x.mp4",
                             "Game - [EPIC 5] x.mp4", "Game - EFSANE 5] x.mp4", "[EFSANE 95] a - b [ORTA] c.mp4",
                             "Game - [", "Game - [EFSANE 5", "Game - [EFSANE 5]", "Game - [EFSANE 5] a\nb.mp4"}) {
        EXPECT_EQ(clip(name).autoTier, std::nullopt) << name;
        EXPECT_EQ(clip(name).autoLabel, std::nullopt) << name;
    }
    const auto second = clip("Game - [x] [[BASIT 007] [ORTA 5] y.mp4");
    EXPECT_EQ(second.autoTier, ClipTier::basic);
    EXPECT_EQ(second.autoScore, 7);
    EXPECT_EQ(second.autoLabel, QStringLiteral("[ORTA 5] y"));
}

TEST(Clip, DefaultTitleNeedsTheCompleteDate)
{
    EXPECT_TRUE(clip("G - 0000-99-99 99.99.99x.mp4").hasDefaultTitle());
    EXPECT_FALSE(clip("G - 2026-03-01 20.15.0.mp4").hasDefaultTitle());
    EXPECT_FALSE(clip("G - 2026-03-01 20:15:07.mp4").hasDefaultTitle());
    EXPECT_FALSE(clip("G - x 2026-03-01 20.15.07.mp4").hasDefaultTitle());
}

TEST(Clip, SizeTextRoundsByMagnitudeAndLanguage)
{
    const auto text = [](qint64 bytes) {
        return Clip(QStringLiteral("/x.mp4"), FileStat{.createdAt = 0, .size = bytes, .isFile = true})
            .sizeText()
            .replace(QChar(0xA0), u' ')
            .replace(QChar(0x202F), u' ');
    };
    struct Case {
        const char* language;
        const char* zero;
        const char* one;
        const char* megabytes;
    };
    for (const Case& each : {Case{"tr", "0 bayt", "1 bayt", "12,4 MB"}, Case{"en", "0 bytes", "1 byte", "12.4 MB"},
                             Case{"de", "0 Byte", "1 Byte", "12,4 MB"}, Case{"es", "0 bytes", "1 byte", "12,4 MB"},
                             Case{"fr", "0 octet", "1 octet", "12,4 Mo"}, Case{"pt", "0 byte", "1 byte", "12,4 MB"},
                             Case{"ru", "0 байт", "1 байт", "12,4 МБ"}}) {
        L10n::use(QString::fromUtf8(each.language));
        EXPECT_EQ(text(0).toStdString(), each.zero) << each.language;
        EXPECT_EQ(text(1).toStdString(), each.one) << each.language;
        EXPECT_EQ(text(12'412'345).toStdString(), each.megabytes) << each.language;
    }
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(text(999), QStringLiteral("999 bytes"));
    EXPECT_EQ(text(1000), QStringLiteral("1 kB"));
    EXPECT_EQ(text(512'499), QStringLiteral("512 kB"));
    EXPECT_EQ(text(999'499), QStringLiteral("999 kB"));
    EXPECT_EQ(text(999'500), QStringLiteral("1 MB")) << "never 1000 of a unit";
    EXPECT_EQ(text(48'000'000), QStringLiteral("48 MB"));
    EXPECT_EQ(text(999'960'000), QStringLiteral("1 GB"));
    EXPECT_EQ(text(1'254'000'000), QStringLiteral("1.25 GB"));
    EXPECT_EQ(text(2'000'000'000'000), QStringLiteral("2 TB"));
    EXPECT_EQ(text(5'000'000'000'000'000), QStringLiteral("5,000 TB"));
    L10n::use(QStringLiteral("tr"));
}

TEST(Clip, TimeTextFollowsTheLanguage)
{
    const QDateTime date(QDate(2026, 3, 1), QTime(9, 5, 7));
    const Clip found(QStringLiteral("/x.mp4"),
                     FileStat{.createdAt = date.toMSecsSinceEpoch() * 1'000'000, .size = 1, .isFile = true});
    EXPECT_EQ(found.date, date);
    L10n::use(QStringLiteral("de"));
    EXPECT_EQ(found.timeText(), L10n::date(date, QStringLiteral("H:mm")));
    EXPECT_TRUE(found.timeText().contains(QStringLiteral("09:05"))) << found.timeText().toStdString();
    L10n::use(QStringLiteral("tr"));
}

TEST(Clip, DateIsAnInstantThatIsShownInTheCurrentTimeZone)
{
    L10n::use(QStringLiteral("de"));
    constexpr qint64 Noon = 1'772'366'400'000; // 2026-03-01 12:00 UTC
    const test::TimeZone start("UTC0");
    const Clip found(QStringLiteral("/x.mp4"), FileStat{.createdAt = Noon * 1'000'000, .size = 1, .isFile = true});
    EXPECT_EQ(found.timeText(), QStringLiteral("12:00"));
    const test::TimeZone east("UTC-3");
    EXPECT_EQ(found.date.toMSecsSinceEpoch(), Noon);
    EXPECT_EQ(found.timeText(), QStringLiteral("15:00"));
    L10n::use(QStringLiteral("tr"));
}

TEST(Clip, DefaultTitleWithoutAGameFollowsTheLanguage)
{
    const auto found = clip("2026-03-01 20.15.07.mp4");
    EXPECT_EQ(found.displayTitle(), QStringLiteral("Diğer klibi"));
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(found.displayTitle(), QStringLiteral("Other clip"));
    L10n::use(QStringLiteral("tr"));
}

TEST(Clip, MissingFileHasTheCurrentTimeAndNoSize)
{
    const auto found = clip("Dota 2 - x.mp4");
    EXPECT_LE(std::abs(found.date.secsTo(QDateTime::currentDateTime())), 5);
    EXPECT_EQ(found.size, 0);
}

} // namespace
} // namespace quelto
