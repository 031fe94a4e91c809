// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace quelto {

struct DesktopNotification {
    /// The caller's own name for the notification: a later one of the same id replaces the earlier one.
    QString id;
    QString title;
    /// Plain text. What looks like markup is shown as it stands.
    QString body;
};

/// Notices that the desktop shows in its own way, also while the program's window is hidden.
///
/// Thread: main, which is never kept waiting. Errors: none. Where nothing shows notifications, they are lost.
class DesktopNotifications : public QObject {
    Q_OBJECT

public:
    virtual void show(const DesktopNotification& notification) = 0;

Q_SIGNALS:
    /// The user answered the notification of that id by its default action. Where the desktop gave a token for raising
    /// a window on that account, it is in the environment (XDG_ACTIVATION_TOKEN, DESKTOP_STARTUP_ID) by now.
    void clicked(const QString& id);
};

} // namespace quelto
