// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchClips.h"

#include "base/files/FileName.h"
#include "base/files/FileStat.h"

#include <fcntl.h>

namespace quelto {

namespace {

QList<MatchSession> allMatches(const MatchTracker& tracker)
{
    auto matches = tracker.sessions();
    if (const auto& current = tracker.current()) {
        matches.append(*current);
    }
    return matches;
}

std::optional<Clip> tryClip(const QString& path)
{
    const auto stat = tryFileStat(AT_FDCWD, encodeFileName(path).constData());
    return stat && stat->isFile ? std::optional(Clip(path, stat)) : std::nullopt;
}

} // namespace

struct MatchClips::LookUp {
    /// Whether the paths are those of all matches.
    bool isComplete = false;
    QStringList paths;
    /// Clips that may come back to their matches.
    QStringList trashed;
    ClipsByPath found;
    QStringList restored;

    void run()
    {
        for (const auto& path : paths) {
            found.insert(path, tryClip(path));
        }
        for (const auto& path : trashed) {
            if (const auto clip = tryClip(path)) {
                found.insert(path, clip);
                restored.append(path);
            }
        }
    }
};

MatchClips::MatchClips(const Dependencies& dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
{
    const auto followMatches = [this] {
        update();
        Q_EMIT changed();
        refresh();
    };
    connect(&m_dependencies.tracker, &MatchTracker::sessionsChanged, this, followMatches);
    connect(&m_dependencies.tracker, &MatchTracker::currentChanged, this, followMatches);
    // Before the match changes: a clip with a new name must not disappear until it is looked up.
    connect(&m_dependencies.tracker, &MatchTracker::clipRenamed, this,
            [this](const QString& /*from*/, const QString& to) { m_known.insert(to, Clip(to)); });
    connect(&m_dependencies.library, &ClipLibrary::clipsChanged, this, &MatchClips::refresh);
    refresh();
}

MatchClips::~MatchClips()
{
    m_replies->detach();
}

void MatchClips::refresh()
{
    m_isRequested = true;
    startLookUp();
}

void MatchClips::startLookUp()
{
    if (m_isLookingUp || !m_isRequested) {
        return;
    }
    m_isRequested = false;
    m_isLookingUp = true;
    auto lookUp = std::make_shared<LookUp>();
    lookUp->isComplete = m_dependencies.tracker.isLoaded();
    for (const auto& match : allMatches(m_dependencies.tracker)) {
        lookUp->paths += match.clips;
        lookUp->trashed += match.trashed;
    }
    m_dependencies.work.post([this, lookUp = std::move(lookUp), replies = m_replies] {
        lookUp->run();
        replies->post([this, lookUp] { finishLookUp(*lookUp); });
    });
}

void MatchClips::finishLookUp(const LookUp& lookUp)
{
    m_isLookingUp = false;
    m_known = lookUp.found;
    const bool isFirst = lookUp.isComplete && !std::exchange(m_isLoaded, true);
    if (update() || isFirst) {
        Q_EMIT changed();
    }
    if (!m_isRequested) {
        // Otherwise the files may have been moved to the trash since.
        m_dependencies.tracker.takeBack(lookUp.restored);
    }
    startLookUp();
}

bool MatchClips::update()
{
    const auto matches = allMatches(m_dependencies.tracker);
    QHash<QUuid, QList<Clip>> clips;
    for (const auto& match : matches) {
        auto& present = clips[match.id];
        for (const auto& path : match.clips) {
            if (const auto clip = m_known.value(path)) {
                present.append(*clip);
            }
        }
        std::ranges::stable_sort(present, {}, &Clip::date);
    }
    const bool isChanged = clips != m_clips;
    m_clips = clips;
    return isChanged;
}

} // namespace quelto
