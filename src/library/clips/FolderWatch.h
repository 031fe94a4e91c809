// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/clips/WatchedFolder.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <optional>

namespace quelto {

/// Tells of the news of one watched folder as they come, and of volumes that are mounted or unmounted: either may put
/// another folder in the watched one's place.
///
/// Thread: main.
class FolderWatch final : public QObject {
    Q_OBJECT

public:
    FolderWatch();
    ~FolderWatch() override;
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /// In place of the one before, whose descriptor is closed.
    void follow(WatchedFolder folder);

Q_SIGNALS:
    void entriesChanged();
    void contentsChanged();
    void lost();

private:
    void tell();

    int m_mounts = -1;
    std::optional<WatchedFolder> m_folder;
    // They look at the descriptors, and end before them.
    std::unique_ptr<QSocketNotifier> m_mountNotifier;
    std::unique_ptr<QSocketNotifier> m_folderNotifier;
};

} // namespace quelto
