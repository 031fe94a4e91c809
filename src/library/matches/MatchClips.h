// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "library/clips/ClipLibrary.h"
#include "library/matches/MatchTracker.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

namespace quelto {

/// The clips of each match whose files exist. Follows the matches and the library.
///
/// A clip may be anywhere, because the save folder may have changed since. Files are therefore looked up one by one, in
/// the background: a disk can take long.
///
/// Thread: main.
class MatchClips : public QObject {
    Q_OBJECT

public:
    /// All outlive the object. A task on the work queue owns its data and may finish after everything else is gone.
    struct Dependencies {
        MatchTracker& tracker;
        const ClipLibrary& library;
        TaskQueue& main;
        TaskQueue& work;
    };

    explicit MatchClips(const Dependencies& dependencies, QObject* parent = nullptr);
    ~MatchClips() override;
    MatchClips(const MatchClips&) = delete;
    MatchClips& operator=(const MatchClips&) = delete;

    /// Whether the matches are loaded and their files have been looked up. Until then a missing clip has no meaning.
    bool isLoaded() const { return m_isLoaded; }
    /// The clips of a finished match or of the running one, oldest first. Empty for an unknown match.
    QList<Clip> clipsOf(const QUuid& match) const { return m_clips.value(match); }
    /// Looks the files up again. Files outside the save folder can come and go unnoticed.
    void refresh();

Q_SIGNALS:
    /// Emitted after the first look-up, and when the clips or the data of any match change.
    void changed();

private:
    /// One look-up of files: first its input, then its result.
    struct LookUp;
    using ClipsByPath = QHash<QString, std::optional<Clip>>;

    void startLookUp();
    void finishLookUp(const LookUp& lookUp);
    /// Returns whether the clips of any match changed.
    bool update();

    Dependencies m_dependencies;
    std::shared_ptr<DetachableQueue> m_replies;
    bool m_isLoaded = false;
    bool m_isLookingUp = false;
    /// A look-up was requested and has not started.
    bool m_isRequested = false;
    /// What is known of each file; nothing for a file that does not exist.
    ClipsByPath m_known;
    QHash<QUuid, QList<Clip>> m_clips;
};

} // namespace quelto
