// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portal/PortalFrameSource.h"
#include "platform/portal/PortalGlobalKey.h"
#include "platform/portal/PortalScreenCast.h"

#include "tests/platform/pipewire/audio/ChildProcess.h"
#include "tests/platform/x11/FrameLog.h"

#include <QTemporaryDir>
#include <QTest>

#include <future>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quelto {
namespace {

/// The portal of a real desktop, whose screen can be shared once without a dialog.
class RealPortalTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QUELTO_TEST_TOKEN_MAKER")) {
            GTEST_SKIP() << "runs on the private Wayland desktop only";
        }
        connection = std::make_shared<PortalConnection>(PortalConnection::openBus());
    }

    void share(ScreenCastCursor cursor = ScreenCastCursor::embedded)
    {
        started.clear();
        ends.clear();
        cast = std::make_unique<PortalScreenCast>(
            connection, PortalScreenCast::Options{.token = token, .cursor = cursor},
            PortalScreenCast::Events{.onStarted = [this](const ScreenCastStream& stream) { started.push_back(stream); },
                                     .onFailed = [this](PortalEnd end) { ends.append(end); },
                                     .onClosed = [this] { ++closed; }});
    }
    /// Permits the recording of the screen once more.
    static QString makeToken()
    {
        pipewire::ChildProcess maker(qEnvironmentVariable("QUELTO_TEST_TOKEN_MAKER"), {});
        const auto token = QString::fromLatin1(maker.readAll()).trimmed();
        EXPECT_EQ(maker.wait(), 0);
        return token;
    }
    bool waitForEnd()
    {
        return QTest::qWaitFor([this] { return !started.empty() || !ends.isEmpty(); }, 10'000);
    }

    QTemporaryDir folder;
    RestoreToken token{folder.filePath(QStringLiteral("token"))};
    std::shared_ptr<PortalConnection> connection;
    std::unique_ptr<PortalScreenCast> cast;
    std::vector<ScreenCastStream> started;
    QList<PortalEnd> ends;
    int closed = 0;
};

TEST_F(RealPortalTest, SharesTheScreenAgainWithoutADialog)
{
    token.save(qEnvironmentVariable("QUELTO_TEST_TOKEN"));
    for (const auto cursor : {ScreenCastCursor::embedded, ScreenCastCursor::hidden, ScreenCastCursor::embedded}) {
        ASSERT_FALSE(token.load().isEmpty());
        share(cursor);
        ASSERT_TRUE(waitForEnd());
        ASSERT_EQ(started.size(), 1U) << "a dialog would not be answered";
        EXPECT_EQ(started.front().node.size, QSize(640, 360));
        struct stat info = {};
        ASSERT_EQ(::fstat(started.front().remote->get(), &info), 0);
        EXPECT_TRUE(S_ISSOCK(info.st_mode));
    }
    EXPECT_EQ(closed, 0);
}

TEST_F(RealPortalTest, AStillScreenHasAFrameInEachRecording)
{
    const auto screen = std::make_shared<PortalScreen>();
    screen->token().save(makeToken());
    PortalFrameSource source(connection, screen);
    for (int round = 0; round < 10; ++round) {
        test::FrameLog log;
        std::stop_source cancellation;
        auto recording = std::async(std::launch::async, [&] {
            const auto size = source.open({.displayID = 1, .showsCursor = true}, cancellation.get_token());
            source.start({.outputSize = size, .framesPerSecond = 60}, log.events());
            return size;
        });
        // Longer than it takes to connect the stream again, in case the desktop has lost the first picture.
        EXPECT_TRUE(QTest::qWaitFor([&] { return log.count() > 0; }, 10'000)) << round;
        cancellation.request_stop();
        EXPECT_EQ(recording.get(), QSize(640, 360));
        source.stop();
        EXPECT_TRUE(log.stopReasons().empty());
    }
}

TEST_F(RealPortalTest, AnUnknownTokenAsksTheUser)
{
    token.save(QStringLiteral("8a2c4f1e-0000-4000-8000-000000000000"));
    share();
    // There is no condition for "never".
    QTest::qWait(2000);
    EXPECT_TRUE(started.empty());
    EXPECT_EQ(ends, QList<PortalEnd>());
    cast.reset();
    token.save({});
    share();
    QTest::qWait(500);
    EXPECT_EQ(ends, QList<PortalEnd>()) << "the desktop has closed the first dialog and shows the second one";
}

TEST_F(RealPortalTest, TheKeyIsReservedIfTheDesktopHasNoShortcuts)
{
    PortalGlobalKey key(connection);
    key.grab(8, 512);
    EXPECT_TRUE(QTest::qWaitFor([&] { return key.state() != GlobalKey::State::Released; }, 10'000));
    EXPECT_EQ(key.state(), GlobalKey::State::ReservedByDesktop);
}

} // namespace
} // namespace quelto
