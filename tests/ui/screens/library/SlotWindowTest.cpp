// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/SlotWindow.h"
#include "ui/screens/library/CardSlots.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SlotWindow, KeepsASlotsPlaceWhileItIsInView)
{
    SlotWindow window;
    window.setSlotCount(4);
    EXPECT_EQ(window.show(0, 3), (QList<qsizetype>{0, 1, 2}));
    EXPECT_EQ(window.show(1, 5), (QList<qsizetype>{0, 3})) << "4 takes the slot that 0 leaves";
    EXPECT_EQ(window.place(0), 4);
    EXPECT_EQ(window.place(1), 1);
    EXPECT_TRUE(window.show(1, 5).isEmpty());
}

TEST(SlotWindow, EmptiesWhatIsNotInView)
{
    SlotWindow window;
    window.setSlotCount(3);
    window.show(7, 10);
    EXPECT_EQ(window.show(9, 10).size(), 2);
    EXPECT_EQ(window.place(9 % 3), 9);
    EXPECT_EQ(window.place(7 % 3), SlotWindow::Nothing);
    EXPECT_EQ(window.show(0, 0), (QList<qsizetype>{0}));
}

TEST(SlotWindow, ShowsTheBeginningOfARangeThatIsTooLong)
{
    SlotWindow window;
    window.setSlotCount(2);
    window.show(3, 9);
    EXPECT_EQ(window.place(1), 3);
    EXPECT_EQ(window.place(0), 4);
}

TEST(CardSlots, TellsOnlyOfTheRowsThatChanged)
{
    CardSlots slots;
    slots.reserve(4);
    int asked = 0;
    const auto cardAt = [&](qsizetype position) {
        ++asked;
        return CardSlots::Card{.clip = Clip(QStringLiteral("/c/Dota 2 - Nr %1.mp4").arg(position)),
                               .area = QRectF(0, 10.0 * static_cast<qreal>(position), 5, 5)};
    };
    slots.show(0, 4, cardAt);
    EXPECT_EQ(asked, 4);
    const QSignalSpy changed(&slots, &CardSlots::dataChanged);
    const QSignalSpy made(&slots, &CardSlots::rowsInserted);
    slots.show(2, 6, cardAt);
    EXPECT_EQ(asked, 6);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(made.size(), 0) << "rows are used again";
    EXPECT_EQ(slots.data(slots.index(0), CardSlots::TitleRole), QStringLiteral("Nr 4"));
    EXPECT_EQ(slots.data(slots.index(2), CardSlots::TitleRole), QStringLiteral("Nr 2"));
    EXPECT_EQ(slots.data(slots.index(0), CardSlots::AreaRole).toRectF().y(), 40);
}

TEST(CardSlots, AnEmptyRowHasNoPlaceAndNoPath)
{
    CardSlots slots;
    slots.reserve(2);
    slots.show(0, 1, [](qsizetype) { return CardSlots::Card{.clip = Clip(QStringLiteral("/c/a.mp4"))}; });
    EXPECT_EQ(slots.data(slots.index(0), CardSlots::PositionRole), 0);
    EXPECT_EQ(slots.data(slots.index(1), CardSlots::PositionRole), -1);
    EXPECT_EQ(slots.data(slots.index(1), CardSlots::PathRole), QString());
}

TEST(CardSlots, AsksForAllAgainAfterForgetting)
{
    CardSlots slots;
    slots.reserve(2);
    int asked = 0;
    const auto cardAt = [&](qsizetype) {
        ++asked;
        return CardSlots::Card{.clip = Clip(QStringLiteral("/c/a.mp4"))};
    };
    slots.show(0, 2, cardAt);
    slots.show(0, 2, cardAt);
    EXPECT_EQ(asked, 2);
    slots.forget();
    slots.show(0, 2, cardAt);
    EXPECT_EQ(asked, 4);
}

TEST(CardSlots, CountsTheChangesOfAFileAndNotOfItsRow)
{
    CardSlots slots;
    slots.reserve(1);
    Clip clip(QStringLiteral("/c/a.mp4"));
    clip.date = QDateTime(QDate(2026, 3, 1), QTime(12, 0));
    const auto shown = [&] {
        slots.forget();
        slots.show(0, 1, [&](qsizetype) { return CardSlots::Card{.clip = clip}; });
        return slots.data(slots.index(0), CardSlots::VersionRole).toInt();
    };
    const auto first = shown();
    EXPECT_EQ(shown(), first);
    clip.size = 5;
    EXPECT_EQ(shown(), first + 1);
    clip.date = clip.date.addMSecs(1);
    EXPECT_EQ(shown(), first + 2);
    clip.path = QStringLiteral("/c/b.mp4");
    clip.size = 6;
    EXPECT_EQ(shown(), first + 2) << "another file begins where the last one was";
}

TEST(CardSlots, TellsTheTierOnlyOfClipsThatHaveOne)
{
    CardSlots slots;
    slots.reserve(2);
    slots.show(0, 2, [](qsizetype position) {
        return CardSlots::Card{.clip = Clip(position == 0
                                                ? QStringLiteral("/c/Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] Ace.mp4")
                                                : QStringLiteral("/c/Dota 2 - Ace.mp4"))};
    });
    EXPECT_EQ(slots.data(slots.index(0), CardSlots::TierRole), QStringLiteral("EFSANE"));
    EXPECT_EQ(slots.data(slots.index(0), CardSlots::ScoreRole), 95);
    EXPECT_EQ(slots.data(slots.index(1), CardSlots::TierRole), QString());
    EXPECT_FALSE(slots.data(slots.index(1), CardSlots::ScoreRole).isValid());
}

} // namespace
} // namespace quelto
