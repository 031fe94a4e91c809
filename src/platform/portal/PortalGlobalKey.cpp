// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalGlobalKey.h"

#include "base/keys/HotKeyText.h"
#include "base/language/T.h"
#include "platform/portal/ShortcutTrigger.h"

#include <QDBusPendingCallWatcher>
#include <QGuiApplication>

namespace quelto {

PortalGlobalKey::PortalGlobalKey(std::shared_ptr<PortalConnection> portal, PortalShortcutLimits limits)
    : m_portal(std::move(portal))
    , m_limits(limits)
{
    connect(m_portal.get(), &PortalConnection::vanished, this, [this] {
        if (!m_shortcut || m_shortcut->isCreating()) {
            return;
        }
        if (m_shortcut->isBusy()) {
            m_hasLostPortal = true;
        } else if (m_shortcut->isBound()) {
            replaceShortcut();
        }
    });
    connect(m_portal.get(), &PortalConnection::appeared, this, [this] {
        if (hasFailed()) {
            replaceShortcut();
        }
    });
}

PortalGlobalKey::~PortalGlobalKey() = default;

void PortalGlobalKey::grab(std::uint32_t keyCode, std::uint32_t modifiers)
{
    m_wanted = {.keyCode = keyCode, .modifiers = modifiers};
    if (hasFailed()) {
        // The user may decide otherwise now.
        m_preferred.reset();
    }
    reconcileSoon();
}

void PortalGlobalKey::release()
{
    m_wanted.reset();
    // At once, because the program may end next.
    reconcile();
}

std::uint32_t PortalGlobalKey::heldModifiers()
{
    return storedModifiers(QGuiApplication::queryKeyboardModifiers());
}

void PortalGlobalKey::reconcileSoon()
{
    if (!std::exchange(m_isReconciling, true)) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_isReconciling = false;
                reconcile();
            },
            Qt::QueuedConnection);
    }
}

void PortalGlobalKey::reconcile()
{
    const auto isWaiting = m_isUnbinding || (m_shortcut && m_shortcut->isCreating());
    if (!isWaiting && m_shortcut && (!m_wanted || m_wanted != m_preferred)) {
        unbind();
    } else if (!isWaiting && !m_shortcut && m_wanted) {
        bind();
    }
    updateState();
}

void PortalGlobalKey::bind()
{
    m_preferred = m_wanted;
    m_shortcut = std::make_unique<PortalShortcut>(
        m_portal,
        PortalShortcut::Options{
            .description = T("Klip Kaydet"),
            .preferredTrigger = shortcutTrigger(m_wanted->keyCode, m_wanted->modifiers, characters(m_wanted->keyCode)),
            .limits = m_limits},
        PortalShortcut::Events{.onChanged = [this] { followShortcut(); },
                               .onPressed =
                                   [this] {
                                       if (m_wanted && onPressed) {
                                           onPressed();
                                       }
                                   }});
}

void PortalGlobalKey::followShortcut()
{
    if (!m_shortcut->isBusy() && std::exchange(m_hasLostPortal, false) && hasFailed()) {
        m_preferred.reset();
    }
    updateState();
    // The combination may have changed while the session could not be closed.
    reconcileSoon();
}

bool PortalGlobalKey::hasFailed() const
{
    return m_shortcut && !m_shortcut->isBusy() && !m_shortcut->isBound();
}

void PortalGlobalKey::replaceShortcut()
{
    m_preferred.reset();
    reconcileSoon();
}

void PortalGlobalKey::unbind()
{
    // The next session has the same name, so this one has to be closed before.
    m_isUnbinding = true;
    auto* const call = new QDBusPendingCallWatcher(m_shortcut->close(), this);
    m_shortcut.reset();
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        m_isUnbinding = false;
        reconcile();
    });
}

GlobalKey::State PortalGlobalKey::currentState() const
{
    if (!m_wanted) {
        return State::Released;
    }
    if (!m_shortcut || m_shortcut->isBusy()) {
        return m_state;
    }
    return m_shortcut->isBound() ? State::Held : State::ReservedByDesktop;
}

void PortalGlobalKey::updateState()
{
    const auto state = currentState();
    const auto isKnown = m_wanted && m_shortcut && !m_shortcut->isBusy();
    const auto text = isKnown ? m_shortcut->boundText() : state == State::Held ? m_boundText : QString();
    const auto hasChanged = state != m_state || text != m_boundText;
    m_state = state;
    m_boundText = text;
    if (hasChanged && onStateChanged) {
        onStateChanged();
    }
}

} // namespace quelto
