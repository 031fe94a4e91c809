// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalFixture.h"

#include "platform/portal/PortalNames.h"

#include <QDBusPendingCallWatcher>

namespace quelto::test {

void PortalFixture::SetUp()
{
    if (qEnvironmentVariableIsEmpty("QUELTO_TEST_DIR")) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    startPortal();
    // The end of the last test's portal is no news for this test.
    receiveAll();
    connection = std::make_shared<PortalConnection>(QDBusConnection::sessionBus());
}

void PortalFixture::receiveAll()
{
    auto ping = QDBusMessage::createMethodCall(portalNames::service, portalNames::path,
                                               QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    const QDBusPendingCallWatcher call(QDBusConnection::sessionBus().asyncCall(ping));
    bool isFinished = false;
    QObject::connect(&call, &QDBusPendingCallWatcher::finished, [&] { isFinished = true; });
    EXPECT_TRUE(waitFor([&] { return isFinished; }));
    // What requests and sessions post to themselves.
    QCoreApplication::processEvents();
}

} // namespace quelto::test
