// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/TaskQueue.h"
#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchNotification.h"
#include "library/matches/MatchSession.h"
#include "library/matches/MatchStore.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace quelto {

/// Turns the watchers' starts and ends into a list of played matches, each with the clips that were saved during it.
///
/// The end of a match is debounced: a game reports it twice, a client may hang for a moment, and the last clip is
/// mostly still being written when the match ends. The running match lives in memory only; a crash loses it, never its
/// clips.
///
/// Thread: main.
class MatchTracker : public QObject {
    Q_OBJECT

public:
    using Clock = std::function<QDateTime()>;

    struct Dependencies {
        ClipLibrary& library;
        TaskQueue& main;
        MatchStore store;
        Clock now = [] { return QDateTime::currentDateTime(); };
    };

    /// Reads the store.
    explicit MatchTracker(Dependencies parts, QObject* parent = nullptr);

    /// Finished matches, newest first.
    const QList<MatchSession>& sessions() const { return m_sessions; }
    /// The running match.
    const std::optional<MatchSession>& current() const { return m_current; }
    bool inMatch() const { return m_current.has_value(); }
    /// A finished match.
    std::optional<MatchSession> session(const QUuid& id) const;

    /// The same game again before its end was settled goes on with the match that runs; another game ends that at once.
    void gameStarted(const QString& game, const QString& hero);
    /// Settles ten seconds after the last call. Ignored for a game that is not the running match's.
    void gameEnded(const QString& game);
    /// An empty name never erases a known one.
    void heroChanged(const QString& hero);
    void clipSaved(const QString& path);

    /// Forgets the match; its clips stay.
    void removeSession(const QUuid& id);
    enum class WithClips { no, yes };
    void deleteSession(const QUuid& id, WithClips withClips);
    /// Moves clips to the trash, also where the match is not known, and takes them out of the match. A match without
    /// clips stays listed.
    void deleteClips(const QStringList& paths, const QUuid& id);

Q_SIGNALS:
    void sessionsChanged();
    void currentChanged();
    /// A match with clips is over and stored.
    void matchOver(const quelto::MatchNotification& notification);
    /// Before the match goes, so that no screen is left showing it.
    void sessionIsGoing(const QUuid& id);

private:
    void finish();
    void persist();

    Dependencies m_dependencies;
    QList<MatchSession> m_sessions;
    std::optional<MatchSession> m_current;
    /// Counts ends asked for and called off, so that only the latest one that still stands is acted on.
    std::uint64_t m_end = 0;
};

} // namespace quelto
