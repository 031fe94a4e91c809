// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/VisibleCards.h"
#include "ui/screens/library/SlotAssignment.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SlotAssignment, KeepsASlotsPositionWhileVisible)
{
    SlotAssignment slots;
    slots.setSlotCount(4);
    EXPECT_EQ(slots.assign(0, 3), (QList<qsizetype>{0, 1, 2}));
    EXPECT_EQ(slots.assign(1, 5), (QList<qsizetype>{0, 3})) << "4 takes the slot of 0";
    EXPECT_EQ(slots.position(0), 4);
    EXPECT_EQ(slots.position(1), 1);
    EXPECT_TRUE(slots.assign(1, 5).isEmpty());
}

TEST(SlotAssignment, UnassignsSlotsThatAreNotVisible)
{
    SlotAssignment slots;
    slots.setSlotCount(3);
    slots.assign(7, 10);
    EXPECT_EQ(slots.assign(9, 10).size(), 2);
    EXPECT_EQ(slots.position(9 % 3), 9);
    EXPECT_EQ(slots.position(7 % 3), SlotAssignment::Unassigned);
    EXPECT_EQ(slots.assign(0, 0), (QList<qsizetype>{0}));
}

TEST(SlotAssignment, AssignsTheBeginningOfARangeThatIsTooLong)
{
    SlotAssignment slots;
    slots.setSlotCount(2);
    slots.assign(3, 9);
    EXPECT_EQ(slots.position(1), 3);
    EXPECT_EQ(slots.position(0), 4);
}

TEST(VisibleCards, UpdatesOnlyChangedRows)
{
    VisibleCards cards;
    cards.reserve(4);
    int readCount = 0;
    const auto cardAt = [&](qsizetype position) {
        ++readCount;
        return VisibleCards::Card{.clip = Clip(QStringLiteral("/c/Dota 2 - Nr %1.mp4").arg(position)),
                                  .area = QRectF(0, 10.0 * static_cast<qreal>(position), 5, 5)};
    };
    cards.show(0, 4, cardAt);
    EXPECT_EQ(readCount, 4);
    const QSignalSpy changed(&cards, &VisibleCards::dataChanged);
    const QSignalSpy inserted(&cards, &VisibleCards::rowsInserted);
    cards.show(2, 6, cardAt);
    EXPECT_EQ(readCount, 6);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(inserted.size(), 0) << "rows are reused";
    EXPECT_EQ(cards.data(cards.index(0), VisibleCards::TitleRole), QStringLiteral("Nr 4"));
    EXPECT_EQ(cards.data(cards.index(2), VisibleCards::TitleRole), QStringLiteral("Nr 2"));
    EXPECT_EQ(cards.data(cards.index(0), VisibleCards::AreaRole).toRectF().y(), 40);
}

TEST(VisibleCards, UnusedRowHasNoPositionAndNoPath)
{
    VisibleCards cards;
    cards.reserve(2);
    cards.show(0, 1, [](qsizetype) { return VisibleCards::Card{.clip = Clip(QStringLiteral("/c/a.mp4"))}; });
    EXPECT_EQ(cards.data(cards.index(0), VisibleCards::PositionRole), 0);
    EXPECT_EQ(cards.data(cards.index(1), VisibleCards::PositionRole), -1);
    EXPECT_EQ(cards.data(cards.index(1), VisibleCards::PathRole), QString());
}

TEST(VisibleCards, ReadsAllRowsAgainAfterInvalidate)
{
    VisibleCards cards;
    cards.reserve(2);
    int readCount = 0;
    const auto cardAt = [&](qsizetype) {
        ++readCount;
        return VisibleCards::Card{.clip = Clip(QStringLiteral("/c/a.mp4"))};
    };
    cards.show(0, 2, cardAt);
    cards.show(0, 2, cardAt);
    EXPECT_EQ(readCount, 2);
    cards.invalidate();
    cards.show(0, 2, cardAt);
    EXPECT_EQ(readCount, 4);
}

TEST(VisibleCards, VersionCountsChangesOfTheFileOnly)
{
    VisibleCards cards;
    cards.reserve(1);
    Clip clip(QStringLiteral("/c/a.mp4"));
    clip.date = QDateTime(QDate(2026, 3, 1), QTime(12, 0));
    const auto shown = [&] {
        cards.invalidate();
        cards.show(0, 1, [&](qsizetype) { return VisibleCards::Card{.clip = clip}; });
        return cards.data(cards.index(0), VisibleCards::VersionRole).toInt();
    };
    const auto first = shown();
    EXPECT_EQ(shown(), first);
    clip.size = 5;
    EXPECT_EQ(shown(), first + 1);
    clip.date = clip.date.addMSecs(1);
    EXPECT_EQ(shown(), first + 2);
    clip.path = QStringLiteral("/c/b.mp4");
    clip.size = 6;
    EXPECT_EQ(shown(), first + 2) << "another file in the row does not change the version";
}

TEST(VisibleCards, HasATierOnlyForAutomaticClips)
{
    VisibleCards cards;
    cards.reserve(2);
    cards.show(0, 2, [](qsizetype position) {
        return VisibleCards::Card{
            .clip = Clip(position == 0 ? QStringLiteral("/c/Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] Ace.mp4")
                                       : QStringLiteral("/c/Dota 2 - Ace.mp4"))};
    });
    EXPECT_EQ(cards.data(cards.index(0), VisibleCards::TierRole), QStringLiteral("EFSANE"));
    EXPECT_EQ(cards.data(cards.index(0), VisibleCards::ScoreRole), 95);
    EXPECT_EQ(cards.data(cards.index(1), VisibleCards::TierRole), QString());
    EXPECT_FALSE(cards.data(cards.index(1), VisibleCards::ScoreRole).isValid());
}

} // namespace
} // namespace quelto
