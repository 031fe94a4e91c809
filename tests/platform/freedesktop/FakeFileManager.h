// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace quelto {

/// A file manager on a connection of its own that writes down what it is to show.
class FakeFileManager final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManager();
    ~FakeFileManager() override;
    FakeFileManager(const FakeFileManager&) = delete;
    FakeFileManager& operator=(const FakeFileManager&) = delete;

    /// The URIs of each call, and its startup id, parted by blanks.
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString& startupId);

private:
    QDBusConnection m_bus;
};

} // namespace quelto
