// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalCaptureFixture.h"

#include "base/language/T.h"
#include "platform/PlatformError.h"

namespace quelto {
namespace {

using std::chrono_literals::operator""ms;

/// The end of a recording, by the caller or by the user of the desktop.
class PortalCaptureStopTest : public test::PortalCaptureFixture {
protected:
    static QString endedText() { return T("Masaüstü ekran paylaşımını sonlandırdı. Kaydı yeniden başlatın."); }
};

TEST_F(PortalCaptureStopTest, StopEndsTheSharing)
{
    record();
    capture->stop();
    fake->tryShow({test::Violet});
    EXPECT_TRUE(log.getsNoFrame(300ms));
    EXPECT_TRUE(waitForCount("Close", 1));
    EXPECT_EQ(portal->callsOf("Close").last().path, portal->session());
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureStopTest, CanBeStartedAgainAtOnce)
{
    record();
    for (const auto rgb : {test::Violet, test::Orange, test::Violet}) {
        capture->stop();
        ASSERT_EQ(open().size, QSize(320, 180));
        start();
        EXPECT_TRUE(showUntilSeen(rgb));
    }
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureStopTest, TheUserEndsTheSharing)
{
    record();
    closeSession();
    fake.reset();
    ASSERT_TRUE(waitForStop());
    // What else happens comes soon or never.
    QTest::qWait(1000);
    EXPECT_EQ(log.stopReasons(), std::vector{endedText()});
    EXPECT_EQ(portal->count("CreateSession"), 1);
    EXPECT_EQ(screen->token().load(), nextToken);
}

TEST_F(PortalCaptureStopTest, TheUserEndsTheSharingBeforeTheStreamIsPaused)
{
    record();
    closeSession();
    ASSERT_TRUE(waitForStop());
    const auto frames = log.count();
    EXPECT_FALSE(waitFor(
        [&] {
            fake->tryShow({test::Violet});
            return log.count() > frames;
        },
        500));
    EXPECT_EQ(log.stopReasons(), std::vector{endedText()});
}

TEST_F(PortalCaptureStopTest, AnEarlierChangeOfTheDisplaysIsNoReason)
{
    makeCapture({.sameEvent = 100ms});
    record();
    changeDisplays();
    QTest::qWait(500);
    closeSession();
    ASSERT_TRUE(waitForStop());
    EXPECT_EQ(log.stopReasons(), std::vector{endedText()});
}

TEST_F(PortalCaptureStopTest, StartTellsThatTheSharingHasEndedAlready)
{
    makeCapture({.sameEvent = 50ms});
    ASSERT_EQ(open().problem, QString());
    closeSession();
    QTest::qWait(500);
    try {
        start();
        ADD_FAILURE() << "it has started";
    } catch (const PlatformError& error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), endedText());
    }
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureStopTest, StopDuringTheRecoveryEndsIt)
{
    record();
    behave("Start", {{.response = Response::none}});
    fake.reset();
    ASSERT_TRUE(waitForCount("Start", 2));
    receiveAll();
    capture->stop();
    EXPECT_TRUE(waitForCount("Close", 3)) << "the first session, the dialog and its session";
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureStopTest, DestructionDuringTheRecoveryEndsIt)
{
    record();
    behave("Start", {{.response = Response::none}});
    fake.reset();
    ASSERT_TRUE(waitForCount("Start", 2));
    receiveAll();
    capture.reset();
    EXPECT_TRUE(waitForCount("Close", 3)) << "the first session, the dialog and its session";
    EXPECT_TRUE(log.stopReasons().empty());
}

} // namespace
} // namespace quelto
