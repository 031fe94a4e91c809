// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "base/tasks/DetachableQueue.h"
#include "library/clips/ClipScan.h"
#include "library/clips/FolderWatch.h"
#include "library/naming/Clip.h"
#include "platform/Trash.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace quelto {

/// The clips that are listed under one name.
struct GameCount {
    QString name;
    qsizetype count = 0;
    /// Whether the name stands for clips whose file names hold no game.
    bool isOther = false;

    bool operator==(const GameCount&) const = default;
};

/// The live list of the clips in the save folder. It has no store of its own: the folder is the database, and a reload
/// rebuilds the list from the file names. Changes that other programs make in the folder appear shortly afterwards.
///
/// Thread: main. The folder is scanned on the work queue, so a large or slow folder does not block the window.
class ClipLibrary : public QObject {
    Q_OBJECT

public:
    /// All outlive the library. A task on the work queue owns its data and may finish after everything else is gone.
    struct Dependencies {
        const AppSettings& settings;
        Trash& trash;
        TaskQueue& main;
        TaskQueue& work;
    };

    /// Scans the save folder of the settings, and scans again whenever the setting changes.
    explicit ClipLibrary(Dependencies dependencies, QObject* parent = nullptr);
    ~ClipLibrary() override;
    ClipLibrary(const ClipLibrary&) = delete;
    ClipLibrary& operator=(const ClipLibrary&) = delete;

    /// Newest first.
    const QList<Clip>& clips() const { return m_list.clips; }
    /// Whether the first scan is complete. Until then an empty list has no meaning.
    bool isLoaded() const { return m_isLoaded; }
    /// Sorted by count, largest first; equal counts by name.
    QList<GameCount> games() const;

    /// Scans the folder again, and creates it if it is missing. A folder that cannot be read counts as empty. Returns
    /// at once; calls `done` when the list comes from a scan that started after this call. Requests that arrive during
    /// a scan share the next one.
    void reload(std::function<void()> done = {});
    /// Reloads 0.4 s after the last call.
    void scheduleReload();

    /// Gives the file another title. The new name holds the game and the title only: the date, and the tier of an
    /// automatic clip, are dropped unless the title contains them. Returns the clip under its new name, which is in the
    /// list at once; nothing if the title is empty, the name is taken or the file system rejects it.
    std::optional<Clip> rename(const Clip& clip, const QString& title);
    /// Moves the file to the trash.
    void trash(const Clip& clip);
    /// Moves all files to the trash in one call, and deletes their sidecars. The completion runs on the main thread
    /// after the list was rebuilt, or at once if there are no paths. A file that cannot be moved stays where it is.
    void trash(const QStringList& paths, const std::function<void()>& completion = {});

Q_SIGNALS:
    /// Emitted after the first scan, and whenever the list differs from the previous one.
    void clipsChanged();
    /// The list shows the new name already. Emitted before clipsChanged.
    void clipRenamed(const QString& from, const QString& to);

private:
    struct FolderScan;

    void followFolder();
    void startScan();
    void finishScan(FolderScan& scan);
    void renewWatch();
    void publish(const ClipList& list);

    Dependencies m_dependencies;
    std::shared_ptr<DetachableQueue> m_replies;
    FolderWatch m_watch;
    QString m_folder;
    ClipList m_list;
    bool m_isLoaded = false;
    bool m_isScanning = false;
    /// A scan was requested and has not started.
    bool m_isScanRequested = false;
    /// The running scan is of another folder, or older than a change that the list already shows.
    bool m_isScanOutdated = false;
    bool m_isWatchRequested = true;
    /// Callbacks of the requests that the running scan answers.
    QList<std::function<void()>> m_callbacks;
    /// Callbacks of the requests that the next scan answers.
    QList<std::function<void()>> m_nextCallbacks;
    /// Incremented by each scheduleReload, so that only the latest one reloads.
    std::uint64_t m_schedule = 0;
    bool m_isReloadScheduled = false;
};

} // namespace quelto
