// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/ClipLibrary.h"
#include "ui/screens/library/CardGridModel.h"
#include "ui/screens/library/ClipArranger.h"

namespace quelto {

/// The model of a library view: filters the clips and groups them by day.
///
/// In a large library, the cards follow the filter and the clips some milliseconds later; everything that clipsChanged
/// announces belongs to the cards that are shown.
///
/// Thread: main.
// Qt 6.4 finds the properties of a base class for QML by its full name only.
class LibraryModel : public quelto::CardGridModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool hasGame READ hasGame WRITE setHasGame NOTIFY filterChanged)
    Q_PROPERTY(QString game READ game WRITE setGame NOTIFY filterChanged)
    /// Shows the clips whose names hold no game, instead of those of `game`.
    Q_PROPERTY(bool isOther READ isOther WRITE setIsOther NOTIFY filterChanged)
    Q_PROPERTY(QString tierFilter READ tierFilter WRITE setTierFilter NOTIFY filterChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)

    /// False until the save folder has been read for the first time.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY clipsChanged)
    /// Whether the cards are the result of a search.
    Q_PROPERTY(bool showsSearch READ showsSearch NOTIFY clipsChanged)
    Q_PROPERTY(bool showsTierBar READ showsTierBar NOTIFY clipsChanged)
    Q_PROPERTY(QStringList tierFilters READ tierFilterNames CONSTANT)

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

    bool isLoaded() const { return m_isLoaded; }
    bool showsSearch() const { return !m_arranged.filter.search.isEmpty(); }
    bool showsTierBar() const { return m_arranged.hasTiers; }
    static QStringList tierFilterNames() { return tierFilters(); }

    /// The translated label of one of tierFilters.
    Q_INVOKABLE static QString tierFilterLabel(const QString& tierFilter)
    {
        return quelto::tierFilterLabel(tierFilter);
    }

    /// Updates the titles "Today" and "Yesterday", and everything local time decides after a change of the time zone.
    /// Called every minute and just after midnight.
    void updateToday();

Q_SIGNALS:
    void filterChanged();

private:
    LibraryLayout layoutFor(qreal width, qreal cardTextHeight) const final;
    QString dayTitleAt(qsizetype day) const final;
    void updateClips();
    void show(const ArrangedClips& arranged);
    void updateGameFilter();
    void setFilter(const ClipFilter& filter);
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
    QTimer m_clockTimer;
    // Last, because it may call show at once.
    ClipArranger m_arranger;
};

} // namespace quelto
