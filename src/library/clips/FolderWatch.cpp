// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/clips/FolderWatch.h"

#include <fcntl.h>
#include <unistd.h>

namespace quelto {

FolderWatch::FolderWatch()
    : m_mounts(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC))
{
    if (m_mounts >= 0) {
        m_mountNotifier = std::make_unique<QSocketNotifier>(m_mounts, QSocketNotifier::Exception);
        connect(m_mountNotifier.get(), &QSocketNotifier::activated, this, &FolderWatch::lost);
    }
}

FolderWatch::~FolderWatch()
{
    m_mountNotifier.reset();
    if (m_mounts >= 0) {
        ::close(m_mounts);
    }
}

void FolderWatch::follow(WatchedFolder folder)
{
    m_folderNotifier.reset();
    m_folder.emplace(std::move(folder));
    if (m_folder->descriptor() >= 0) {
        m_folderNotifier = std::make_unique<QSocketNotifier>(m_folder->descriptor(), QSocketNotifier::Read);
        connect(m_folderNotifier.get(), &QSocketNotifier::activated, this, &FolderWatch::emitChanges);
    }
}

void FolderWatch::emitChanges()
{
    const auto changes = m_folder->takeChanges();
    if (changes.isLost) {
        Q_EMIT lost();
    }
    if (changes.hasNewEntries) {
        Q_EMIT entriesChanged();
    }
    if (changes.hasNewContents) {
        Q_EMIT contentsChanged();
    }
}

} // namespace quelto
