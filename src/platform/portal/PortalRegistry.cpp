// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalRegistry.h"

#include "platform/portal/PortalErrors.h"
#include "platform/portal/PortalNames.h"

#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <utility>

namespace quelto {

namespace {

const QString ApplicationName = QStringLiteral("app.quelto.Quelto");

} // namespace

PortalRegistry::PortalRegistry(const QDBusConnection& bus)
    : m_bus(bus)
{
}

void PortalRegistry::whenRegistered(QObject* context, std::chrono::milliseconds timeLimit,
                                    std::function<void()> callback)
{
    if (m_state == State::done || !m_bus.isConnected()) {
        callback();
        return;
    }
    m_waiting.append(Waiting{.context = context, .callback = std::move(callback)});
    if (m_state == State::unregistered) {
        m_state = State::registering;
        m_isSecondAttempt = false;
        m_limit.setRemainingTime(timeLimit);
        sendRegistration();
    }
}

void PortalRegistry::reset()
{
    if (m_state == State::done) {
        m_state = State::unregistered;
    }
}

void PortalRegistry::sendRegistration()
{
    auto message = QDBusMessage::createMethodCall(portalNames::service, portalNames::path, portalNames::registry,
                                                  QStringLiteral("Register"));
    message.setArguments({ApplicationName, QVariantMap()});
    // The reply has to come before the next call: the portal may handle two calls of a connection at the same time.
    const auto limit = std::max(static_cast<int>(m_limit.remainingTime()), 1);
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, limit), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        if (!call->isError() || !isTransportError(call->error())) {
            finish(State::done);
        } else if (!m_limit.hasExpired() && !std::exchange(m_isSecondAttempt, true)) {
            sendRegistration();
        } else {
            finish(State::unregistered);
        }
    });
}

void PortalRegistry::finish(State state)
{
    m_state = state;
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& each : waiting) {
        if (each.context) {
            each.callback();
        }
    }
}

} // namespace quelto
