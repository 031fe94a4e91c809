// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TestPortal.h"

#include "platform/portal/PortalConnection.h"

#include <QTest>

#include <gtest/gtest.h>

namespace quelto::test {

/// A portal of the test on the private desktop's bus, and a connection to it.
class PortalFixture : public testing::Test {
protected:
    using Reply = PortalBehaviour::Reply;
    using Response = PortalBehaviour::Response;

    void SetUp() override;

    void startPortal() { portal = std::make_unique<TestPortal>(); }
    void endPortal() { portal.reset(); }
    /// Waits until the connection has received everything that the portal sent so far.
    void receiveAll();
    static bool waitFor(const std::function<bool()>& condition, int milliseconds = 5000)
    {
        return QTest::qWaitFor(condition, milliseconds);
    }

    std::unique_ptr<TestPortal> portal;
    std::shared_ptr<PortalConnection> connection;
};

} // namespace quelto::test
