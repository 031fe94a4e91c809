// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipLibrary.h"

#include "base/files/RenameToFreeName.h"
#include "library/naming/ClipMeta.h"
#include "library/naming/ClipName.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QPointer>

#include <climits>

#include <fcntl.h>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds QuietTime{400};

/// The sidecar's name is the longer one; a clip must not lose its markers to its own title.
bool isTooLongForSidecar(const QString& oldPath, const QString& newPath)
{
    const auto name = QFile::encodeName(QFileInfo(ClipMeta::pathFor(newPath)).fileName());
    return name.size() > NAME_MAX && QFile::exists(ClipMeta::pathFor(oldPath));
}

} // namespace

/// One reading of the folder: what it is to do, and then what it found.
struct ClipLibrary::Reading {
    QString folder;
    bool isToWatch = false;
    /// What the reading before found, and then this one.
    ClipList list;
    std::optional<WatchedFolder> watch;

    void read()
    {
        QDir().mkpath(folder);
        // Before the list, so that nothing can happen unseen in between.
        if (isToWatch) {
            watch.emplace(folder);
        }
        list = clipsIn(folder, list);
    }
};

/// The way from the work to the main queue; closed when the library ends, which a reading may outlive.
struct ClipLibrary::Door {
    void post(Task task)
    {
        const std::scoped_lock guard(lock);
        if (main != nullptr) {
            main->post(std::move(task));
        }
    }

    void close()
    {
        const std::scoped_lock guard(lock);
        main = nullptr;
    }

    std::mutex lock;
    TaskQueue* main = nullptr;
};

ClipLibrary::ClipLibrary(Dependencies parts, QObject* parent)
    : QObject(parent)
    , m_dependencies(parts)
    , m_door(std::make_shared<Door>())
{
    m_door->main = &m_dependencies.main;
    connect(&m_watch, &FolderWatch::entriesChanged, this, &ClipLibrary::scheduleReload);
    connect(&m_watch, &FolderWatch::contentsChanged, this, [this] {
        // A file that is written to again and again must not put the list off for ever.
        if (!m_isReloadScheduled) {
            scheduleReload();
        }
    });
    connect(&m_watch, &FolderWatch::lost, this, &ClipLibrary::watchAnew);
    connect(&m_dependencies.settings, &AppSettings::saveFolderChanged, this, &ClipLibrary::followFolder);
    // The game of a clip that names none is a word of the language.
    connect(&m_dependencies.settings, &AppSettings::languageChanged, this, [this] { reload(); });
    followFolder();
}

ClipLibrary::~ClipLibrary()
{
    m_door->close();
}

void ClipLibrary::followFolder()
{
    const auto folder = QDir(m_dependencies.settings.saveFolder()).absolutePath();
    if (folder == m_folder) {
        return;
    }
    m_folder = folder;
    m_isReadingStale = m_isReading;
    m_isWatchWanted = true;
    reload();
}

void ClipLibrary::watchAnew()
{
    m_isWatchWanted = true;
    scheduleReload();
}

QList<GameCount> ClipLibrary::games() const
{
    QHash<QString, qsizetype> counts;
    for (const auto& clip : clips()) {
        ++counts[clip.game];
    }
    QList<GameCount> games;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each) {
        games.append({.name = each.key(), .count = each.value()});
    }
    std::ranges::sort(games, [](const GameCount& left, const GameCount& right) {
        return left.count != right.count ? left.count > right.count : left.name < right.name;
    });
    return games;
}

void ClipLibrary::reload(std::function<void()> done)
{
    if (done) {
        m_waitingForNext.append(std::move(done));
    }
    m_isReadingWanted = true;
    startReading();
}

void ClipLibrary::startReading()
{
    if (m_isReading || !m_isReadingWanted) {
        return;
    }
    m_isReadingWanted = false;
    m_isReading = true;
    m_isReadingStale = false;
    m_waiting += std::exchange(m_waitingForNext, {});
    auto reading = std::make_shared<Reading>();
    reading->folder = m_folder;
    reading->isToWatch = std::exchange(m_isWatchWanted, false);
    reading->list = m_list;
    m_dependencies.work.post([reading = std::move(reading), self = QPointer(this), door = m_door] {
        reading->read();
        door->post([reading, self] {
            if (auto* const library = self.data()) {
                library->finishReading(*reading);
            }
        });
    });
}

void ClipLibrary::finishReading(Reading& reading)
{
    m_isReading = false;
    if (m_isReadingStale) {
        m_isReadingWanted = true;
        m_isWatchWanted |= reading.isToWatch;
        startReading();
        return;
    }
    if (reading.watch) {
        m_watch.follow(std::move(*reading.watch));
    }
    const auto served = std::exchange(m_waiting, {});
    const QPointer<ClipLibrary> self(this);
    publish(reading.list);
    for (const auto& done : served) {
        done();
    }
    if (self) {
        startReading();
    }
}

void ClipLibrary::publish(const ClipList& list)
{
    const bool isFirst = !std::exchange(m_isLoaded, true);
    const bool isChanged = list.clips != m_list.clips;
    m_list = list;
    if (isFirst || isChanged) {
        Q_EMIT clipsChanged();
    }
}

void ClipLibrary::scheduleReload()
{
    m_isReloadScheduled = true;
    m_dependencies.main.postAfter(QuietTime, [self = QPointer(this), schedule = ++m_schedule] {
        auto* const library = self.data();
        if (library != nullptr && library->m_schedule == schedule) {
            library->m_isReloadScheduled = false;
            library->reload();
        }
    });
}

std::optional<Clip> ClipLibrary::rename(const Clip& clip, const QString& title)
{
    const QFileInfo file(clip.path);
    const auto name = renamedClipFileName(clip.game, title, file.suffix());
    if (!name) {
        return std::nullopt;
    }
    const auto path = file.path() + u'/' + *name;
    if (isTooLongForSidecar(clip.path, path) ||
        renameToFreeName(AT_FDCWD, QFile::encodeName(clip.path).constData(), QFile::encodeName(path).constData()) !=
            0) {
        return std::nullopt;
    }
    ClipMeta::move(clip.path, path);
    const Clip renamed(path);
    // At once, and not taken back by a reading that began before.
    m_isReadingStale = m_isReading;
    if (const auto listed = std::ranges::find(m_list.clips, clip.path, &Clip::path); listed != m_list.clips.end()) {
        *listed = renamed;
        Q_EMIT clipsChanged();
    }
    reload();
    return renamed;
}

void ClipLibrary::trash(const Clip& clip)
{
    trash(QStringList(clip.path));
}

void ClipLibrary::trash(const QStringList& paths, const std::function<void()>& completion)
{
    if (paths.isEmpty()) {
        if (completion) {
            completion();
        }
        return;
    }
    for (const auto& path : paths) {
        ClipMeta::remove(path);
    }
    m_dependencies.trash.recycle(paths, [self = QPointer(this), completion] {
        // The trash answers on a thread of its own, and may outlive the main queue.
        QMetaObject::invokeMethod(
            qApp,
            [self, completion] {
                if (self) {
                    self->reload(completion);
                } else if (completion) {
                    completion();
                }
            },
            Qt::QueuedConnection);
    });
}

} // namespace quelto
