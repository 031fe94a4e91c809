// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "ui/screens/library/ClipArranger.h"
#include "ui/screens/library/LibraryLayout.h"
#include "ui/screens/library/ScrollSpeed.h"
#include "ui/screens/library/VisibleCards.h"
#include "ui/screens/library/VisibleDays.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The model of a library view: filters, groups and lays out the clips, and provides the visible ones to QML. The
/// current card for keyboard navigation follows its clip when clips are added or removed.
///
/// In a large library, the cards follow the filter and the clips some milliseconds later; everything that clipsChanged
/// announces belongs to the cards that are shown.
///
/// Thread: main. Units: logical pixels.
class LibraryModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool hasGame READ hasGame WRITE setHasGame NOTIFY filterChanged)
    Q_PROPERTY(QString game READ game WRITE setGame NOTIFY filterChanged)
    /// Shows the clips whose names hold no game, instead of those of `game`.
    Q_PROPERTY(bool isOther READ isOther WRITE setIsOther NOTIFY filterChanged)
    Q_PROPERTY(QString tierFilter READ tierFilter WRITE setTierFilter NOTIFY filterChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)

    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY viewChanged)
    Q_PROPERTY(qreal viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(qreal viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewChanged)
    /// The height of the text block below a card's picture.
    Q_PROPERTY(qreal cardTextHeight READ cardTextHeight WRITE setCardTextHeight NOTIFY viewChanged)

    /// False until the save folder has been read for the first time.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY clipsChanged)
    Q_PROPERTY(int count READ count NOTIFY clipsChanged)
    /// Whether the cards are the result of a search.
    Q_PROPERTY(bool showsSearch READ showsSearch NOTIFY clipsChanged)
    Q_PROPERTY(bool showsTierBar READ showsTierBar NOTIFY clipsChanged)
    Q_PROPERTY(QStringList tierFilters READ tierFilterNames CONSTANT)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY layoutChanged)
    /// The view scrolls too fast for thumbnails to be worth requesting.
    Q_PROPERTY(bool isScrollingFast READ isScrollingFast NOTIFY scrollingFastChanged)
    Q_PROPERTY(quelto::VisibleCards* cards READ cards CONSTANT)
    Q_PROPERTY(quelto::VisibleDays* days READ days CONSTANT)
    /// Index among all cards; -1 for none.
    Q_PROPERTY(int currentPosition READ currentPosition NOTIFY currentChanged)
    Q_PROPERTY(QString currentPath READ currentPath NOTIFY currentChanged)

public:
    using Clock = std::function<QDateTime()>;

    struct Dependencies {
        const ClipLibrary& library;
        Clock now = [] { return QDateTime::currentDateTime(); };
        /// Without them, clips of any number are arranged on the main thread.
        std::optional<ClipArranger::Queues> queues = std::nullopt;
    };

    /// For QML; uses the instances of ClipLibraryForQml and ArrangingQueuesForQml.
    explicit LibraryModel(QObject* parent = nullptr);
    explicit LibraryModel(Dependencies dependencies, QObject* parent = nullptr);

    bool hasGame() const { return m_hasGame; }
    void setHasGame(bool hasGame);
    QString game() const { return m_game; }
    void setGame(const QString& game);
    bool isOther() const { return m_isOther; }
    void setIsOther(bool isOther);
    QString tierFilter() const { return m_filter.tier; }
    void setTierFilter(const QString& tierFilter);
    QString search() const { return m_filter.search; }
    void setSearch(const QString& search);

    qreal width() const { return m_width; }
    void setWidth(qreal width);
    qreal viewTop() const { return m_scroll.position(); }
    void setViewTop(qreal viewTop);
    qreal viewHeight() const { return m_viewHeight; }
    void setViewHeight(qreal viewHeight);
    qreal cardTextHeight() const { return m_cardTextHeight; }
    void setCardTextHeight(qreal cardTextHeight);

    bool isLoaded() const { return m_isLoaded; }
    /// The number of clips that match the filter.
    int count() const { return static_cast<int>(m_arranged.cards.size()); }
    bool showsSearch() const { return !m_arranged.filter.search.isEmpty(); }
    bool showsTierBar() const { return m_arranged.hasTiers; }
    static QStringList tierFilterNames() { return tierFilters(); }
    qreal contentHeight() const { return m_layout.height(); }
    bool isScrollingFast() const { return m_isScrollingFast; }
    VisibleCards* cards() { return &m_cards; }
    VisibleDays* days() { return &m_days; }
    int currentPosition() const { return static_cast<int>(m_current); }
    QString currentPath() const { return m_currentPath; }

    /// The translated label of one of tierFilters.
    Q_INVOKABLE static QString tierFilterLabel(const QString& tierFilter)
    {
        return quelto::tierFilterLabel(tierFilter);
    }
    Q_INVOKABLE void select(int position);
    /// Selects the first card that is fully visible.
    Q_INVOKABLE void selectFirstInView();
    /// Moves the current card for an arrow key, Home, End, Page Up or Page Down and scrolls it into view. Returns false
    /// for other keys.
    Q_INVOKABLE bool moveCurrent(int key);
    Q_INVOKABLE QString currentTitle() const;

    /// Updates the titles "Today" and "Yesterday", and everything local time decides after a change of the time zone.
    /// Called every minute and just after midnight.
    void updateToday();

Q_SIGNALS:
    void filterChanged();
    void viewChanged();
    void clipsChanged();
    void layoutChanged();
    void scrollingFastChanged();
    void currentChanged();
    /// Asks the view to scroll there: the visible clips have moved, or the current card is out of view.
    void scrollRequested(qreal viewTop);

private:
    /// A visible card and its distance from the top of the view, to restore the scroll position after a change.
    struct Anchor {
        QString path;
        qreal offset = 0;
    };

    void updateClips();
    void show(const ArrangedClips& arranged);
    void updateLayout();
    void updateVisibleRows();
    void setScrollingFast(bool isScrollingFast);
    void updateGameFilter();
    void setFilter(const ClipFilter& filter);
    void setCurrent(qsizetype position);
    void restore(const Anchor& anchor);
    std::optional<Anchor> anchor() const;
    const Clip& clipAt(qsizetype position) const { return m_arranged.clips.at(m_arranged.cards.at(position)); }
    qsizetype positionOf(const QString& path) const;
    void scheduleTodayUpdate();

    Dependencies m_dependencies;
    ClipFilter m_filter;
    /// The filter that was requested for the cards that are shown.
    ClipFilter m_requestedFilter;
    // Kept separately because QML may set them in any order.
    bool m_hasGame = false;
    bool m_isOther = false;
    QString m_game;
    QDate m_today;
    QByteArray m_timeZone;
    /// The cards that are shown.
    ArrangedClips m_arranged;
    bool m_isLoaded = false;
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
    QTimer m_clockTimer;
    bool m_isScrollingFast = false;
    // Last, because it may call show at once.
    ClipArranger m_arranger;
};

} // namespace quelto
