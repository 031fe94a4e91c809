// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "base/tasks/TaskQueue.h"
#include "library/clips/ClipScan.h"
#include "library/clips/FolderWatch.h"
#include "library/naming/Clip.h"
#include "platform/Trash.h"

#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace quelto {

struct GameCount {
    QString name;
    qsizetype count = 0;

    bool operator==(const GameCount&) const = default;
};

/// The clips in the save folder. It has no store of its own: the folder is the database, and a reload rebuilds the list
/// from the names in it. What others change in the folder shows shortly after.
///
/// Thread: main. The folder is read on the work queue, so that a large or slow one does not hold the window up.
class ClipLibrary : public QObject {
    Q_OBJECT

public:
    /// All outlive the library. A task of the work owns what it needs, and may end after everything else.
    struct Dependencies {
        const AppSettings& settings;
        Trash& trash;
        TaskQueue& main;
        TaskQueue& work;
    };

    /// Reads the save folder of the settings for the first time, and again whenever they name another.
    explicit ClipLibrary(Dependencies parts, QObject* parent = nullptr);
    ~ClipLibrary() override;
    ClipLibrary(const ClipLibrary&) = delete;
    ClipLibrary& operator=(const ClipLibrary&) = delete;

    /// Newest first.
    const QList<Clip>& clips() const { return m_list.clips; }
    /// Whether the list was read at least once; until then an empty one says nothing.
    bool isLoaded() const { return m_isLoaded; }
    /// The one with most clips first.
    QList<GameCount> games() const;

    /// Reads the folder anew, and makes it if it is missing. A folder that cannot be read is like an empty one.
    /// Returns at once; `done` is called when a list is in force that was read from now on. Requests that come while
    /// the folder is being read share the next reading.
    void reload(std::function<void()> done = {});
    /// Reloads when nobody has asked for it any more for 0.4 s.
    void scheduleReload();

    /// Gives the file another title. The name holds the game and the title only: the date, and the tier of an automatic
    /// clip, go unless the title has them. The clip under its new name, which is in the list at once; nothing if the
    /// title is empty, the name is taken or the file system does not want it.
    std::optional<Clip> rename(const Clip& clip, const QString& title);
    /// Moves the file to the trash.
    void trash(const Clip& clip);
    /// Moves files to the trash, all in one go, without their sidecars. The completion runs on the main thread after
    /// the list was rebuilt; at once where there is nothing to do. What fails stays where it is.
    void trash(const QStringList& paths, const std::function<void()>& completion = {});

Q_SIGNALS:
    /// Only when the list is another one than before, and once when it was read for the first time.
    void clipsChanged();

private:
    struct Reading;
    struct Door;

    void followFolder();
    void startReading();
    void finishReading(Reading& reading);
    void watchAnew();
    void publish(const ClipList& list);

    Dependencies m_dependencies;
    std::shared_ptr<Door> m_door;
    FolderWatch m_watch;
    QString m_folder;
    ClipList m_list;
    bool m_isLoaded = false;
    bool m_isReading = false;
    /// Somebody asked for a reading that has not begun.
    bool m_isReadingWanted = false;
    /// What is being read is of another folder, or of before a change that the list shows already.
    bool m_isReadingStale = false;
    bool m_isWatchWanted = true;
    /// Of the requests that the reading under way answers, and of the later ones.
    QList<std::function<void()>> m_waiting;
    QList<std::function<void()>> m_waitingForNext;
    /// Counts scheduled reloads, so that only the latest one that still stands is acted on.
    std::uint64_t m_schedule = 0;
    bool m_isReloadScheduled = false;
};

} // namespace quelto
