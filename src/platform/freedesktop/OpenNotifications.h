// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopNotifications.h"

#include <QDateTime>
#include <QList>

namespace quelto {

/// A notification on the screen whose click counts after a restart of the program.
struct OpenNotification {
    DesktopNotification notification;
    /// The unique bus name of the server that shows it, and the server's id for it.
    QString server;
    uint serverId = 0;
    QDateTime shown;

    bool operator==(const OpenNotification&) const = default;
};

/// The file with the notifications that the next start of the program takes over. It ends with the login session, as
/// the names of servers do.
///
/// Thread: main. The folder is in memory, so calls do not block.
/// Errors: none. Without the file, clicks are lost at a restart.
class OpenNotifications {
public:
    /// In $XDG_RUNTIME_DIR; empty without one.
    static QString defaultPath();

    /// An empty path for no file.
    explicit OpenNotifications(QString path = defaultPath());

    QList<OpenNotification> load() const;
    void save(const QList<OpenNotification>& notifications) const;

private:
    QString m_path;
};

} // namespace quelto
