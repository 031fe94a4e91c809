// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/DayGroups.h"

#include "base/language/L10n.h"

#include "tests/base/language/TimeZone.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

Clip clipOf(const QDateTime& date)
{
    Clip clip(QStringLiteral("/c/Dota 2 - x.mp4"));
    clip.date = date;
    return clip;
}

TEST(DayGroups, GroupsByLocalDayNewestFirst)
{
    const QDate day(2026, 3, 1);
    const QList<Clip> clips{clipOf({day, QTime(0, 0)}), clipOf({day.addDays(1), QTime(0, 0, 1)}),
                            clipOf({day, QTime(23, 59, 59)}), clipOf({day.addDays(-3), QTime(12, 0)}),
                            clipOf({day, QTime(9, 0)})};
    const auto groups = dayGroups(clips, {0, 1, 2, 3, 4});
    EXPECT_EQ(groups,
              (QList<DayGroup>{{.day = day.addDays(1), .clips = {1}},
                               {.day = day, .clips = {2, 4, 0}},
                               {.day = day.addDays(-3), .clips = {3}}}));
}

TEST(DayGroups, GroupsOnlyTheGivenIndexes)
{
    const QDate day(2026, 3, 1);
    const QList<Clip> clips{clipOf({day, QTime(1, 0)}), clipOf({day, QTime(2, 0)}), clipOf({day, QTime(3, 0)})};
    EXPECT_EQ(dayGroups(clips, {0, 2}), (QList<DayGroup>{{.day = day, .clips = {2, 0}}}));
    EXPECT_TRUE(dayGroups(clips, {}).isEmpty());
}

TEST(DayGroups, KeepsTheOrderOfEqualTimes)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(1, 0));
    const QList<Clip> clips{clipOf(time), clipOf(time), clipOf(time)};
    EXPECT_EQ(dayGroups(clips, {0, 1, 2}).first().clips, (QList<qsizetype>{0, 1, 2}));
}

TEST(DayGroups, UsesTheLocalDay)
{
    const auto local = QDateTime(QDate(2026, 3, 1), QTime(0, 30));
    EXPECT_EQ(dayGroups({clipOf(local.toUTC())}, {0}).first().day, QDate(2026, 3, 1));
}

TEST(DayGroups, DaysMayBeShorterOrLonger)
{
    const test::TimeZone berlin("CET-1CEST,M3.5.0,M10.5.0/3");
    for (const QDate day : {QDate(2026, 3, 29), QDate(2026, 10, 25)}) {
        const auto start = day.startOfDay();
        const auto end = day.addDays(1).startOfDay();
        ASSERT_NE(start.secsTo(end), 24 * 3600);
        const QList<Clip> clips{clipOf(end), clipOf(end.addMSecs(-1)), clipOf(start), clipOf(start.addMSecs(-1))};
        EXPECT_EQ(dayGroups(clips, {0, 1, 2, 3}),
                  (QList<DayGroup>{{.day = day.addDays(1), .clips = {0}},
                                   {.day = day, .clips = {1, 2}},
                                   {.day = day.addDays(-1), .clips = {3}}}));
    }
}

TEST(DayTitle, NamesTodayYesterdayAndOtherDays)
{
    L10n::use(QStringLiteral("tr"));
    const QDate today(2026, 3, 1);
    EXPECT_EQ(dayTitle(today, today), QStringLiteral("Bugün"));
    EXPECT_EQ(dayTitle(today.addDays(-1), today), QStringLiteral("Dün"));
    EXPECT_EQ(dayTitle(today.addDays(-2), today), QStringLiteral("27 Şubat 2026 Cuma"));
    EXPECT_EQ(dayTitle(today.addDays(1), today), QStringLiteral("2 Mart 2026 Pazartesi"))
        << "a future day has its date";
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(dayTitle(QDate(2025, 12, 31), today), QStringLiteral("Wednesday, December 31, 2025"));
    L10n::use(QStringLiteral("tr"));
}

} // namespace
} // namespace quelto
