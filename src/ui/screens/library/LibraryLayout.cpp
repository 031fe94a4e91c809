// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/LibraryLayout.h"

#include <cmath>

namespace quelto {

namespace {

constexpr qreal Margin = 28;
constexpr qreal Spacing = 16;
constexpr qreal SectionSpacing = 14;
constexpr qreal DaySpacing = 26;
constexpr qreal TitleHeight = 14;

struct Columns {
    qreal minWidth;
    qreal maxWidth;
    qreal ratio;
};

constexpr Columns TallColumns{.minWidth = 170, .maxWidth = 230, .ratio = 9.0 / 16};
constexpr Columns WideColumns{.minWidth = 250, .maxWidth = 360, .ratio = 16.0 / 9};

} // namespace

qreal LibraryLayout::Grid::bottom() const
{
    return top + static_cast<qreal>(rows()) * (cardHeight + Spacing) - Spacing;
}

LibraryLayout::Grid LibraryLayout::makeGrid(bool tall, qsizetype count, qreal top) const
{
    const auto& limits = tall ? TallColumns : WideColumns;
    const qreal available = std::max(m_width - 2 * Margin, 1.0);
    const auto columns =
        std::max<qsizetype>(1, static_cast<qsizetype>(std::floor((available + Spacing) / (limits.minWidth + Spacing))));
    const qreal columnWidth = (available - static_cast<qreal>(columns - 1) * Spacing) / static_cast<qreal>(columns);
    const qreal width = std::max(std::floor(std::min(columnWidth, limits.maxWidth)), 1.0);
    return {.first = m_cardCount,
            .count = count,
            .columns = columns,
            .top = top,
            .cardWidth = width,
            .cardHeight = std::round(width / limits.ratio) + m_cardTextHeight,
            .ratio = limits.ratio};
}

void LibraryLayout::appendGrid(bool tall, qsizetype count, qreal top)
{
    m_grids.append(makeGrid(tall, count, top));
    m_cardCount += count;
}

LibraryLayout LibraryLayout::ofWideCards(qsizetype count, qreal width, qreal cardTextHeight)
{
    LibraryLayout layout;
    layout.m_style = Style::WideCards;
    layout.m_width = width;
    layout.m_cardTextHeight = cardTextHeight;
    if (count > 0) {
        layout.appendGrid(false, count, SectionSpacing);
        layout.m_height = layout.m_grids.last().bottom() + Margin;
    }
    return layout;
}

LibraryLayout::LibraryLayout(const QList<DayCards>& days, qreal width, qreal cardTextHeight)
    : m_width(width)
    , m_cardTextHeight(cardTextHeight)
{
    qreal top = 0;
    for (const auto& day : days) {
        if (!m_days.isEmpty()) {
            top += DaySpacing;
        }
        m_days.append(top);
        top += TitleHeight;
        for (const bool tall : {true, false}) {
            if (const auto count = tall ? day.tall : day.wide; count > 0) {
                appendGrid(tall, count, top + SectionSpacing);
                top = m_grids.last().bottom();
            }
        }
    }
    m_height = top + Margin;
}

qsizetype LibraryLayout::gridContaining(qsizetype card) const
{
    const auto next = std::ranges::upper_bound(m_grids, card, {}, &Grid::first);
    return std::distance(m_grids.begin(), next) - 1;
}

QRectF LibraryLayout::card(qsizetype index) const
{
    const auto& grid = m_grids.at(gridContaining(index));
    const auto row = (index - grid.first) / grid.columns;
    const auto column = (index - grid.first) % grid.columns;
    return {Margin + static_cast<qreal>(column) * (grid.cardWidth + Spacing),
            grid.top + static_cast<qreal>(row) * (grid.cardHeight + Spacing), grid.cardWidth, grid.cardHeight};
}

qreal LibraryLayout::ratio(qsizetype index) const
{
    return m_grids.at(gridContaining(index)).ratio;
}

QRectF LibraryLayout::dayTitle(qsizetype day) const
{
    return {Margin, m_days.at(day), std::max(m_width - 2 * Margin, 1.0), TitleHeight};
}

LibraryLayout::Range LibraryLayout::cardsBetween(qreal top, qreal bottom) const
{
    Range range;
    const auto firstGrid =
        std::ranges::partition_point(m_grids, [top](const Grid& grid) { return grid.bottom() <= top; });
    for (auto grid = firstGrid; grid != m_grids.end() && grid->top < bottom; ++grid) {
        const qreal pitch = grid->cardHeight + Spacing;
        // A row ends at the bottom of its cards; the spacing below it does not count.
        const auto firstRow = std::max<qsizetype>(
            0, static_cast<qsizetype>(std::floor((top - grid->top - grid->cardHeight) / pitch)) + 1);
        const auto endRow = std::min(grid->rows(), static_cast<qsizetype>(std::ceil((bottom - grid->top) / pitch)));
        if (firstRow >= endRow) {
            continue;
        }
        if (range.end == 0) {
            range.first = grid->first + firstRow * grid->columns;
        }
        range.end = grid->first + std::min(grid->count, endRow * grid->columns);
    }
    return range;
}

LibraryLayout::Range LibraryLayout::dayTitlesBetween(qreal top, qreal bottom) const
{
    const auto first = std::ranges::upper_bound(m_days, top - TitleHeight);
    const auto end = std::ranges::lower_bound(m_days, bottom);
    if (first >= end) {
        return {};
    }
    return {.first = std::distance(m_days.begin(), first), .end = std::distance(m_days.begin(), end)};
}

qsizetype LibraryLayout::maxCardsIn(qreal viewportHeight) const
{
    const auto maxIn = [&](const Grid& grid) {
        return (static_cast<qsizetype>(std::ceil(viewportHeight / (grid.cardHeight + Spacing))) + 1) * grid.columns;
    };
    const auto wide = maxIn(makeGrid(false, 1, 0));
    if (m_style == Style::WideCards) {
        return wide;
    }
    const auto tallGrid = makeGrid(true, 1, 0);
    // Two grids that meet in the viewport can intersect one row more than a single grid.
    return std::max(maxIn(tallGrid), wide) + tallGrid.columns;
}

qsizetype LibraryLayout::maxDayTitlesIn(qreal viewportHeight) const
{
    if (m_style == Style::WideCards) {
        return 0;
    }
    const auto minCardHeight = makeGrid(false, 1, 0).cardHeight;
    return static_cast<qsizetype>(
               std::ceil(viewportHeight / (TitleHeight + SectionSpacing + minCardHeight + DaySpacing))) +
        1;
}

qsizetype LibraryLayout::nearestInRow(Row row, qreal x) const
{
    const auto& grid = m_grids.at(row.grid);
    const auto first = grid.first + row.row * grid.columns;
    const auto count = std::min(grid.columns, grid.first + grid.count - first);
    const auto column =
        static_cast<qsizetype>(std::round((x - Margin - grid.cardWidth / 2) / (grid.cardWidth + Spacing)));
    return first + std::clamp<qsizetype>(column, 0, count - 1);
}

qsizetype LibraryLayout::neighbour(qsizetype index, Step step, qreal pageHeight) const
{
    if (m_cardCount == 0) {
        return -1;
    }
    const auto last = m_cardCount - 1;
    if (index < 0) {
        return step == Step::Last ? last : 0;
    }
    index = std::min(index, last);
    const auto gridIndex = gridContaining(index);
    const auto& grid = m_grids.at(gridIndex);
    const auto row = (index - grid.first) / grid.columns;
    const auto current = card(index);
    const auto x = current.center().x();
    switch (step) {
    case Step::Left:
        return std::max<qsizetype>(index - 1, 0);
    case Step::Right:
        return std::min(index + 1, last);
    case Step::First:
        return 0;
    case Step::Last:
        return last;
    case Step::Up:
        if (row > 0) {
            return nearestInRow({gridIndex, row - 1}, x);
        }
        return gridIndex > 0 ? nearestInRow({gridIndex - 1, m_grids.at(gridIndex - 1).rows() - 1}, x) : index;
    case Step::Down:
        if (row + 1 < grid.rows()) {
            return nearestInRow({gridIndex, row + 1}, x);
        }
        return gridIndex + 1 < m_grids.size() ? nearestInRow({gridIndex + 1, 0}, x) : index;
    case Step::PageUp:
    case Step::PageDown: {
        // The farthest row that fits on one page with this row, but at least the next row.
        const auto isUp = step == Step::PageUp;
        auto reached = index;
        while (true) {
            const auto next = neighbour(reached, isUp ? Step::Up : Step::Down, pageHeight);
            const auto target = card(next);
            const auto spread = isUp ? current.bottom() - target.top() : target.bottom() - current.top();
            if (next == reached || (spread > pageHeight && reached != index)) {
                return reached;
            }
            reached = next;
        }
    }
    }
    return index;
}

} // namespace quelto
