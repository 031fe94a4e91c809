// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalCaptureFixture.h"

namespace quelto {
namespace {

using std::chrono_literals::operator""ms;

/// A still screen whose first picture gets lost.
class PortalCaptureFirstFrameTest : public test::PortalCaptureFixture {
protected:
    /// Several times the limit below.
    static constexpr int LongTime = 1500;

    void SetUp() override
    {
        PortalCaptureFixture::SetUp();
        if (!IsSkipped()) {
            makeCapture({.firstFrame = 300ms, .reconnections = 2});
        }
    }
    void openAndStart()
    {
        ASSERT_EQ(open().problem, QString());
        start();
    }
    int sessions() const { return portal->count("CreateSession"); }
};

TEST_F(PortalCaptureFirstFrameTest, TheStreamIsConnectedAgain)
{
    openAndStart();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", 2));
    EXPECT_EQ(lastSourceOptions().value(QStringLiteral("restore_token")), nextToken);
    ASSERT_TRUE(showUntilSeen(test::Orange));
    const auto before = sessions();
    QTest::qWait(LongTime);
    EXPECT_EQ(sessions(), before) << "a still screen is no error after its first frame";
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureFirstFrameTest, AFewTimesAtMost)
{
    openAndStart();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", 3));
    QTest::qWait(LongTime);
    EXPECT_EQ(sessions(), 3);
    EXPECT_TRUE(log.stopReasons().empty());
    EXPECT_TRUE(showUntilSeen(test::Orange)) << "the last stream goes on";
    EXPECT_EQ(sessions(), 3);
}

TEST_F(PortalCaptureFirstFrameTest, TheWaitIsNoRecovery)
{
    makeCapture({.firstFrame = 300ms, .reconnections = 1, .recovery = 1200ms});
    openAndStart();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", 2));
    QTest::qWait(LongTime);
    EXPECT_TRUE(log.stopReasons().empty());
    EXPECT_TRUE(showUntilSeen(test::Orange));
}

TEST_F(PortalCaptureFirstFrameTest, AlsoAfterAnInterruption)
{
    openAndStart();
    ASSERT_TRUE(showUntilSeen(test::Orange));
    const auto before = sessions();
    replaceScreen();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", before + 2)) << "once for the interruption, once for the picture";
    EXPECT_TRUE(showUntilSeen(test::Violet));
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureFirstFrameTest, WithoutATokenTheUserIsNotAskedAgain)
{
    nextToken.clear();
    replaceScreen();
    openAndStart();
    QTest::qWait(LongTime);
    EXPECT_EQ(sessions(), 1);
    EXPECT_TRUE(showUntilSeen(test::Orange));
}

TEST_F(PortalCaptureFirstFrameTest, BeforeTheStartNoFrameIsMissed)
{
    ASSERT_EQ(open().problem, QString());
    ASSERT_TRUE(fake->waitUntilStreaming());
    ASSERT_TRUE(fake->show({test::Orange}));
    QTest::qWait(LongTime);
    start();
    EXPECT_TRUE(waitFor([this] { return log.count() == 1; }));
    QTest::qWait(LongTime);
    EXPECT_EQ(sessions(), 1);
    EXPECT_EQ(log.count(), 1U);
}

TEST_F(PortalCaptureFirstFrameTest, TheUserMayEndTheSharingMeanwhile)
{
    makeCapture();
    openAndStart();
    closeSession();
    ASSERT_TRUE(waitForStop());
    EXPECT_EQ(sessions(), 1);
}

} // namespace
} // namespace quelto
