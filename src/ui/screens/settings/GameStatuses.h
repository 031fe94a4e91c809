// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/dota/DotaWatcher.h"
#include "moments/league/LeagueWatcher.h"
#include "moments/wow/WoWWatcher.h"
#include "ui/screens/settings/GameStatus.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The status of each game, from its watcher.
///
/// Thread: main.
class GameStatuses : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString league READ league NOTIFY leagueChanged)
    Q_PROPERTY(QString dota READ dota NOTIFY dotaChanged)
    Q_PROPERTY(QString dotaHint READ dotaHint NOTIFY dotaChanged)
    Q_PROPERTY(QString wow READ wow NOTIFY wowChanged)
    Q_PROPERTY(QString wowHint READ wowHint NOTIFY wowChanged)

public:
    /// All outlive the object.
    struct Dependencies {
        const LeagueWatcher& league;
        const DotaWatcher& dota;
        const WoWWatcher& wow;
    };

    /// For QML; uses the watchers that are registered there.
    explicit GameStatuses(QObject* parent = nullptr);
    explicit GameStatuses(const Dependencies& dependencies, QObject* parent = nullptr);

    QString league() const { return leagueStatus().text; }
    QString dota() const { return dotaStatus().text; }
    QString dotaHint() const { return dotaStatus().hint; }
    QString wow() const { return wowStatus().text; }
    QString wowHint() const { return wowStatus().hint; }

Q_SIGNALS:
    void leagueChanged();
    void dotaChanged();
    void wowChanged();

private:
    GameStatus leagueStatus() const;
    GameStatus dotaStatus() const;
    GameStatus wowStatus() const;

    Dependencies m_dependencies;
};

} // namespace quelto
