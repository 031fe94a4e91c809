// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/ClipLibrary.h"

#include "base/files/FileName.h"
#include "base/files/FileStat.h"
#include "base/files/RenameToFreeName.h"
#include "library/naming/ClipGame.h"
#include "library/naming/ClipMeta.h"
#include "library/naming/ClipName.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QPointer>

#include <fcntl.h>

namespace quelto {

namespace {

constexpr std::chrono::milliseconds QuietTime{400};

} // namespace

/// One scan of the folder: first its input, then its result.
struct ClipLibrary::FolderScan {
    QString folder;
    bool isWatchRequested = false;
    /// The list of the previous scan, then of this one.
    ClipList list;
    std::optional<WatchedFolder> watch;

    void run()
    {
        QDir().mkpath(folder);
        // Before listing, so that no change goes unnoticed between the two.
        if (isWatchRequested) {
            watch.emplace(folder);
        }
        list = scanClips(folder, list);
    }
};

ClipLibrary::ClipLibrary(Dependencies dependencies, QObject* parent)
    : QObject(parent)
    , m_dependencies(dependencies)
    , m_replies(std::make_shared<DetachableQueue>(m_dependencies.main))
{
    connect(&m_watch, &FolderWatch::entriesChanged, this, &ClipLibrary::scheduleReload);
    connect(&m_watch, &FolderWatch::contentsChanged, this, [this] {
        // Repeated writes to a file must not postpone the reload forever.
        if (!m_isReloadScheduled) {
            scheduleReload();
        }
    });
    connect(&m_watch, &FolderWatch::lost, this, &ClipLibrary::renewWatch);
    connect(&m_dependencies.settings, &AppSettings::saveFolderChanged, this, &ClipLibrary::followFolder);
    // A clip whose name has no game shows the translated word for "Other".
    connect(&m_dependencies.settings, &AppSettings::languageChanged, this, [this] { reload(); });
    followFolder();
}

ClipLibrary::~ClipLibrary()
{
    m_replies->detach();
}

void ClipLibrary::followFolder()
{
    const auto folder = m_dependencies.settings.saveFolder();
    if (folder == m_folder) {
        return;
    }
    m_folder = folder;
    m_isScanOutdated = m_isScanning;
    m_isWatchRequested = true;
    reload();
}

void ClipLibrary::renewWatch()
{
    m_isWatchRequested = true;
    scheduleReload();
}

QList<GameCount> ClipLibrary::games() const
{
    const auto other = ClipGame::none().title();
    QHash<QString, GameCount> counts;
    for (const auto& clip : clips()) {
        auto& game = counts[clip.game];
        ++game.count;
        game.isOther = game.isOther || (clip.game == other && !clip.hasOwnGame());
    }
    QList<GameCount> games;
    for (auto each = counts.cbegin(); each != counts.cend(); ++each) {
        games.append({.name = each.key(), .count = each.value().count, .isOther = each.value().isOther});
    }
    std::ranges::sort(games, [](const GameCount& left, const GameCount& right) {
        return left.count != right.count ? left.count > right.count : left.name < right.name;
    });
    return games;
}

void ClipLibrary::reload(std::function<void()> done)
{
    if (done) {
        m_nextCallbacks.append(std::move(done));
    }
    m_isScanRequested = true;
    startScan();
}

void ClipLibrary::startScan()
{
    if (m_isScanning || !m_isScanRequested) {
        return;
    }
    m_isScanRequested = false;
    m_isScanning = true;
    m_isScanOutdated = false;
    m_callbacks += std::exchange(m_nextCallbacks, {});
    auto scan = std::make_shared<FolderScan>(FolderScan{.folder = m_folder,
                                                        .isWatchRequested = std::exchange(m_isWatchRequested, false),
                                                        .list = m_list,
                                                        .watch = std::nullopt});
    m_dependencies.work.post([scan = std::move(scan), self = QPointer(this), replies = m_replies] {
        scan->run();
        replies->post([scan, self] {
            if (auto* const library = self.data()) {
                library->finishScan(*scan);
            }
        });
    });
}

void ClipLibrary::finishScan(FolderScan& scan)
{
    m_isScanning = false;
    if (m_isScanOutdated) {
        m_isScanRequested = true;
        m_isWatchRequested |= scan.isWatchRequested;
        startScan();
        return;
    }
    if (scan.watch) {
        m_watch.follow(std::move(*scan.watch));
    }
    const auto callbacks = std::exchange(m_callbacks, {});
    // A callback may destroy the library.
    const QPointer<ClipLibrary> self(this);
    publish(scan.list);
    for (const auto& done : callbacks) {
        done();
    }
    if (self) {
        startScan();
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
    const auto hasSidecar = [&clip] {
        return tryFileStat(AT_FDCWD, encodeFileName(ClipMeta::pathFor(clip.path)).constData()).has_value();
    };
    // Without room for its new name, the sidecar would be lost.
    if ((!hasRoomForSidecar(*name) && hasSidecar()) ||
        renameToFreeName(AT_FDCWD, encodeFileName(clip.path).constData(), encodeFileName(path).constData()) != 0) {
        return std::nullopt;
    }
    // The clip may be the one of the list that changes below.
    const auto oldPath = clip.path;
    ClipMeta::move(oldPath, path);
    const Clip renamed(path);
    // The list shows the new name at once; a running scan may still return the old one.
    m_isScanOutdated = m_isScanning;
    const auto listed = std::ranges::find(m_list.clips, oldPath, &Clip::path);
    const bool isListed = listed != m_list.clips.end();
    if (isListed) {
        *listed = renamed;
    }
    Q_EMIT clipRenamed(oldPath, path);
    if (isListed) {
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
    m_dependencies.trash.moveToTrash(paths, [self = QPointer(this), completion] {
        // The trash replies on its own thread and may outlive the main queue.
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
