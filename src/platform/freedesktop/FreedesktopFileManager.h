// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/tasks/DetachableQueue.h"
#include "base/tasks/MainQueue.h"
#include "base/tasks/SerialQueue.h"
#include "platform/FileManager.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace quelto {

/// The file manager that implements org.freedesktop.FileManager1 on the session bus. If none does, uses the desktop's
/// default program for folders, which cannot select a file.
///
/// Folders are created in the background. The destructor waits for them, for at most three seconds.
class FreedesktopFileManager final : public FileManager {
public:
    explicit FreedesktopFileManager(const QDBusConnection& bus = QDBusConnection::sessionBus());
    ~FreedesktopFileManager() override;
    FreedesktopFileManager(const FreedesktopFileManager&) = delete;
    FreedesktopFileManager& operator=(const FreedesktopFileManager&) = delete;

    void reveal(const QString& path) override;
    void openFolder(const QString& path) override;

private:
    QDBusConnection m_bus;
    /// Parent of the pending calls.
    QObject m_pendingCalls;
    MainQueue m_main;
    /// Shared with tasks that hang on a disk.
    std::shared_ptr<DetachableQueue> m_replies = std::make_shared<DetachableQueue>(m_main);
    /// Nothing before the first folder.
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quelto
