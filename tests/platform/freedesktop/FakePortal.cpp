// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakePortal.h"

#include <gtest/gtest.h>

namespace quelto {

namespace {

const QString PortalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString PortalObject = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace

FakePortal::FakePortal(Service service)
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal")))
{
    if (service == Service::complete) {
        EXPECT_TRUE(m_bus.registerObject(PortalObject, this, QDBusConnection::ExportAllSlots));
    }
    EXPECT_TRUE(m_bus.registerService(PortalService));
}

FakePortal::~FakePortal()
{
    m_bus.unregisterService(PortalService);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

QDBusObjectPath FakePortal::OpenFile(const QString& newParentWindow, const QString& newTitle,
                                     const QVariantMap& newOptions, const QDBusMessage& message)
{
    ++dialogs;
    parentWindow = newParentWindow;
    title = newTitle;
    options = newOptions;
    m_caller = message.service();
    if (isSilent) {
        message.setDelayedReply(true);
        return {};
    }
    const auto token =
        handle == Handle::own ? QStringLiteral("own") : options.value(QStringLiteral("handle_token")).toString();
    m_bus.unregisterObject(m_requestPath);
    m_requestPath = PortalObject + QStringLiteral("/request/") + m_caller.mid(1).replace(u'.', u'_') + u'/' + token;
    EXPECT_TRUE(m_bus.registerObject(m_requestPath, &m_request, QDBusConnection::ExportAllSlots));
    if (isHasty) {
        respond(0, {QStringLiteral("file:///hasty")});
    }
    return QDBusObjectPath(m_requestPath);
}

void FakePortal::respond(uint response, const QStringList& uris)
{
    auto signal = QDBusMessage::createTargetedSignal(
        m_caller, m_requestPath, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal.setArguments({response, QVariantMap{{QStringLiteral("uris"), uris}}});
    EXPECT_TRUE(m_bus.send(signal));
}

} // namespace quelto
