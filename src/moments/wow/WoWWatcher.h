// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/GameWatcher.h"
#include "moments/wow/LogFolders.h"
#include "moments/wow/LogTail.h"
#include "moments/wow/WowFights.h"

#include <QDir>
#include <QTimer>

#include <memory>
#include <optional>

namespace quelto {

/// Follows World of Warcraft through the combat log, which the player must enable in the game. There are no matches and
/// no character; the game is either active or not.
///
/// Thread: main.
class WoWWatcher final : public quelto::GameWatcher {
    Q_OBJECT
    /// Whether a folder for combat logs exists. Keeps its value while the watcher is stopped.
    Q_PROPERTY(bool logFound READ logFound NOTIFY logFoundChanged)
    /// Whether the newest log was written in the last 90 s.
    Q_PROPERTY(bool active READ active NOTIFY activeChanged)

public:
    explicit WoWWatcher(const QString& homeFolder = QDir::homePath(), QObject* parent = nullptr);
    ~WoWWatcher() override;

    static QString gameName();

    bool logFound() const { return m_logFound; }
    bool active() const { return m_active; }

Q_SIGNALS:
    void logFoundChanged();
    void activeChanged();

private:
    void open() override;
    void close() override;
    void clear() override;
    void tick();
    void publishLogFound(bool logFound);
    void publishActive(bool active);
    void publishMoments(const QList<Moment>& moments);
    void setLogFound(bool logFound);
    void setActive(bool active);

    bool m_logFound = false;
    bool m_active = false;

    // Used on the watcher's queue only.
    std::unique_ptr<QTimer> m_timer;
    LogFolders m_folders;
    LogTail m_tail;
    WowFights m_fights;
    /// When the current tick began to read the log. Units: seconds on the monotonic clock.
    double m_readTime = 0;
    int m_momentsInTick = 0;
    /// When the newest log was last written. Units: seconds on the wall clock.
    double m_lastWrite = 0;
    std::optional<bool> m_publishedLogFound;
    bool m_publishedActive = false;
};

} // namespace quelto
