// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/GameWatcher.h"
#include "moments/watcher/MatchEvent.h"

namespace quelto {

/// A watcher of a game that is played in matches, by one character.
class MatchWatcher : public GameWatcher {
    Q_OBJECT
    /// A live match is being followed.
    Q_PROPERTY(bool inGame READ inGame NOTIFY inGameChanged)
    Q_PROPERTY(QString character READ character NOTIFY characterChanged)

public:
    bool inGame() const { return m_state.inGame; }
    /// Display name of the player's champion or hero; may be empty.
    QString character() const { return m_state.character; }

Q_SIGNALS:
    void inGameChanged();
    void characterChanged(const QString& character);
    /// May come more than once for a match.
    void gameEnded();

protected:
    using GameWatcher::GameWatcher;

    /// From the queue: publishes each in turn.
    void publishEvents(const MatchEvents& news);
    void clear() override;

private:
    void take(const MatchState& state);
    void take(const MatchEvent& news);

    MatchState m_state;
};

} // namespace quelto
