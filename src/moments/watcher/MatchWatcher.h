// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/watcher/GameWatcher.h"
#include "moments/watcher/MatchEvent.h"

namespace quelto {

/// A watcher for a game that is played in matches with one character.
class MatchWatcher : public quelto::GameWatcher {
    Q_OBJECT
    /// Whether a live match is being followed.
    Q_PROPERTY(bool inGame READ inGame NOTIFY inGameChanged)
    Q_PROPERTY(QString character READ character NOTIFY characterChanged)

public:
    bool inGame() const { return m_state.inGame; }
    /// Display name of the player's champion or hero; may be empty.
    QString character() const { return m_state.character; }

Q_SIGNALS:
    void inGameChanged();
    void characterChanged(const QString& character);
    /// May be emitted more than once for a match.
    void gameEnded();

protected:
    using GameWatcher::GameWatcher;

    /// Publishes the events in order.
    /// Thread: the watcher's queue.
    void publishEvents(const MatchEvents& events);
    void clear() override;

private:
    void apply(const MatchState& state);
    void apply(const MatchEvent& event);

    MatchState m_state;
};

} // namespace quelto
