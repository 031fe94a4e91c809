// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogWindows.h"

#include "platform/portal/PortalFrameSource.h"
#include "platform/portal/PortalGlobalKey.h"
#include "platform/portal/PortalScreenCast.h"

#include "tests/platform/pipewire/audio/ChildProcess.h"
#include "tests/platform/x11/FrameLog.h"

#include <QDBusConnectionInterface>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <future>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quelto {
namespace {

/// Records the screen from the construction on.
class Recording {
public:
    Recording(const std::shared_ptr<PortalConnection>& connection, const std::shared_ptr<PortalScreen>& screen)
        : m_source(connection, screen)
        , m_opening(std::async(std::launch::async, [this] {
            const auto size = m_source.open({.displayID = 1, .showsCursor = true}, m_cancellation.get_token());
            m_source.start({.outputSize = size, .framesPerSecond = 60}, m_log.events());
            return size;
        }))
    {
    }
    ~Recording()
    {
        m_cancellation.request_stop();
        EXPECT_NO_THROW(size());
        m_source.stop();
        EXPECT_EQ(m_log.stopReasons(), std::vector<QString>());
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    bool waitForFrames(std::size_t count)
    {
        // Longer than it takes to connect the stream again, in case the desktop has lost the first picture.
        return QTest::qWaitFor([&] { return m_log.count() >= count; }, 10'000);
    }
    QSize size() const { return m_opening.get(); }

private:
    test::FrameLog m_log;
    PortalFrameSource m_source;
    std::stop_source m_cancellation;
    std::shared_future<QSize> m_opening;
};

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
        auto token = QString::fromLatin1(maker.readAll()).trimmed();
        EXPECT_EQ(maker.wait(), 0);
        return token;
    }
    static std::shared_ptr<PortalScreen> makeScreen()
    {
        auto screen = std::make_shared<PortalScreen>();
        screen->token().save(makeToken());
        return screen;
    }
    /// Ends the program behind the portal that shares screens, without a shutdown, like a crash.
    void killBackEnd()
    {
        const auto name = QStringLiteral("org.freedesktop.impl.portal.desktop.gnome");
        const uint process = connection->bus().interface()->servicePid(name);
        ASSERT_GT(process, 1U);
        ASSERT_EQ(::kill(static_cast<pid_t>(process), SIGKILL), 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return connection->bus().interface()->servicePid(name) != process; }));
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
        struct stat info = {};
        ASSERT_EQ(::fstat(started.front().remote->get(), &info), 0);
        EXPECT_TRUE(S_ISSOCK(info.st_mode));
    }
    EXPECT_EQ(closed, 0);
}

TEST_F(RealPortalTest, AStillScreenHasAFrameInEachRecording)
{
    for (int round = 0; round < 10; ++round) {
        Recording recording(connection, makeScreen());
        EXPECT_TRUE(recording.waitForFrames(1)) << round;
        EXPECT_EQ(recording.size(), QSize(640, 360));
    }
}

TEST_F(RealPortalTest, ARecordingOutlivesTheProgramBehindThePortal)
{
    Recording recording(connection, makeScreen());
    ASSERT_TRUE(recording.waitForFrames(1));
    for (const std::size_t frames : {2U, 3U}) {
        killBackEnd();
        EXPECT_TRUE(recording.waitForFrames(frames)) << "a still screen shows one picture when it is shared again";
    }
}

TEST_F(RealPortalTest, ARecordingBeginsAfterTheEndOfTheProgramBehindThePortal)
{
    const auto screen = makeScreen();
    // It starts when it is used.
    ASSERT_TRUE(Recording(connection, screen).waitForFrames(1));
    for (int round = 0; round < 3; ++round) {
        killBackEnd();
        EXPECT_TRUE(Recording(connection, screen).waitForFrames(1)) << round;
    }
}

TEST_F(RealPortalTest, AnUnknownTokenAsksTheUser)
{
    token.save(QStringLiteral("8a2c4f1e-0000-4000-8000-000000000000"));
    const test::DialogWindows dialogs;
    for (const auto* attempt : {"unknown token", "no token"}) {
        ASSERT_EQ(dialogs.count(), 0) << attempt;
        share();
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialogs.count() == 1; }, 20'000)) << attempt;
        EXPECT_TRUE(started.empty()) << attempt;
        EXPECT_EQ(ends, QList<PortalEnd>()) << attempt;
        cast.reset();
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialogs.count() == 0; }, 10'000)) << attempt;
        token.save({});
    }
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
