// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/library/CardGridModel.h"

namespace quelto {

namespace {

// Units: logical pixels per second. At this speed a card is visible for about a quarter of a second.
constexpr qreal FastScrollSpeed = 2500;
constexpr std::chrono::milliseconds ScrollEndDelay{80};
// Cards this far outside the view are prepared as well. Units: logical pixels.
constexpr qreal PreloadMargin = 40;
// The minimum distance between the current card and the edges of the view. Units: logical pixels.
constexpr qreal CurrentMargin = 18;

std::optional<LibraryLayout::Step> stepOf(int key)
{
    using Step = LibraryLayout::Step;
    switch (key) {
    case Qt::Key_Left:
        return Step::Left;
    case Qt::Key_Right:
        return Step::Right;
    case Qt::Key_Up:
        return Step::Up;
    case Qt::Key_Down:
        return Step::Down;
    case Qt::Key_PageUp:
        return Step::PageUp;
    case Qt::Key_PageDown:
        return Step::PageDown;
    case Qt::Key_Home:
        return Step::First;
    case Qt::Key_End:
        return Step::Last;
    default:
        return std::nullopt;
    }
}

} // namespace

CardGridModel::CardGridModel(QObject* parent)
    : QObject(parent)
{
    m_scrollEndTimer.setSingleShot(true);
    m_scrollEndTimer.setInterval(ScrollEndDelay);
    connect(&m_scrollEndTimer, &QTimer::timeout, this, [this] {
        m_scroll.stop();
        setScrollingFast(false);
    });
}

void CardGridModel::setWidth(qreal width)
{
    if (m_width == width) {
        return;
    }
    const auto oldAnchor = anchor();
    m_width = width;
    updateLayout();
    Q_EMIT viewChanged();
    if (oldAnchor) {
        restore(*oldAnchor);
    }
}

void CardGridModel::setViewTop(qreal viewTop)
{
    if (m_scroll.position() == viewTop) {
        return;
    }
    m_scroll.moveTo(viewTop, std::chrono::steady_clock::now());
    setScrollingFast(m_scroll.speed() > FastScrollSpeed);
    m_scrollEndTimer.start();
    updateVisibleRows();
    Q_EMIT viewChanged();
}

void CardGridModel::setViewHeight(qreal viewHeight)
{
    if (m_viewHeight != viewHeight) {
        m_viewHeight = viewHeight;
        updateVisibleRows();
        Q_EMIT viewChanged();
    }
}

void CardGridModel::setCardTextHeight(qreal cardTextHeight)
{
    if (m_cardTextHeight != cardTextHeight) {
        m_cardTextHeight = cardTextHeight;
        updateLayout();
        Q_EMIT viewChanged();
    }
}

void CardGridModel::setScrollingFast(bool isScrollingFast)
{
    if (m_isScrollingFast != isScrollingFast) {
        m_isScrollingFast = isScrollingFast;
        Q_EMIT scrollingFastChanged();
    }
}

void CardGridModel::showClips(const QList<Clip>& clips, const QList<qsizetype>& order, Scroll scroll)
{
    const auto oldAnchor = scroll == Scroll::Keep ? anchor() : std::nullopt;
    const auto previous = m_current;
    m_clips = clips;
    m_order = order;
    updateLayout();
    Q_EMIT clipsChanged();
    if (oldAnchor) {
        restore(*oldAnchor);
    }
    if (previous >= 0) {
        const auto position = positionOf(m_currentPath);
        // If the current clip is gone, the next one becomes current.
        setCurrent(position >= 0 ? position : std::min<qsizetype>(previous, count() - 1));
    }
    if (scroll == Scroll::ToTop) {
        Q_EMIT scrollRequested(0);
    }
}

void CardGridModel::updateLayout()
{
    m_layout = m_width > 0 ? layoutFor(m_width, m_cardTextHeight) : LibraryLayout();
    m_cards.invalidate();
    m_days.invalidate();
    Q_EMIT layoutChanged();
    updateVisibleRows();
}

void CardGridModel::updateSelection()
{
    m_cards.invalidate();
    updateVisibleRows();
}

void CardGridModel::updateVisibleRows()
{
    if (m_width <= 0 || m_viewHeight <= 0) {
        return;
    }
    const auto top = viewTop() - PreloadMargin;
    const auto bottom = viewTop() + m_viewHeight + PreloadMargin;
    m_cards.reserve(m_layout.maxCardsIn(bottom - top));
    m_days.reserve(m_layout.maxDayTitlesIn(bottom - top));
    const auto cards = m_layout.cardsBetween(top, bottom);
    m_cards.show(cards.first, cards.end, [this](qsizetype position) {
        return VisibleCards::Card{.clip = clipAt(position),
                                  .area = m_layout.card(position),
                                  .ratio = m_layout.ratio(position),
                                  .isSelected = isSelected(clipAt(position))};
    });
    const auto days = m_layout.dayTitlesBetween(top, bottom);
    m_days.show(days.first, days.end, [this](qsizetype position) {
        return VisibleDay{.title = dayTitleAt(position), .area = m_layout.dayTitle(position)};
    });
}

std::optional<CardGridModel::Anchor> CardGridModel::anchor() const
{
    if (viewTop() <= 0) {
        return std::nullopt;
    }
    const auto cards = m_layout.cardsBetween(viewTop(), viewTop() + m_viewHeight);
    if (cards.first == cards.end) {
        return std::nullopt;
    }
    return Anchor{.path = clipAt(cards.first).path, .offset = m_layout.card(cards.first).top() - viewTop()};
}

void CardGridModel::restore(const Anchor& anchor)
{
    if (const auto position = positionOf(anchor.path); position >= 0 && m_width > 0) {
        const auto top = m_layout.card(position).top() - anchor.offset;
        if (top != viewTop()) {
            Q_EMIT scrollRequested(std::clamp(top, 0.0, std::max(0.0, contentHeight() - m_viewHeight)));
        }
    }
}

qsizetype CardGridModel::positionOf(const QString& path) const
{
    const auto found = std::ranges::find_if(m_order, [&](qsizetype index) { return m_clips.at(index).path == path; });
    return found == m_order.end() ? -1 : std::distance(m_order.begin(), found);
}

void CardGridModel::setCurrent(qsizetype position)
{
    const auto path = position < 0 ? QString() : clipAt(position).path;
    if (m_current != position || m_currentPath != path) {
        m_current = position;
        m_currentPath = path;
        Q_EMIT currentChanged();
    }
}

void CardGridModel::select(int position)
{
    setCurrent(std::clamp(position, -1, count() - 1));
}

void CardGridModel::selectFirstInView()
{
    const auto cards = m_layout.cardsBetween(viewTop(), viewTop() + m_viewHeight);
    auto position = cards.first;
    while (position + 1 < cards.end && m_layout.card(position).top() < viewTop()) {
        ++position;
    }
    setCurrent(position < cards.end ? position : -1);
}

bool CardGridModel::moveCurrent(int key)
{
    const auto step = stepOf(key);
    if (!step) {
        return false;
    }
    if (count() == 0 || m_width <= 0) {
        return true;
    }
    const auto page = m_viewHeight - 2 * CurrentMargin;
    setCurrent(m_layout.neighbour(m_current, *step, page));
    const auto card = m_layout.card(m_current);
    // Moving to the first row also shows its day title.
    const auto top = m_current == 0 || card.top() <= m_layout.card(0).top() ? 0 : card.top() - CurrentMargin;
    const auto bottom = card.bottom() + CurrentMargin;
    if (top < viewTop()) {
        Q_EMIT scrollRequested(top);
    } else if (bottom > viewTop() + m_viewHeight) {
        Q_EMIT scrollRequested(std::min(bottom - m_viewHeight, card.top() - CurrentMargin));
    }
    return true;
}

QString CardGridModel::currentTitle() const
{
    return m_current < 0 ? QString() : clipAt(m_current).visibleTitle();
}

} // namespace quelto
