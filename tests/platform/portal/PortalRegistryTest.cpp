// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalRequest.h"

#include "PortalFixture.h"

namespace quelto {
namespace {

class PortalRegistryTest : public test::PortalFixture {
protected:
    void ask()
    {
        requests.push_back(std::make_unique<PortalRequest>(
            connection,
            PortalCall{.interface = QLatin1String("org.freedesktop.portal.Test"), .method = QStringLiteral("Ask")},
            [this](const PortalResponse& response) { confirmed += response.end == PortalEnd::confirmed ? 1 : 0; }));
    }
    bool waitForAnswers(int count)
    {
        return waitFor([this, count] { return confirmed == count; });
    }

    std::vector<std::unique_ptr<PortalRequest>> requests;
    int confirmed = 0;
};

const auto Register = QStringLiteral("Register");
const auto Ask = QStringLiteral("Ask");

TEST_F(PortalRegistryTest, NamesAConnectionThatQtDoesNotUse)
{
    EXPECT_TRUE(PortalConnection::openBus().isConnected());
    EXPECT_NE(PortalConnection::openBus().baseService(), QDBusConnection::sessionBus().baseService());
}

TEST_F(PortalRegistryTest, IsCalledFirstAndOnce)
{
    ask();
    ask();
    EXPECT_TRUE(waitForAnswers(2));
    ask();
    EXPECT_TRUE(waitForAnswers(3));
    EXPECT_EQ(portal->methods(), (QStringList{Register, Ask, Ask, Ask}));
    EXPECT_EQ(portal->callsOf("Register").first().arguments.value(0), QStringLiteral("app.quelto.Quelto"));
    EXPECT_EQ(portal->callsOf("Register").first().interface, QStringLiteral("org.freedesktop.host.portal.Registry"));
}

TEST_F(PortalRegistryTest, APortalWithoutItWorks)
{
    portal->hasRegistry = false;
    ask();
    EXPECT_TRUE(waitForAnswers(1));
    ask();
    EXPECT_TRUE(waitForAnswers(2));
    EXPECT_EQ(portal->methods(), (QStringList{Register, Ask, Ask}));
}

TEST_F(PortalRegistryTest, APortalThatDoesNotReplyIsUsedWithoutAName)
{
    portal->delayedMethods = {Register};
    bool isCalled = false;
    connection->registry().whenRegistered(connection.get(), std::chrono::milliseconds(200), [&] { isCalled = true; });
    EXPECT_TRUE(waitFor([&] { return isCalled; }));
    portal->delayedMethods.clear();
    ask();
    EXPECT_TRUE(waitForAnswers(1));
    EXPECT_EQ(portal->methods().mid(portal->methods().size() - 2), (QStringList{Register, Ask}))
        << "the next call tries again";
}

TEST_F(PortalRegistryTest, TheNextPortalIsToldAgain)
{
    ask();
    EXPECT_TRUE(waitForAnswers(1));
    endPortal();
    startPortal();
    receiveAll();
    ask();
    EXPECT_TRUE(waitForAnswers(2));
    EXPECT_EQ(portal->methods(), (QStringList{Register, Ask}));
}

TEST_F(PortalRegistryTest, ARequestThatIsGoneDoesNotFollow)
{
    ask();
    requests.clear();
    ask();
    EXPECT_TRUE(waitForAnswers(1));
    EXPECT_EQ(portal->methods(), (QStringList{Register, Ask}));
}

} // namespace
} // namespace quelto
