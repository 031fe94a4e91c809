// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

QList<ClipMeta::Event> eventsAt(std::initializer_list<double> times)
{
    QList<ClipMeta::Event> events;
    for (const auto time : times) {
        events.append({time, QStringLiteral("ace")});
    }
    return events;
}

QList<double> timesOf(const ClipMeta& meta)
{
    QList<double> times;
    for (const auto& event : meta.events) {
        times.append(event.t);
    }
    return times;
}

TEST(TrimmedMetaTest, KeepsTheEventsOfThePartWithTheirTimesInIt)
{
    const ClipMeta meta{.events = eventsAt({1, 4.5, 6, 9})};
    EXPECT_EQ(timesOf(meta.trimmed(4, 8)), (QList<double>{0.5, 2}));
}

TEST(TrimmedMetaTest, KeepsEventsExactlyAtTheStartAndEnd)
{
    const ClipMeta meta{.events = eventsAt({2, 5})};
    EXPECT_EQ(timesOf(meta.trimmed(2, 5)), (QList<double>{0, 3}));
}

/// Sums and differences of such times are not exact.
TEST(TrimmedMetaTest, KeepsEventsAtBoundsThatBinaryNumbersOnlyApproximate)
{
    for (int i = 1; i < 600; ++i) {
        const auto start = i / 60.0;
        const auto end = start + i / 30.0;
        const ClipMeta meta{.events = eventsAt({start, end})};
        EXPECT_EQ(timesOf(meta.trimmed(start, end)), (QList<double>{0, end - start})) << i;
    }
}

TEST(TrimmedMetaTest, DropsEventsJustOutside)
{
    const ClipMeta meta{.events = eventsAt({1.999, 5.001})};
    EXPECT_EQ(timesOf(meta.trimmed(2, 5)), QList<double>());
}

TEST(TrimmedMetaTest, KeepsAllOtherFieldsAndTheNamesAndOrderOfTheEvents)
{
    const ClipMeta meta{
        .game = QStringLiteral("Dota 2"),
        .label = QStringLiteral("Rampage"),
        .tier = QStringLiteral("EFSANE"),
        .score = 95,
        .events = {ClipMeta::Event{3, QStringLiteral("ace")}, ClipMeta::Event{2, QStringLiteral("kill")}}};
    auto expected = meta;
    expected.events = {ClipMeta::Event{2, QStringLiteral("ace")}, ClipMeta::Event{1, QStringLiteral("kill")}};
    EXPECT_EQ(meta.trimmed(1, 4), expected);
}

} // namespace
} // namespace quelto
