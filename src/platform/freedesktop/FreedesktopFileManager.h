// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileManager.h"

#include <QDBusConnection>
#include <QObject>

namespace quelto {

/// Whatever answers to org.freedesktop.FileManager1 on the session bus. Where nothing does, the program that the
/// desktop opens folders with, which knows no selection.
class FreedesktopFileManager final : public FileManager {
public:
    explicit FreedesktopFileManager(const QDBusConnection& bus = QDBusConnection::sessionBus());

    void reveal(const QString& path) override;
    void openFolder(const QString& path) override;

private:
    QDBusConnection m_bus;
    /// The calls under way end with it.
    QObject m_calls;
};

} // namespace quelto
