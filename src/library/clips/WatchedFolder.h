// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMultiHash>
#include <QString>

struct inotify_event;

namespace quelto {

/// What happened in a watched folder since it was asked the last time.
struct FolderChanges {
    /// Clips appeared, vanished or got another name.
    bool hasNewEntries = false;
    /// A clip's file was written and closed, or got another date.
    bool hasNewContents = false;
    /// The path leads elsewhere now, or nowhere: it has to be watched anew.
    bool isLost = false;
};

/// The kernel's watch of one folder, from the time on at which it is made. What happens to files that are no clips is
/// no news.
///
/// Where there is no such folder, or none that may be read, it watches for one to appear. Links on the way are
/// followed, and watched as well as what they lead through.
///
/// Thread: any, one at a time.
class WatchedFolder {
public:
    explicit WatchedFolder(const QString& path);
    ~WatchedFolder();
    WatchedFolder(WatchedFolder&& other) noexcept;
    WatchedFolder& operator=(WatchedFolder&& other) noexcept;

    /// Readable when there is news. Negative where the system has no watches left: then there never is any.
    int descriptor() const noexcept { return m_descriptor; }
    FolderChanges takeChanges();

private:
    void watch(const QByteArray& folder);
    void watchWayTo(const QByteArray& folder, bool isWatched, int& linksLeft);
    int addWatch(const QByteArray& path, std::uint32_t events) const;
    void add(const inotify_event& event, FolderChanges& news) const;

    int m_descriptor = -1;
    /// The folder's own; negative where it cannot be watched.
    int m_folder = -1;
    /// Those of the folders on the way, with the names of what it goes on with there.
    QMultiHash<int, QByteArray> m_way;
};

} // namespace quelto
