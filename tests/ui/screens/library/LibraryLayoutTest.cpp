// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/LibraryLayout.h"

#include <gtest/gtest.h>

#include <random>

namespace quelto {
namespace {

using Step = LibraryLayout::Step;

constexpr qreal TextHeight = 60;

QList<DayCards> days(std::initializer_list<std::pair<int, int>> tallAndWide)
{
    QList<DayCards> all;
    for (const auto& [tall, wide] : tallAndWide) {
        all.append({.tall = tall, .wide = wide});
    }
    return all;
}

struct WidthCase {
    const char* name;
    qreal width;
    int tallColumns;
    qreal tallWidth;
    int wideColumns;
    qreal wideWidth;
};

class Columns : public testing::TestWithParam<WidthCase> { };

TEST_P(Columns, FillTheWidthWithinTheirLimits)
{
    const auto& expected = GetParam();
    const LibraryLayout layout(days({{20, 20}}), expected.width, TextHeight);
    const auto columnsFrom = [&](qsizetype first) {
        int columns = 1;
        while (layout.card(first + columns).top() == layout.card(first).top()) {
            ++columns;
        }
        return columns;
    };
    EXPECT_EQ(columnsFrom(0), expected.tallColumns);
    EXPECT_EQ(layout.card(0).width(), expected.tallWidth);
    EXPECT_EQ(columnsFrom(20), expected.wideColumns);
    EXPECT_EQ(layout.card(20).width(), expected.wideWidth);
    for (qsizetype i = 0; i < layout.cardCount(); ++i) {
        EXPECT_GE(layout.card(i).left(), 28);
        EXPECT_LE(layout.card(i).right(), std::max(expected.width - 28, 57.0));
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, Columns,
                         testing::Values(WidthCase{"TwoJustFit", 56 + 2 * 250 + 16, 2, 230, 2, 250},
                                         WidthCase{"TwoDoNotFitByOne", 56 + 2 * 250 + 15, 2, 230, 1, 360},
                                         WidthCase{"Smallest", 779, 3, 230, 2, 353},
                                         WidthCase{"Usual", 1000, 5, 176, 3, 304},
                                         WidthCase{"OneColumn", 56 + 250, 1, 230, 1, 250},
                                         WidthCase{"NarrowerThanAColumn", 156, 1, 100, 1, 100},
                                         WidthCase{"Nothing", 10, 1, 1, 1, 1}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(LibraryLayout, StacksATitleAndUpToTwoGridsPerDay)
{
    const LibraryLayout layout(days({{1, 4}, {0, 1}}), 1000, TextHeight);
    EXPECT_EQ(layout.dayTitle(0), QRectF(28, 0, 944, 14));
    // Upright clips come first, 14 pixels below the title.
    EXPECT_EQ(layout.card(0), QRectF(28, 28, 176, 313 + TextHeight));
    EXPECT_DOUBLE_EQ(layout.ratio(0), 9.0 / 16);
    const auto second = layout.card(0).bottom() + 14;
    EXPECT_EQ(layout.card(1), QRectF(28, second, 304, 171 + TextHeight));
    EXPECT_EQ(layout.card(2), QRectF(28 + 304 + 16, second, 304, 171 + TextHeight));
    EXPECT_EQ(layout.card(4), QRectF(28, second + 171 + TextHeight + 16, 304, 171 + TextHeight));
    EXPECT_DOUBLE_EQ(layout.ratio(1), 16.0 / 9);
    EXPECT_GT(layout.dayTitle(1).top(), layout.card(4).bottom());
    EXPECT_EQ(layout.card(5).top(), layout.dayTitle(1).bottom() + 14);
    EXPECT_EQ(layout.height(), layout.card(5).bottom() + 28);
}

TEST(LibraryLayout, OmitsEmptyGrids)
{
    const LibraryLayout tallOnly(days({{3, 0}}), 1000, TextHeight);
    EXPECT_EQ(tallOnly.cardCount(), 3);
    EXPECT_EQ(tallOnly.height(), tallOnly.card(2).bottom() + 28);
    const LibraryLayout wideOnly(days({{0, 3}}), 1000, TextHeight);
    EXPECT_EQ(wideOnly.card(0).top(), 28);
}

TEST(LibraryLayout, HandlesAnEmptyLibrary)
{
    const LibraryLayout layout({}, 1000, TextHeight);
    EXPECT_EQ(layout.cardCount(), 0);
    EXPECT_EQ(layout.cardsBetween(0, 1000), LibraryLayout::Range{});
    EXPECT_EQ(layout.dayTitlesBetween(0, 1000), LibraryLayout::Range{});
    EXPECT_EQ(layout.neighbour(-1, Step::Down, 500), -1);
}

/// The reference for cardsBetween: checks every card.
LibraryLayout::Range visibleCards(const LibraryLayout& layout, qreal top, qreal bottom)
{
    LibraryLayout::Range range;
    for (qsizetype i = 0; i < layout.cardCount(); ++i) {
        const auto card = layout.card(i);
        if (card.bottom() > top && card.top() < bottom) {
            if (range.end == 0) {
                range.first = i;
            }
            range.end = i + 1;
        }
    }
    return range;
}

TEST(LibraryLayout, FindsTheVisibleCardsWithinTheMaximum)
{
    std::minstd_rand random(7);
    for (int round = 0; round < 60; ++round) {
        QList<DayCards> all;
        for (int day = 0; day < 12; ++day) {
            const auto tall = static_cast<qsizetype>(random() % 3 == 0 ? random() % 9 : 0);
            const auto wide = static_cast<qsizetype>(random() % 12);
            all.append({.tall = tall, .wide = tall + wide == 0 ? 1 : wide});
        }
        const LibraryLayout layout(all, 200 + static_cast<qreal>(random() % 1800), TextHeight);
        for (int window = 0; window < 40; ++window) {
            const qreal height = 20 + static_cast<qreal>(random() % 1200);
            const qreal top = static_cast<qreal>(random() % 4000) - 100;
            const auto range = layout.cardsBetween(top, top + height);
            ASSERT_EQ(range, visibleCards(layout, top, top + height)) << top << " " << height;
            ASSERT_LE(range.end - range.first, layout.maxCardsIn(height));
            const auto titles = layout.dayTitlesBetween(top, top + height);
            ASSERT_LE(titles.end - titles.first, layout.maxDayTitlesIn(height));
            for (qsizetype day = 0; day < layout.dayCount(); ++day) {
                const auto title = layout.dayTitle(day);
                ASSERT_EQ(title.bottom() > top && title.top() < top + height, day >= titles.first && day < titles.end);
            }
        }
    }
}

TEST(LibraryLayout, LaysOutWideCardsInOneGridWithoutATitle)
{
    const auto layout = LibraryLayout::ofWideCards(7, 1000, TextHeight);
    EXPECT_EQ(layout.cardCount(), 7);
    EXPECT_EQ(layout.dayCount(), 0);
    EXPECT_EQ(layout.card(0), QRectF(28, 14, 304, 171 + TextHeight));
    EXPECT_EQ(layout.card(2), QRectF(28 + 2 * 320, 14, 304, 171 + TextHeight));
    EXPECT_EQ(layout.card(3), QRectF(28, 14 + 171 + TextHeight + 16, 304, 171 + TextHeight));
    EXPECT_DOUBLE_EQ(layout.ratio(6), 16.0 / 9);
    EXPECT_EQ(layout.height(), layout.card(6).bottom() + 28);
    EXPECT_EQ(layout.neighbour(1, Step::Down, 500), 4);
    EXPECT_EQ(layout.dayTitlesBetween(0, 500), LibraryLayout::Range{});
    EXPECT_EQ(LibraryLayout::ofWideCards(0, 1000, TextHeight).height(), 0);
}

TEST(LibraryLayout, FindsTheVisibleWideCardsWithinATightMaximum)
{
    const auto layout = LibraryLayout::ofWideCards(200, 1000, TextHeight);
    for (const qreal height : {1.0, 300.0, 700.0}) {
        qsizetype most = 0;
        for (qreal top = -100; top < layout.height(); ++top) {
            const auto range = layout.cardsBetween(top, top + height);
            ASSERT_EQ(range, visibleCards(layout, top, top + height)) << top << " " << height;
            most = std::max(most, range.end - range.first);
        }
        EXPECT_GE(layout.maxCardsIn(height), most) << height;
        EXPECT_LE(layout.maxCardsIn(height), most + 3) << "no more than one row too many, at " << height;
        EXPECT_EQ(layout.maxDayTitlesIn(height), 0);
    }
}

class Neighbours : public testing::Test {
protected:
    // At a width of 1000: five columns of upright cards, three of wide ones.
    //   day 0: 0 1 | 2 3 4 / 5
    //   day 1: 6 7 8 9 10 / 11
    const LibraryLayout layout{days({{2, 4}, {6, 0}}), 1000, TextHeight};

    qsizetype after(qsizetype index, Step step, qreal page = 500) const { return layout.neighbour(index, step, page); }
};

TEST_F(Neighbours, LeftAndRightVisitEveryCard)
{
    EXPECT_EQ(after(0, Step::Left), 0);
    EXPECT_EQ(after(1, Step::Right), 2);
    EXPECT_EQ(after(6, Step::Left), 5);
    EXPECT_EQ(after(11, Step::Right), 11);
}

TEST_F(Neighbours, UpAndDownKeepTheColumnAcrossGridsAndDays)
{
    EXPECT_EQ(after(0, Step::Down), 2);
    EXPECT_EQ(after(2, Step::Down), 5);
    EXPECT_EQ(after(4, Step::Down), 5) << "a short row has no such column";
    EXPECT_EQ(after(5, Step::Down), 6);
    EXPECT_EQ(after(6, Step::Down), 11);
    EXPECT_EQ(after(11, Step::Down), 11);
    EXPECT_EQ(after(11, Step::Up), 6);
    EXPECT_EQ(after(10, Step::Up), 5);
    EXPECT_EQ(after(4, Step::Up), 1);
    EXPECT_EQ(after(1, Step::Up), 1);
}

TEST_F(Neighbours, HomeAndEndGoToTheFirstAndLastCard)
{
    EXPECT_EQ(after(5, Step::First), 0);
    EXPECT_EQ(after(5, Step::Last), 11);
}

TEST_F(Neighbours, StartAtTheFirstCard)
{
    EXPECT_EQ(after(-1, Step::Down), 0);
    EXPECT_EQ(after(-1, Step::Left), 0);
    EXPECT_EQ(after(-1, Step::Last), 11);
}

TEST_F(Neighbours, InvalidIndexActsLikeTheLastCard)
{
    EXPECT_EQ(after(40, Step::Left), 10);
}

TEST_F(Neighbours, PageKeysMoveByAPageAndAtLeastOneRow)
{
    const LibraryLayout many(days({{0, 300}}), 1000, TextHeight);
    const auto pitch = many.card(3).top() - many.card(0).top();
    const auto page = 3 * pitch;
    EXPECT_EQ(many.neighbour(1, Step::PageDown, page), 7) << "three rows fit on a page";
    EXPECT_EQ(many.neighbour(7, Step::PageUp, page), 1);
    EXPECT_EQ(many.neighbour(1, Step::PageDown, 10), 4);
    EXPECT_EQ(many.neighbour(298, Step::PageDown, page), 298);
    EXPECT_EQ(many.neighbour(1, Step::PageUp, page), 1);
}

} // namespace
} // namespace quelto
