// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalShortcut.h"

#include "platform/portal/PortalNames.h"

#include <QDBusObjectPath>

namespace quelto {

namespace {

const QString ShortcutId = QStringLiteral("save-clip");
const QString Shortcuts = QStringLiteral("shortcuts");

/// Some desktops find the keys of the last start by the token.
const QString ShortcutSessionToken = QStringLiteral("quelto");

} // namespace

PortalShortcut::PortalShortcut(std::shared_ptr<PortalConnection> portal, Options options, Events events)
    : m_portal(std::move(portal))
    , m_options(std::move(options))
    , m_events(std::move(events))
{
    const auto listen = [this](const char* signal, const char* slot) {
        m_portal->bus().connect(portalNames::service, portalNames::path, portalNames::globalShortcuts,
                                QString::fromLatin1(signal), this, slot);
    };
    listen("Activated", SLOT(activate(QDBusMessage)));
    listen("Deactivated", SLOT(deactivate(QDBusMessage)));
    listen("ShortcutsChanged", SLOT(readChange(QDBusMessage)));
    m_session = std::make_unique<PortalSession>(
        m_portal,
        PortalSession::Options{.interface = portalNames::globalShortcuts,
                               .token = ShortcutSessionToken,
                               // An early version of a desktop's portal reads them only here.
                               .others = {{Shortcuts, toDBus(shortcuts())}},
                               .timeLimit = m_options.limits.answer},
        PortalSession::Events{.onCreated = [this] { lookUp(); },
                              .onFailed = [this](PortalEnd /*end*/) { finish(std::nullopt); },
                              .onClosed = [this] { finish(std::nullopt); }});
}

PortalShortcut::~PortalShortcut() = default;

PortalShortcutList PortalShortcut::shortcuts() const
{
    QVariantMap properties{{QStringLiteral("description"), m_options.description}};
    if (!m_options.preferredTrigger.isEmpty()) {
        properties.insert(QStringLiteral("preferred_trigger"), m_options.preferredTrigger);
    }
    return {PortalShortcutEntry{.id = ShortcutId, .properties = properties}};
}

void PortalShortcut::lookUp()
{
    m_step = Step::binding;
    m_events.onChanged();
    // Later, so that the shortcut can be destroyed instead without a dialog.
    QMetaObject::invokeMethod(this, &PortalShortcut::bindUnlessBound, Qt::QueuedConnection);
}

void PortalShortcut::bindUnlessBound()
{
    // A desktop that has the shortcut since the session was created opens its settings whenever it is asked to bind.
    list([this](const PortalResponse& response, const std::optional<QString>& trigger) {
        if (response.end == PortalEnd::vanished || (trigger && !trigger->isEmpty())) {
            finish(trigger);
        } else {
            bind();
        }
    });
}

void PortalShortcut::bind()
{
    const QString noParentWindow = QStringLiteral("");
    m_request = std::make_unique<PortalRequest>(
        m_portal,
        PortalCall{
            .interface = portalNames::globalShortcuts,
            .method = QStringLiteral("BindShortcuts"),
            .arguments = {QVariant::fromValue(QDBusObjectPath(m_session->path())), toDBus(shortcuts()), noParentWindow},
            .options = {},
            .timeLimit = m_options.limits.answer,
            .answer = PortalAnswer::byUser},
        [this](const PortalResponse& response) {
            // The shortcuts in the results decide: a desktop answers that it failed although it has bound them.
            const auto trigger = triggerOf(response.results.value(Shortcuts), ShortcutId);
            const auto isGone = response.end == PortalEnd::vanished || response.end == PortalEnd::cancelled;
            if (isGone || (trigger && !trigger->isEmpty())) {
                finish(trigger);
            } else {
                list([this](const PortalResponse& /*response*/, const std::optional<QString>& listed) {
                    finish(listed);
                });
            }
        });
}

void PortalShortcut::list(ListHandler onListed)
{
    m_request = std::make_unique<PortalRequest>(
        m_portal,
        PortalCall{.interface = portalNames::globalShortcuts,
                   .method = QStringLiteral("ListShortcuts"),
                   .arguments = {QVariant::fromValue(QDBusObjectPath(m_session->path()))},
                   .options = {},
                   .timeLimit = m_options.limits.answer},
        [onListed = std::move(onListed)](const PortalResponse& response) {
            onListed(response, triggerOf(response.results.value(Shortcuts), ShortcutId));
        });
}

void PortalShortcut::finish(const std::optional<QString>& trigger)
{
    m_step = Step::done;
    m_request.reset();
    m_boundText = trigger.value_or(QString());
    // A shortcut without keys waits until the user gives it some.
    m_isBound = !m_boundText.isEmpty();
    m_events.onChanged();
}

bool PortalShortcut::isFromSession(const QDBusMessage& message) const
{
    return message.arguments().value(0).value<QDBusObjectPath>().path() == m_session->path();
}

void PortalShortcut::activate(const QDBusMessage& message)
{
    if (!isFromSession(message) || message.arguments().value(1).toString() != ShortcutId) {
        return;
    }
    // By the own clock, because some desktops send no time.
    const auto isRepeat =
        m_sinceActivation.isValid() && !m_sinceActivation.hasExpired(m_options.limits.repeatPause.count());
    m_sinceActivation.start();
    if (isRepeat) {
        return;
    }
    if (m_step == Step::done && !m_isBound) {
        // The desktop does not say which keys, but evidently there are some.
        m_isBound = true;
        m_events.onChanged();
    }
    m_events.onPressed();
}

void PortalShortcut::deactivate(const QDBusMessage& message)
{
    if (isFromSession(message) && message.arguments().value(1).toString() == ShortcutId) {
        m_sinceActivation.invalidate();
    }
}

void PortalShortcut::readChange(const QDBusMessage& message)
{
    if (isFromSession(message) && m_step == Step::done) {
        finish(triggerOf(message.arguments().value(1), ShortcutId));
    }
}

} // namespace quelto
