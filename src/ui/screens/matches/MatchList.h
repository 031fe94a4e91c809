// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/matches/MatchClips.h"
#include "library/matches/MatchTracker.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What the list shows of a match.
struct ListedMatch {
    QUuid id;
    QString icon;
    QString title;
    QString subtitle;
    /// The match is running.
    bool isLive = false;

    bool operator==(const ListedMatch&) const = default;
};

/// The running match, then the finished matches, newest first. Empty until the matches and their clips are loaded.
///
/// Thread: main.
class MatchList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY changed)
    /// Whether there is no match. False until the matches are loaded.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)

public:
    enum Role {
        IconRole = Qt::UserRole,
        TitleRole,
        SubtitleRole,
        IsLiveRole,
        /// As matchIdText. Empty for the running match, which has no page.
        MatchIdRole,
    };

    struct Dependencies {
        MatchTracker& tracker;
        MatchClips& clips;
    };

    /// For QML: takes MatchesForQml::instance.
    explicit MatchList(QObject* parent = nullptr);
    explicit MatchList(const Dependencies& dependencies, QObject* parent = nullptr);

    bool isLoaded() const { return m_dependencies.clips.isLoaded(); }
    bool isEmpty() const { return isLoaded() && m_matches.isEmpty(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row of a finished match; -1 if it is not listed.
    Q_INVOKABLE int rowOf(const QString& matchId) const;
    /// Removes a match from the list and keeps its clips.
    Q_INVOKABLE void deleteRecap(const QString& matchId);
    /// Removes a match from the list and moves its clips to the trash.
    Q_INVOKABLE void deleteWithClips(const QString& matchId);

Q_SIGNALS:
    void changed();

private:
    friend class StableRows;

    void update();

    Dependencies m_dependencies;
    QList<ListedMatch> m_matches;
};

} // namespace quelto
