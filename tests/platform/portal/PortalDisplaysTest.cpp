// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalDisplays.h"

#include "PortalFixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace quelto {
namespace {

const auto NewToken = QStringLiteral("next");

class PortalDisplaysTest : public test::PortalFixture {
protected:
    void SetUp() override
    {
        PortalFixture::SetUp();
        if (IsSkipped()) {
            return;
        }
        ASSERT_TRUE(remote.open(QIODevice::ReadWrite));
        portal->remote = remote.handle();
        screen->token().save(QStringLiteral("mine"));
        displays = std::make_unique<PortalDisplays>(connection, screen);
    }

    /// What the desktop does about the next dialogs.
    void behave(const QList<test::PortalBehaviour>& list) { portal->behaviours[QStringLiteral("Start")] = list; }
    static test::PortalBehaviour share()
    {
        return {.results = {{QStringLiteral("streams"), test::streams({{.node = 57, .properties = {}}})},
                            {QStringLiteral("restore_token"), NewToken}}};
    }
    void chooseAgain()
    {
        displays->chooseAgain(
            {.onChosen = [this] { ++choices; }, .onFailed = [this](const QString& error) { errors.append(error); }});
    }

    QTemporaryDir folder;
    QFile remote{QStringLiteral("/dev/null")};
    std::shared_ptr<PortalScreen> screen = std::make_shared<PortalScreen>(folder.filePath(QStringLiteral("token")));
    std::unique_ptr<PortalDisplays> displays;
    int choices = 0;
    QStringList errors;
};

TEST_F(PortalDisplaysTest, ANewChoiceNeedsTheDialogAndReplacesTheToken)
{
    behave({share()});
    chooseAgain();
    EXPECT_EQ(screen->token().load(), QStringLiteral("mine"));
    ASSERT_TRUE(waitFor([this] { return choices == 1; }));
    EXPECT_FALSE(portal->callsOf("SelectSources").last().options().contains(QStringLiteral("restore_token")));
    EXPECT_EQ(screen->token().load(), NewToken);
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; })) << "only its token is used";
}

TEST_F(PortalDisplaysTest, ACancelledChoiceChangesNothing)
{
    behave({{.code = 1}, share()});
    chooseAgain();
    EXPECT_TRUE(waitFor([this] { return portal->count("Close") == 1; }));
    receiveAll();
    EXPECT_EQ(choices, 0);
    EXPECT_EQ(errors, QStringList());
    EXPECT_EQ(screen->token().load(), QStringLiteral("mine"));
    chooseAgain();
    EXPECT_TRUE(waitFor([this] { return choices == 1; })) << "the user may try again";
}

TEST_F(PortalDisplaysTest, ADialogThatTheDesktopDoesNotShowIsReported)
{
    behave({{.code = 2}, share()});
    chooseAgain();
    ASSERT_TRUE(waitFor([this] { return !errors.isEmpty(); }));
    EXPECT_TRUE(errors.first().contains(u"xdg-desktop-portal")) << errors.first().toStdString();
    EXPECT_EQ(screen->token().load(), QStringLiteral("mine"));
    chooseAgain();
    EXPECT_TRUE(waitFor([this] { return choices == 1; })) << "the user may try again";
    EXPECT_EQ(errors.size(), 1);
}

TEST_F(PortalDisplaysTest, AMissingPortalIsReported)
{
    portal.reset();
    chooseAgain();
    EXPECT_TRUE(waitFor([this] { return errors.size() == 1; }));
}

TEST_F(PortalDisplaysTest, ASecondDialogReplacesTheFirst)
{
    behave({{.response = Response::none}, share()});
    chooseAgain();
    ASSERT_TRUE(waitFor([this] { return portal->count("Start") == 1; }));
    chooseAgain();
    ASSERT_TRUE(waitFor([this] { return choices > 0; }));
    receiveAll();
    EXPECT_EQ(choices, 1);
    EXPECT_GE(portal->count("Close"), 2) << "the first dialog or its session stayed open";
}

} // namespace
} // namespace quelto
