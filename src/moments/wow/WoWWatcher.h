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

/// Follows World of Warcraft by the combat log that the game writes once the player has turned that on in the game.
/// There are no matches and no character here: the game is active or it is not.
///
/// Thread: main.
class WoWWatcher final : public GameWatcher {
    Q_OBJECT
    /// There is a folder into which the game would write its log. Stays as it is while the watcher is stopped.
    Q_PROPERTY(bool logFound READ logFound NOTIFY logFoundChanged)
    /// The newest log was written to in the last minute and a half.
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
    void tellLogFound(bool logFound);
    void tellActive(bool active);
    void tellAll(const QList<Moment>& moments);
    void setLogFound(bool logFound);
    void setActive(bool active);

    bool m_logFound = false;
    bool m_active = false;

    // On the queue.
    std::unique_ptr<QTimer> m_timer;
    LogFolders m_folders;
    LogTail m_tail;
    WowFights m_fights;
    /// Of the tick at hand, by the machine's clock.
    double m_readingTime = 0;
    int m_momentsInTick = 0;
    /// Seconds of the wall clock.
    double m_lastWrite = 0;
    std::optional<bool> m_toldLogFound;
    bool m_toldActive = false;
};

} // namespace quelto
