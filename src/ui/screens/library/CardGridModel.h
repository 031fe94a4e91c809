// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/screens/library/LibraryLayout.h"
#include "ui/screens/library/ScrollSpeed.h"
#include "ui/screens/library/VisibleCards.h"
#include "ui/screens/library/VisibleDays.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace quelto {

/// The model of a scrolling grid of clips: lays them out, and provides the visible ones to QML. The current card for
/// keyboard navigation follows its clip when clips are added or removed. A page derives its own model, which decides
/// what the clips are.
///
/// Thread: main. Units: logical pixels.
class CardGridModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A page derives its own model")
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY viewChanged)
    Q_PROPERTY(qreal viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(qreal viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewChanged)
    /// The height of the text block below a card's picture.
    Q_PROPERTY(qreal cardTextHeight READ cardTextHeight WRITE setCardTextHeight NOTIFY viewChanged)

    Q_PROPERTY(int count READ count NOTIFY clipsChanged)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY layoutChanged)
    /// The view scrolls too fast for thumbnails to be worth requesting.
    Q_PROPERTY(bool isScrollingFast READ isScrollingFast NOTIFY scrollingFastChanged)
    Q_PROPERTY(quelto::VisibleCards* cards READ cards CONSTANT)
    /// Empty in a grid without day titles.
    Q_PROPERTY(quelto::VisibleDays* days READ days CONSTANT)
    /// Index among all cards; -1 for none.
    Q_PROPERTY(int currentPosition READ currentPosition NOTIFY currentChanged)
    Q_PROPERTY(QString currentPath READ currentPath NOTIFY currentChanged)

public:
    qreal width() const { return m_width; }
    void setWidth(qreal width);
    qreal viewTop() const { return m_scroll.position(); }
    void setViewTop(qreal viewTop);
    qreal viewHeight() const { return m_viewHeight; }
    void setViewHeight(qreal viewHeight);
    qreal cardTextHeight() const { return m_cardTextHeight; }
    void setCardTextHeight(qreal cardTextHeight);

    int count() const { return static_cast<int>(m_order.size()); }
    qreal contentHeight() const { return m_layout.height(); }
    bool isScrollingFast() const { return m_isScrollingFast; }
    VisibleCards* cards() { return &m_cards; }
    VisibleDays* days() { return &m_days; }
    int currentPosition() const { return static_cast<int>(m_current); }
    QString currentPath() const { return m_currentPath; }

    Q_INVOKABLE void select(int position);
    /// Selects the first card that is fully visible.
    Q_INVOKABLE void selectFirstInView();
    /// Moves the current card for an arrow key, Home, End, Page Up or Page Down and scrolls it into view. Returns false
    /// for other keys.
    Q_INVOKABLE bool moveCurrent(int key);
    Q_INVOKABLE QString currentTitle() const;

Q_SIGNALS:
    void viewChanged();
    void clipsChanged();
    void layoutChanged();
    void scrollingFastChanged();
    void currentChanged();
    /// Asks the view to scroll there: the visible clips have moved, or the current card is out of view.
    void scrollRequested(qreal viewTop);

protected:
    explicit CardGridModel(QObject* parent);

    enum class Scroll {
        /// The visible clips stay where they are.
        Keep,
        ToTop,
    };

    /// Replaces the clips; `order` has the index in `clips` of each card's clip.
    void showClips(const QList<Clip>& clips, const QList<qsizetype>& order, Scroll scroll);

    /// Shows which clips are selected; called after isSelected has changed.
    void updateSelection();

    const Clip& clipAt(qsizetype position) const { return m_clips.at(m_order.at(position)); }

    /// Lays out the clips that were passed to showClips.
    virtual LibraryLayout layoutFor(qreal width, qreal cardTextHeight) const = 0;
    /// The text of one of the layout's day titles.
    virtual QString dayTitleAt(qsizetype /*day*/) const { return {}; }
    virtual bool isSelected(const Clip& /*clip*/) const { return false; }

private:
    /// A visible card and its distance from the top of the view, to restore the scroll position after a change.
    struct Anchor {
        QString path;
        qreal offset = 0;
    };

    void updateLayout();
    void updateVisibleRows();
    void setScrollingFast(bool isScrollingFast);
    void setCurrent(qsizetype position);
    void restore(const Anchor& anchor);
    std::optional<Anchor> anchor() const;
    qsizetype positionOf(const QString& path) const;

    QList<Clip> m_clips;
    QList<qsizetype> m_order;
    LibraryLayout m_layout;
    qreal m_width = 0;
    qreal m_viewHeight = 0;
    qreal m_cardTextHeight = 0;
    ScrollSpeed m_scroll;
    VisibleCards m_cards;
    VisibleDays m_days;
    qsizetype m_current = -1;
    QString m_currentPath;
    QTimer m_scrollEndTimer;
    bool m_isScrollingFast = false;
};

} // namespace quelto
