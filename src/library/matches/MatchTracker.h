// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchNotification.h"
#include "library/matches/MatchSession.h"
#include "library/matches/MatchStore.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace quelto {

/// Builds the list of played matches, with the clips saved during each, from the start and end events of the watchers.
///
/// The end of a match is debounced: a game may report it twice, a client may hang briefly, and the last clip is usually
/// still being written when the match ends. The running match is kept in memory only; a crash loses it, but not its
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
        /// Reads and writes the store. Its tasks own their data and may finish after everything else is gone.
        TaskQueue& work;
        MatchStore store;
        Clock now = [] { return QDateTime::currentDateTimeUtc(); };
    };

    /// Starts to load the store. Matches may be played before it is loaded; deletions wait until then.
    explicit MatchTracker(Dependencies dependencies, QObject* parent = nullptr);
    ~MatchTracker() override;
    MatchTracker(const MatchTracker&) = delete;
    MatchTracker& operator=(const MatchTracker&) = delete;

    /// Whether the store is loaded. Until then only the matches finished since the start are listed.
    bool isLoaded() const { return m_isLoaded; }
    /// Finished matches, newest first.
    const QList<MatchSession>& sessions() const { return m_sessions; }
    /// The running match.
    const std::optional<MatchSession>& current() const { return m_current; }
    bool inMatch() const { return m_current.has_value(); }
    /// A finished match.
    std::optional<MatchSession> session(const QUuid& id) const;

    /// The same game within the debounce time continues the running match; another game ends it at once.
    void gameStarted(const QString& game, const QString& hero);
    /// Ends the match ten seconds after the last call. Ignored if the running match is of another game.
    void gameEnded(const QString& game);
    /// An empty name does not replace a known one.
    void heroChanged(const QString& hero);
    void clipSaved(const QString& path);

    /// Removes the match from the list and keeps its clips.
    void removeSession(const QUuid& id);
    enum class WithClips { no, yes };
    void deleteSession(const QUuid& id, WithClips withClips);
    /// Moves clips to the trash, even if the match is unknown, and removes them from the match. A match without clips
    /// stays listed. See takeBack.
    void deleteClips(const QStringList& paths, const QUuid& id);
    /// Adds trashed clips to their matches again: their files were restored from the trash, or could not be moved to
    /// it. Ignores files that are still being moved.
    void takeBack(const QStringList& paths);

Q_SIGNALS:
    /// Emitted also when the store is loaded.
    void sessionsChanged();
    void currentChanged();
    /// Emitted before the signals about the match of the clip.
    void clipRenamed(const QString& from, const QString& to);
    /// A match with clips ended and is stored.
    void matchOver(const quelto::MatchNotification& notification);
    /// Emitted before the match is removed, so that a screen that shows it can close.
    void sessionAboutToBeRemoved(const QUuid& id);

private:
    /// The store and the matches that were loaded from it. Used on the work queue only.
    struct LoadedStore {
        MatchStore store;
        QList<MatchSession> sessions;
    };

    void startLoading();
    void finishLoading(const QList<MatchSession>& stored);
    void whenLoaded(Task task);
    void renameClip(const QString& from, const QString& to);
    void finish();
    void persist();

    Dependencies m_dependencies;
    std::shared_ptr<LoadedStore> m_store;
    std::shared_ptr<DetachableQueue> m_replies;
    bool m_isLoaded = false;
    QList<Task> m_waitingTasks;
    QList<MatchSession> m_sessions;
    std::optional<MatchSession> m_current;
    /// Files that are being moved to the trash.
    QStringList m_leaving;
    /// Incremented by each scheduled or cancelled end, so that only the latest scheduled one takes effect.
    std::uint64_t m_endSchedule = 0;
};

} // namespace quelto
