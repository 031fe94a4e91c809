// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/applications/WindowIdentity.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QTemporaryFile>
#include <QTimer>

#include <functional>

namespace quelto {

/// Follows the active window by a script in KWin, which reports over the bus. Wayland itself tells a program nothing
/// about the windows of others.
///
/// KWin may restart: the script is then loaded again. A KWin that starts has its name on the bus a moment before it
/// takes scripts, so loading is tried for ten seconds. Destruction unloads the script.
///
/// Thread: one with an event loop, on which it is created. Never blocks, except destruction for a moment.
/// Errors: none. Without KWin no window is active.
class KWinActiveWindow final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.quelto.ActiveWindow")

public:
    /// Nothing if no window is active.
    using OnChange = std::function<void(const std::optional<WindowIdentity>& window)>;

    KWinActiveWindow(const QDBusConnection& bus, OnChange onChange);
    ~KWinActiveWindow() override;
    KWinActiveWindow(const KWinActiveWindow&) = delete;
    KWinActiveWindow& operator=(const KWinActiveWindow&) = delete;

    /// Whether KWin is on the bus. Waits for the bus, but not for KWin.
    static bool isAvailable(const QDBusConnection& bus);

public Q_SLOTS:
    /// Called by the script over the bus.
    void ActiveWindowChanged(const QString& report);

private:
    using OnReply = std::function<void(const QDBusMessage& reply)>;

    void setOwner(const QString& owner);
    void load();
    void run(int script);
    void loadAgainLater();
    QDBusMessage scriptingCall(const QString& method, const QVariantList& arguments) const;
    /// Drops the reply if KWin was replaced meanwhile.
    void asyncCall(const QDBusMessage& call, OnReply onReply);

    QDBusConnection m_bus;
    OnChange m_onChange;
    QDBusServiceWatcher m_owners;
    /// KWin's unique bus name; empty if it does not run.
    QString m_owner;
    QTimer m_untilNextAttempt;
    int m_failedAttempts = 0;
    /// KWin reads it some time after it was asked to run it.
    QTemporaryFile m_script;
};

} // namespace quelto
