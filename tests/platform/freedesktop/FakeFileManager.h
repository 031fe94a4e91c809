// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace quelto {

/// A file manager on a separate bus connection that records what it should show.
class FakeFileManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManager();
    ~FakeFileManager() override;
    FakeFileManager(const FakeFileManager&) = delete;
    FakeFileManager& operator=(const FakeFileManager&) = delete;

    /// For each call the URIs and the startup id, separated by spaces.
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString& startupId);

private:
    QDBusConnection m_bus;
};

} // namespace quelto
