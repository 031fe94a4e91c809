// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/portal/PortalResults.h"
#include "platform/portal/PortalSession.h"

#include <QElapsedTimer>

#include <optional>

namespace quelto {

struct PortalShortcutLimits {
    /// For each answer that does not depend on the user.
    std::chrono::milliseconds answer = std::chrono::seconds(10);
    /// If the release was missed, an activation after this time counts as a press. Desktops activate a held shortcut
    /// again every 30 to 40 ms.
    std::chrono::milliseconds repeatPause = std::chrono::seconds(2);
};

/// One global shortcut, in a session of org.freedesktop.portal.GlobalShortcuts. The desktop binds it to the keys that
/// the user chose there, which need not be the preferred ones. Destruction unbinds it.
///
/// Thread: main. Errors: none; a shortcut that the desktop does not bind is not bound.
class PortalShortcut final : public QObject {
    Q_OBJECT

public:
    struct Options {
        /// What the desktop tells the user about the shortcut.
        QString description;
        /// As shortcutTrigger() writes it. Empty for no preference.
        QString preferredTrigger;
        PortalShortcutLimits limits;
    };

    /// Called from the event loop.
    struct Events {
        /// isBusy(), isBound() or boundText() has changed.
        std::function<void()> onChanged;
        /// Called once for each press, however long the keys are held.
        std::function<void()> onPressed;
    };

    PortalShortcut(std::shared_ptr<PortalConnection> portal, Options options, Events events);
    ~PortalShortcut() override;
    PortalShortcut(const PortalShortcut&) = delete;
    PortalShortcut& operator=(const PortalShortcut&) = delete;

    /// Whether the portal is creating the session, which cannot be closed until then.
    bool isCreating() const { return m_step == Step::creating; }
    /// Whether the desktop, or the user in its dialog, has not answered yet.
    bool isBusy() const { return m_step != Step::done; }
    /// Whether the desktop has the shortcut with keys.
    bool isBound() const { return m_isBound; }
    /// The keys, as the desktop writes them for users.
    const QString& boundText() const { return m_boundText; }

    /// Unbinds the shortcut. It can be bound again when the call has finished.
    QDBusPendingCall close() { return m_session->close(); }

private Q_SLOTS:
    void activate(const QDBusMessage& message);
    void deactivate(const QDBusMessage& message);
    void readChange(const QDBusMessage& message);

private:
    enum class Step { creating, binding, done };

    /// What the desktop has, and the keys of the shortcut in it.
    using ListHandler = std::function<void(const PortalResponse&, const std::optional<QString>& trigger)>;

    void lookUp();
    void bindUnlessBound();
    void bind();
    void list(ListHandler onListed);
    PortalShortcutList shortcuts() const;
    void finish(const std::optional<QString>& trigger);
    bool isFromSession(const QDBusMessage& message) const;

    std::shared_ptr<PortalConnection> m_portal;
    Options m_options;
    Events m_events;
    Step m_step = Step::creating;
    bool m_isBound = false;
    QString m_boundText;
    /// Since the last activation, until the keys are released.
    QElapsedTimer m_sinceActivation;
    std::unique_ptr<PortalRequest> m_request;
    std::unique_ptr<PortalSession> m_session;
};

} // namespace quelto
