// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/WatchedFolder.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <optional>

namespace quelto {

/// Reports the changes of one watched folder as signals. Also reports mounted and unmounted volumes, which can replace
/// the folder behind the path.
///
/// Thread: main.
class FolderWatch final : public QObject {
    Q_OBJECT

public:
    FolderWatch();
    ~FolderWatch() override;
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// Replaces the previous folder and closes its descriptor.
    void follow(WatchedFolder folder);

Q_SIGNALS:
    void entriesChanged();
    void contentsChanged();
    /// The path may lead to another folder now; call follow with a new WatchedFolder.
    void lost();

private:
    void emitChanges();

    int m_mounts = -1;
    std::optional<WatchedFolder> m_folder;
    // Declared last: the notifiers use the descriptors and are destroyed first.
    std::unique_ptr<QSocketNotifier> m_mountNotifier;
    std::unique_ptr<QSocketNotifier> m_folderNotifier;
};

} // namespace quelto
