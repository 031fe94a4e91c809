// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>

namespace quelto {

struct DesktopNotification {
    /// Chosen by the caller. A notification replaces the earlier one with the same id.
    QString id;
    QString title;
    /// Plain text: markup is shown literally.
    QString body;
    /// The label of the default action, for desktops that show a button; empty if a click does nothing.
    QString action = {};
    /// A click also counts after a restart of the program. See takeOver.
    bool outlivesProgram = false;
    /// For a notice that only matters now: it is closed after this time, is shown above full-screen windows where the
    /// desktop permits that, and is not kept in a list. Zero leaves all of this to the desktop.
    std::chrono::milliseconds displayTime{0};

    bool operator==(const DesktopNotification&) const = default;
};

/// Notifications that the desktop shows, also while the program's window is hidden.
///
/// Thread: main; never blocks.
/// Errors: none. Without a notification server the notifications are lost.
class DesktopNotifications : public QObject {
    Q_OBJECT

public:
    virtual void show(const DesktopNotification& notification) = 0;
    /// Makes clicks count on the notifications that outlive the program and that its last run left on the screen. Call
    /// it once. isWanted: whether the notification with that id still has a meaning.
    virtual void takeOver(const std::function<bool(const QString& id)>& isWanted) = 0;

Q_SIGNALS:
    /// The user activated the notification's default action. An activation token of the desktop is in the
    /// environment while the signal is emitted; see ActivationToken.h.
    void clicked(const QString& id);
};

} // namespace quelto
