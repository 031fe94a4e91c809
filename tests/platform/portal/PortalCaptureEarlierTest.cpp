// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalCaptureFixture.h"

#include <sys/socket.h>

namespace quelto {
namespace {

using std::chrono_literals::operator""ms;

/// What remains of an earlier recording does not disturb the next one.
class PortalCaptureEarlierTest : public test::PortalCaptureFixture {
protected:
    /// Begins a recording whose dialog stays open until answer().
    std::future<Opened> beginOpenWithDialog()
    {
        behave("CreateSession", {{}});
        behave("Start", {{.response = Response::none}});
        const auto count = portal->count("Start");
        auto opening = beginOpen();
        EXPECT_TRUE(waitForCount("Start", count + 1));
        receiveAll();
        return opening;
    }
    void expectUndisturbed(std::future<Opened>& opening, int milliseconds = 1000)
    {
        const auto dialogs = portal->count("Start");
        QTest::qWait(milliseconds);
        EXPECT_EQ(portal->count("Start"), dialogs) << "the dialog was opened again";
        portal->respond(0, shared());
        EXPECT_EQ(finish(opening).size, QSize(320, 180));
        start();
        EXPECT_TRUE(showUntilSeen(test::Violet));
        EXPECT_TRUE(log.stopReasons().empty());
    }
};

TEST_F(PortalCaptureEarlierTest, AttemptToRecover)
{
    makeCapture({.sameEvent = 100ms, .retryInterval = 300ms, .recovery = 2000ms});
    record();
    behave("CreateSession", {{.code = 2}});
    replaceScreen();
    ASSERT_TRUE(waitForCount("CreateSession", 3));
    receiveAll();
    auto opening = beginOpenWithDialog();
    expectUndisturbed(opening, 2200);
}

TEST_F(PortalCaptureEarlierTest, WaitForAFormat)
{
    std::array<int, 2> ends{-1, -1};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
    const FileDescriptor silentServer(ends[0]);
    const auto makeRemote = std::exchange(portal->makeRemote, [end = ends[1]] { return FileDescriptor(end); });
    makeCapture({.format = 500ms});
    auto earlier = beginOpen();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", 1));
    receiveAll();
    cancellation.request_stop();
    EXPECT_FALSE(earlier.get().problem.isEmpty());
    portal->makeRemote = makeRemote;
    auto opening = beginOpenWithDialog();
    expectUndisturbed(opening);
}

TEST_F(PortalCaptureEarlierTest, WaitForAFrame)
{
    makeCapture({.firstFrame = 400ms});
    ASSERT_EQ(open().problem, QString());
    start();
    receiveAll();
    auto opening = beginOpenWithDialog();
    expectUndisturbed(opening);
}

TEST_F(PortalCaptureEarlierTest, SearchForTheCause)
{
    record();
    closeSession();
    receiveAll();
    auto opening = beginOpenWithDialog();
    expectUndisturbed(opening);
}

TEST_F(PortalCaptureEarlierTest, EndOfTheStream)
{
    record();
    fake.reset();
    // Without the event loop, so that the end of the stream and of the session are still to be told.
    std::this_thread::sleep_for(600ms);
    closeSession();
    fake = std::make_unique<pipewire::FakeScreen>(pipewire::FakeScreen::Settings{});
    auto opening = beginOpenWithDialog();
    expectUndisturbed(opening);
}

} // namespace
} // namespace quelto
