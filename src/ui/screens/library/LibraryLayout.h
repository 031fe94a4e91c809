// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRectF>

namespace quelto {

/// The numbers of upright and wide clips of a day.
struct DayCards {
    qsizetype tall = 0;
    qsizetype wide = 0;

    bool operator==(const DayCards&) const = default;
};

/// Computes the rectangle of every card without creating items. Either there is a grid of upright clips and a grid of
/// wide clips below each day title; card indexes then run through all days, in each day the upright clips first. Or all
/// cards are wide, in one grid without a title.
///
/// Units: logical pixels from the top left of the scrollable content, rounded to integers for sharp edges.
class LibraryLayout {
public:
    enum class Step { Left, Right, Up, Down, PageUp, PageDown, First, Last };

    struct Range {
        qsizetype first = 0;
        /// One past the last.
        qsizetype end = 0;

        bool operator==(const Range&) const = default;
    };

    LibraryLayout() = default;
    /// cardTextHeight: the height of the text block below a card's picture.
    LibraryLayout(const QList<DayCards>& days, qreal width, qreal cardTextHeight);
    static LibraryLayout ofWideCards(qsizetype count, qreal width, qreal cardTextHeight);

    qsizetype cardCount() const { return m_cardCount; }
    qsizetype dayCount() const { return m_days.size(); }
    qreal height() const { return m_height; }

    QRectF card(qsizetype index) const;
    /// The aspect ratio (width / height) of the card's picture.
    qreal ratio(qsizetype index) const;
    QRectF dayTitle(qsizetype day) const;

    /// The cards and day titles that intersect the vertical range.
    Range cardsBetween(qreal top, qreal bottom) const;
    Range dayTitlesBetween(qreal top, qreal bottom) const;
    /// The maximum number of them that a viewport of that height can intersect at any scroll position.
    qsizetype maxCardsIn(qreal viewportHeight) const;
    qsizetype maxDayTitlesIn(qreal viewportHeight) const;

    /// The card that a navigation key moves to; the same card if there is none in that direction. Up and down move to
    /// the card nearest in x, across grids and days.
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

    enum class Style { Days, WideCards };

    struct Row {
        qsizetype grid = 0;
        qsizetype row = 0;
    };

    Grid makeGrid(bool tall, qsizetype count, qreal top) const;
    void appendGrid(bool tall, qsizetype count, qreal top);
    qsizetype gridContaining(qsizetype card) const;
    qsizetype nearestInRow(Row row, qreal x) const;

    Style m_style = Style::Days;
    QList<Grid> m_grids;
    QList<qreal> m_days;
    qreal m_width = 0;
    qreal m_cardTextHeight = 0;
    qreal m_height = 0;
    qsizetype m_cardCount = 0;
};

} // namespace quelto
