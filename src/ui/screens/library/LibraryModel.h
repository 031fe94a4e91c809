// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "ui/screens/library/CardSlots.h"
#include "ui/screens/library/ClipFilter.h"
#include "ui/screens/library/DayGroups.h"
#include "ui/screens/library/DaySlots.h"
#include "ui/screens/library/LibraryLayout.h"
#include "ui/screens/library/ScrollSpeed.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What one library view shows: the clips that pass its filter, grouped and laid out, of which only those in view are
/// handed to QML. It has a current card for the keyboard, which stays with its clip.
///
/// Thread: main. Units: logical pixels.
class LibraryModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool hasGame READ hasGame WRITE setHasGame NOTIFY filterChanged)
    Q_PROPERTY(QString game READ game WRITE setGame NOTIFY filterChanged)
    Q_PROPERTY(QString tierFilter READ tierFilter WRITE setTierFilter NOTIFY filterChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)

    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY viewChanged)
    Q_PROPERTY(qreal viewTop READ viewTop WRITE setViewTop NOTIFY viewChanged)
    Q_PROPERTY(qreal viewHeight READ viewHeight WRITE setViewHeight NOTIFY viewChanged)
    /// Of what stands below a card's picture.
    Q_PROPERTY(qreal cardTextHeight READ cardTextHeight WRITE setCardTextHeight NOTIFY viewChanged)

    /// Before the folder was read for the first time there is nothing to say about it.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY clipsChanged)
    Q_PROPERTY(int count READ count NOTIFY clipsChanged)
    Q_PROPERTY(bool showsTierBar READ showsTierBar NOTIFY clipsChanged)
    Q_PROPERTY(QStringList tierFilters READ tierFilterNames CONSTANT)
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY layoutChanged)
    /// Cards go by so fast that nobody sees their pictures.
    Q_PROPERTY(bool isPassing READ isPassing NOTIFY passingChanged)
    Q_PROPERTY(quelto::CardSlots* cards READ cards CONSTANT)
    Q_PROPERTY(quelto::DaySlots* days READ days CONSTANT)
    /// Counted through all cards; -1 if there is none.
    Q_PROPERTY(int currentPosition READ currentPosition NOTIFY currentChanged)
    Q_PROPERTY(QString currentPath READ currentPath NOTIFY currentChanged)

public:
    using Clock = std::function<QDateTime()>;

    /// For QML, over the program's library.
    explicit LibraryModel(QObject* parent = nullptr);
    LibraryModel(const ClipLibrary& library, Clock clock, QObject* parent = nullptr);

    bool hasGame() const { return m_filter.game.has_value(); }
    void setHasGame(bool hasGame);
    QString game() const { return m_game; }
    void setGame(const QString& game);
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

    bool isLoaded() const;
    /// Of the clips that pass.
    int count() const { return static_cast<int>(m_order.size()); }
    bool showsTierBar() const { return m_showsTierBar; }
    static QStringList tierFilterNames() { return tierFilters(); }
    qreal contentHeight() const { return m_layout.height(); }
    bool isPassing() const { return m_isPassing; }
    CardSlots* cards() { return &m_cards; }
    DaySlots* days() { return &m_days; }
    int currentPosition() const { return static_cast<int>(m_current); }
    QString currentPath() const { return m_currentPath; }

    /// The word for one of tierFilters.
    Q_INVOKABLE static QString tierFilterLabel(const QString& tierFilter)
    {
        return quelto::tierFilterLabel(tierFilter);
    }
    /// Makes that card the current one.
    Q_INVOKABLE void select(int position);
    /// Makes the first card current of which all is to be seen.
    Q_INVOKABLE void selectFirstInView();
    /// Lets an arrow key, Home, End or a page key choose another current card, and brings it into view; false if the
    /// key is none of them.
    Q_INVOKABLE bool moveCurrent(int key);
    Q_INVOKABLE QString currentTitle() const;

    /// Looks at the clock: titles speak of today. Called every minute and at midnight.
    void lookAtClock();

Q_SIGNALS:
    void filterChanged();
    void viewChanged();
    void clipsChanged();
    void layoutChanged();
    void passingChanged();
    void currentChanged();
    /// The view is to stand there: what the user looks at has moved, or the current card is out of sight.
    void scrollWanted(qreal viewTop);

private:
    /// What the user sees, to find it again after a change.
    struct Anchor {
        QString path;
        qreal offset = 0;
    };

    void takeClips();
    void applyFilter(std::optional<Anchor> anchor);
    void layOut();
    void fillSlots();
    void setPassing(bool isPassing);
    void setFilter(const ClipFilter& filter);
    void setCurrent(qsizetype position);
    void restore(const Anchor& anchor);
    std::optional<Anchor> anchor() const;
    const Clip& clipAt(qsizetype position) const { return m_clips.clips().at(m_order.at(position)); }
    qsizetype positionOf(const QString& path) const;
    void waitForClock();

    const ClipLibrary& m_library;
    Clock m_clock;
    FilterableClips m_clips;
    ClipFilter m_filter;
    /// Kept while hasGame is not set yet.
    QString m_game;
    QDate m_today;
    QList<DayGroup> m_groups;
    /// The clips' places, card after card.
    QList<qsizetype> m_order;
    QList<DayCards> m_dayCards;
    LibraryLayout m_layout;
    qreal m_width = 0;
    qreal m_viewHeight = 0;
    qreal m_cardTextHeight = 0;
    ScrollSpeed m_scroll;
    CardSlots m_cards;
    DaySlots m_days;
    qsizetype m_current = -1;
    QString m_currentPath;
    QTimer m_restTimer;
    QTimer m_clockTimer;
    bool m_showsTierBar = false;
    bool m_isPassing = false;
};

} // namespace quelto
