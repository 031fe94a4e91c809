// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRectF>

namespace quelto {

/// How the clips of a day are split.
struct DayCards {
    qsizetype tall = 0;
    qsizetype wide = 0;

    bool operator==(const DayCards&) const = default;
};

/// Where every card of the library stands, without one of them being made: under each day's title a grid of upright
/// clips and one of the others. Cards are counted through, day after day, the upright ones first.
///
/// Units: logical pixels from the top left of the scrolling content; whole ones, so that edges are sharp.
class LibraryLayout {
public:
    enum class Step { Left, Right, Up, Down, PageUp, PageDown, First, Last };

    struct Range {
        qsizetype first = 0;
        /// One behind the last.
        qsizetype end = 0;

        bool operator==(const Range&) const = default;
    };

    LibraryLayout() = default;
    /// cardTextHeight: of what stands below a card's picture.
    LibraryLayout(const QList<DayCards>& days, qreal width, qreal cardTextHeight);

    qsizetype cardCount() const { return m_cardCount; }
    qsizetype dayCount() const { return m_days.size(); }
    qreal height() const { return m_height; }

    QRectF card(qsizetype index) const;
    /// Width over height of the card's picture.
    qreal ratio(qsizetype index) const;
    QRectF dayTitle(qsizetype day) const;

    /// The cards and the days' titles that a window from top to bottom touches.
    Range cardsBetween(qreal top, qreal bottom) const;
    Range dayTitlesBetween(qreal top, qreal bottom) const;
    /// The most of them that a window of that height can touch, wherever it stands.
    qsizetype mostCardsIn(qreal windowHeight) const;
    qsizetype mostDayTitlesIn(qreal windowHeight) const;

    /// The card that a key leads to; the same one where there is none. Up and down keep to the column by where it is,
    /// across grids and days.
    qsizetype neighbour(qsizetype index, Step step, qreal pageHeight) const;

private:
    struct Grid {
        qsizetype first = 0;
        qsizetype count = 0;
        qsizetype columns = 1;
        qreal top = 0;
        qreal cardWidth = 0;
        qreal cardHeight = 0;
        qreal ratio = 1;

        qsizetype rows() const { return (count + columns - 1) / columns; }
        qreal bottom() const;
    };

    struct Row {
        qsizetype grid = 0;
        qsizetype row = 0;
    };

    Grid gridOf(bool tall, qsizetype count, qreal top) const;
    qsizetype gridWith(qsizetype card) const;
    qsizetype nearest(Row row, qreal x) const;

    QList<Grid> m_grids;
    QList<qreal> m_days;
    qreal m_width = 0;
    qreal m_cardTextHeight = 0;
    qreal m_height = 0;
    qsizetype m_cardCount = 0;
};

} // namespace quelto
