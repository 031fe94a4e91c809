// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GlobalKey.h"
#include "platform/portal/PortalShortcut.h"
#include "platform/portal/TypedKeys.h"

#include <QDBusPendingCall>

namespace quelto {

/// A global shortcut that the desktop binds through the portal. The desktop may ask the user first, and keeps the keys
/// that the user chose there; the combination of grab() is a preference. boundText() tells the keys.
///
/// State: ReservedByDesktop if the desktop has no such portal, or the user gave the shortcut no keys. Until the desktop
/// has answered, the state is the one before.
///
/// Binds again when the portal was restarted. Requires QGuiApplication.
class PortalGlobalKey final : public QObject, public GlobalKey {
    Q_OBJECT

public:
    explicit PortalGlobalKey(std::shared_ptr<PortalConnection> portal, PortalShortcutLimits limits = {});
    ~PortalGlobalKey() override;
    PortalGlobalKey(const PortalGlobalKey&) = delete;
    PortalGlobalKey& operator=(const PortalGlobalKey&) = delete;

    void grab(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void release() override;
    State state() const override { return m_state; }
    QString boundText() const override { return m_boundText; }
    /// Only for keys that were pressed in a window of this program.
    QString characters(std::uint32_t keyCode) override { return m_typedKeys.characters(keyCode); }
    /// Only while a window of this program has the focus.
    std::uint32_t heldModifiers() override;

private:
    struct Combination {
        std::uint32_t keyCode;
        std::uint32_t modifiers;

        bool operator==(const Combination&) const = default;
    };

    /// Binds or unbinds what is wanted, in the next turn of the event loop: grabs follow each other while settings
    /// change, and the desktop would open a dialog for each.
    void reconcileSoon();
    void reconcile();
    void bind();
    void unbind();
    void followShortcut();
    void replaceShortcut();
    /// Whether the desktop has answered and has not bound the shortcut.
    bool hasFailed() const;
    void updateState();
    State currentState() const;

    std::shared_ptr<PortalConnection> m_portal;
    PortalShortcutLimits m_limits;
    TypedKeys m_typedKeys;
    std::optional<Combination> m_wanted;
    /// The preference of m_shortcut. Nothing if it has to be replaced.
    std::optional<Combination> m_preferred;
    std::unique_ptr<PortalShortcut> m_shortcut;
    bool m_isUnbinding = false;
    /// The portal ended while it was binding the shortcut.
    bool m_hasLostPortal = false;
    bool m_isReconciling = false;
    State m_state = State::Released;
    QString m_boundText;
};

} // namespace quelto
