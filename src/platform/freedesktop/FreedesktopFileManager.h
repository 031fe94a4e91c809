// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"

#include <QDBusConnection>
#include <QObject>

namespace quelto {

/// The file manager that implements org.freedesktop.FileManager1 on the session bus. If none does, uses the desktop's
/// default program for folders, which cannot select a file.
class FreedesktopFileManager final : public FileManager {
public:
    explicit FreedesktopFileManager(const QDBusConnection& bus = QDBusConnection::sessionBus());

    void reveal(const QString& path) override;
    void openFolder(const QString& path) override;

private:
    QDBusConnection m_bus;
    /// Parent of the pending calls.
    QObject m_pendingCalls;
};

} // namespace quelto
