// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMultiHash>
#include <QString>

struct inotify_event;

namespace quelto {

/// The changes of a watched folder since the last call.
struct FolderChanges {
    /// Clips were created, removed or renamed.
    bool hasNewEntries = false;
    /// A clip file was closed after writing, or its attributes changed.
    bool hasNewContents = false;
    /// The path leads to another folder now, or to none: create a new WatchedFolder.
    bool isLost = false;
};

/// An inotify watch of one folder and of the path that leads to it, active from construction on. Ignores files that are
/// not clips.
///
/// If the folder is missing or unreadable, watches for it to appear. Follows symbolic links in the path, and watches
/// the links and the folders that they lead through.
///
/// Thread: any, one at a time.
class WatchedFolder {
public:
    explicit WatchedFolder(const QString& path);
    ~WatchedFolder();
    WatchedFolder(WatchedFolder&& other) noexcept;
    WatchedFolder& operator=(WatchedFolder&& other) noexcept;

    /// Becomes readable when something changed. Negative if the system has no inotify instances left; no change is
    /// reported then.
    int descriptor() const noexcept { return m_descriptor; }
    FolderChanges takeChanges();

private:
    void watch(const QByteArray& folder);
    void watchPathTo(const QByteArray& folder, bool isWatched, int& linksLeft);
    int addWatch(const QByteArray& path, std::uint32_t events) const;
    void add(const inotify_event& event, FolderChanges& changes) const;

    int m_descriptor = -1;
    /// The folder's own watch; negative if it cannot be watched.
    int m_folder = -1;
    /// The watches of the parent folders, each with the name of the next path component in it.
    QMultiHash<int, QByteArray> m_parents;
};

} // namespace quelto
