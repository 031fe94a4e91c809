// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchTracker.h"

#include <QPointer>

namespace quelto {

namespace {

constexpr std::chrono::seconds EndDelay{10};

} // namespace

MatchTracker::MatchTracker(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies))
    , m_store(std::make_shared<LoadedStore>(LoadedStore{.store = m_dependencies.store, .sessions = {}}))
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
{
    // A match keeps its clips, whatever they are called.
    connect(&m_dependencies.library, &ClipLibrary::clipRenamed, this, &MatchTracker::renameClip);
    startLoading();
}

MatchTracker::~MatchTracker()
{
    m_replies->detach();
}

void MatchTracker::startLoading()
{
    m_dependencies.work.post([loaded = m_store, self = QPointer(this), replies = m_replies] {
        loaded->sessions = loaded->store.load();
        replies->post([stored = loaded->sessions, self] {
            if (auto* const tracker = self.data()) {
                tracker->finishLoading(stored);
            }
        });
    });
}

void MatchTracker::finishLoading(const QList<MatchSession>& stored)
{
    m_isLoaded = true;
    m_sessions += stored;
    Q_EMIT sessionsChanged();
    for (const auto& task : std::exchange(m_waitingTasks, {})) {
        task();
    }
}

void MatchTracker::whenLoaded(Task task)
{
    if (m_isLoaded) {
        task();
    } else {
        m_waitingTasks.append(std::move(task));
    }
}

std::optional<MatchSession> MatchTracker::session(const QUuid& id) const
{
    const auto found = std::ranges::find(m_sessions, id, &MatchSession::id);
    return found == m_sessions.end() ? std::nullopt : std::optional(*found);
}

void MatchTracker::gameStarted(const QString& game, const QString& hero)
{
    if (m_current && m_current->game == game) {
        if (m_current->hero.isEmpty()) {
            m_current->hero = hero;
        }
        ++m_endSchedule;
    } else {
        finish();
        m_current = MatchSession{.id = QUuid::createUuid(),
                                 .game = game,
                                 .hero = hero,
                                 .start = m_dependencies.now(),
                                 .end = std::nullopt,
                                 .clips = {},
                                 .trashed = {},
                                 .montage = std::nullopt};
    }
    Q_EMIT currentChanged();
}

void MatchTracker::gameEnded(const QString& game)
{
    if (!m_current || m_current->game != game) {
        return;
    }
    const QPointer<MatchTracker> tracker(this);
    m_dependencies.main.postAfter(EndDelay, [tracker, schedule = ++m_endSchedule] {
        auto* const self = tracker.data();
        if (self != nullptr && self->m_endSchedule == schedule) {
            self->finish();
        }
    });
}

void MatchTracker::heroChanged(const QString& hero)
{
    if (m_current && !hero.isEmpty()) {
        m_current->hero = hero;
        Q_EMIT currentChanged();
    }
}

void MatchTracker::clipSaved(const QString& path)
{
    if (m_current && !m_current->clips.contains(path)) {
        m_current->clips.append(path);
        Q_EMIT currentChanged();
    }
}

void MatchTracker::finish()
{
    if (!m_current) {
        return;
    }
    ++m_endSchedule;
    auto session = *std::exchange(m_current, std::nullopt);
    session.end = m_dependencies.now();
    Q_EMIT currentChanged();
    if (session.clips.isEmpty()) {
        return;
    }
    m_sessions.prepend(session);
    persist();
    Q_EMIT matchOver(notificationOf(session));
}

void MatchTracker::removeSession(const QUuid& id)
{
    whenLoaded([this, id] {
        m_sessions.removeIf([&id](const MatchSession& each) { return each.id == id; });
        persist();
    });
}

void MatchTracker::deleteSession(const QUuid& id, WithClips withClips)
{
    whenLoaded([this, id, withClips] {
        const auto found = session(id);
        if (!found) {
            return;
        }
        if (withClips == WithClips::yes) {
            m_dependencies.library.trash(found->clipFiles());
        }
        Q_EMIT sessionAboutToBeRemoved(id);
        removeSession(id);
    });
}

void MatchTracker::deleteClips(const QStringList& paths, const QUuid& id)
{
    m_leaving += paths;
    m_dependencies.library.trash(paths, [self = QPointer(this), paths] {
        if (auto* const tracker = self.data()) {
            for (const auto& path : paths) {
                tracker->m_leaving.removeOne(path);
            }
            // Receivers look for the files again, because some may have stayed.
            Q_EMIT tracker->sessionsChanged();
        }
    });
    whenLoaded([this, paths, id] {
        const auto found = std::ranges::find(m_sessions, id, &MatchSession::id);
        if (found == m_sessions.end()) {
            return;
        }
        const auto isDeleted = [&paths](const QString& each) { return paths.contains(each); };
        std::ranges::copy_if(found->clips, std::back_inserter(found->trashed), isDeleted);
        found->clips.removeIf(isDeleted);
        persist();
    });
}

void MatchTracker::takeBack(const QStringList& paths)
{
    bool isChanged = false;
    for (auto& session : m_sessions) {
        const auto isBack = [&](const QString& each) { return paths.contains(each) && !m_leaving.contains(each); };
        std::ranges::copy_if(session.trashed, std::back_inserter(session.clips), isBack);
        isChanged |= session.trashed.removeIf(isBack) > 0;
    }
    if (isChanged) {
        persist();
    }
}

void MatchTracker::renameClip(const QString& from, const QString& to)
{
    const auto rename = [from, to](MatchSession& session) {
        // A clip that had this name before is gone, and must not come back as this one.
        bool isChanged = session.clips.removeAll(to) + session.trashed.removeAll(to) > 0;
        if (const auto place = session.clips.indexOf(from); place >= 0) {
            session.clips[place] = to;
            isChanged = true;
        }
        return isChanged;
    };
    Q_EMIT clipRenamed(from, to);
    if (m_current && rename(*m_current)) {
        Q_EMIT currentChanged();
    }
    whenLoaded([this, rename] {
        bool isChanged = false;
        for (auto& session : m_sessions) {
            isChanged |= rename(session);
        }
        if (isChanged) {
            persist();
        }
    });
}

void MatchTracker::persist()
{
    // MatchStore limits the file only; all matches of this process stay in memory.
    m_dependencies.work.post([loaded = m_store, sessions = m_sessions, isComplete = m_isLoaded] {
        loaded->store.save(isComplete ? sessions : sessions + loaded->sessions);
    });
    Q_EMIT sessionsChanged();
}

} // namespace quelto
