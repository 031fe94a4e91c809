// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalCaptureFixture.h"

#include "base/language/T.h"

#include "tests/platform/pipewire/audio/ChildProcess.h"

namespace quelto {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

class PortalCaptureRecoveryTest : public test::PortalCaptureFixture {
protected:
    static QString unsharedText()
    {
        return T("Masaüstü ekranı paylaşmıyor. xdg-desktop-portal ile PipeWire'ın çalıştığını denetleyip kaydı "
                 "yeniden başlatın.");
    }
    /// Runs tools/private-desktop-sound.
    static void controlServer(const QStringList& arguments)
    {
        pipewire::ChildProcess process(qEnvironmentVariable("QUELTO_TEST_SOUND"), arguments);
        EXPECT_EQ(process.wait(), 0);
    }
    /// Waits until the recording ends, and checks that nothing follows.
    void expectEnd(const QString& reason)
    {
        ASSERT_TRUE(waitForStop());
        // What was called before.
        receiveAll();
        const auto calls = portal->count("CreateSession");
        // What else happens comes soon or never.
        QTest::qWait(600);
        EXPECT_EQ(log.stopReasons(), std::vector{reason});
        EXPECT_EQ(portal->count("CreateSession"), calls);
    }
};

TEST_F(PortalCaptureRecoveryTest, ARotatedScreenGoesOnWithTheOldOutputSize)
{
    for (const auto isDisplayFirst : {true, false}) {
        makeCapture();
        record();
        const auto sessions = portal->count("CreateSession");
        const auto token = nextToken;
        nextToken += u'+';
        const auto rotation = HostClock::now();
        if (isDisplayFirst) {
            changeDisplays();
        }
        closeSession();
        replaceScreen({.size = {180, 320}});
        receiveAll();
        if (!isDisplayFirst) {
            changeDisplays();
        }
        EXPECT_TRUE(showUntilSeen(test::Violet));
        EXPECT_LT(HostClock::now() - rotation, 2s);
        EXPECT_EQ(log.newest()->size, test::OutputSize);
        EXPECT_EQ(screen->size(), QSize(180, 320));
        EXPECT_EQ(portal->count("CreateSession"), sessions + 1);
        EXPECT_EQ(lastSourceOptions().value(QStringLiteral("restore_token")), token);
        EXPECT_EQ(screen->token().load(), nextToken);
    }
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureRecoveryTest, AStreamThatEndsWithoutAReasonIsConnectedAgain)
{
    record();
    for (const auto rgb : {test::Violet, test::Orange}) {
        replaceScreen();
        EXPECT_TRUE(showUntilSeen(rgb));
    }
    EXPECT_EQ(portal->count("CreateSession"), 3);
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureRecoveryTest, PresentationTimesRise)
{
    record();
    replaceScreen();
    EXPECT_TRUE(showUntilSeen(test::Violet));
    const auto times = log.times();
    EXPECT_TRUE(std::ranges::is_sorted(times, std::less_equal<>()));
}

TEST_F(PortalCaptureRecoveryTest, AnInterruptionBeforeTheStartIsNoError)
{
    ASSERT_EQ(open().problem, QString());
    replaceScreen();
    ASSERT_TRUE(waitForCount("OpenPipeWireRemote", 2));
    start();
    EXPECT_TRUE(showUntilSeen(test::Violet));
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureRecoveryTest, FailuresOfTheSessionAreTriedAgain)
{
    record();
    behave("CreateSession", {{.code = 2}, {.code = 2}, {.code = 2}, {.code = 2}, {.code = 2}, {}});
    replaceScreen();
    EXPECT_TRUE(showUntilSeen(test::Violet));
    EXPECT_EQ(portal->count("CreateSession"), 7);
    EXPECT_TRUE(log.stopReasons().empty());
}

TEST_F(PortalCaptureRecoveryTest, EndsWithAnErrorAtTheLimit)
{
    makeCapture({.sameEvent = 100ms, .retryInterval = 50ms, .recovery = 1s});
    record();
    behave("CreateSession", {{.code = 2}});
    fake.reset();
    expectEnd(unsharedText());
    EXPECT_GT(portal->count("CreateSession"), 5);
}

TEST_F(PortalCaptureRecoveryTest, AScreenThatEndsAgainAndAgainIsAnError)
{
    makeCapture({.sameEvent = 50ms, .retryInterval = 50ms, .recovery = 2s});
    record();
    // Each new screen ends before it has shown anything.
    EXPECT_TRUE(waitFor(
        [this] {
            replaceScreen();
            const auto count = portal->count("OpenPipeWireRemote");
            EXPECT_TRUE(waitFor(
                [&, this] { return portal->count("OpenPipeWireRemote") > count || !log.stopReasons().empty(); }));
            return !log.stopReasons().empty();
        },
        10'000));
    expectEnd(unsharedText());
}

TEST_F(PortalCaptureRecoveryTest, ACancelledDialogIsAnError)
{
    record();
    behave("Start", {{.code = 1}});
    fake.reset();
    expectEnd(TOnDesktop(
        "Ekran kaydı izni yok. Sistem Ayarları › Gizlilik ve Güvenlik › Ekran ve Sistem Sesi Kaydı bölümünden "
        "Quelto'ye izin verip uygulamayı yeniden başlatın."));
}

TEST_F(PortalCaptureRecoveryTest, ARefusalIsAnError)
{
    record();
    behave("Start", {{.reply = Reply::error, .error = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied")}});
    fake.reset();
    expectEnd(T("Masaüstünüz ekranı paylaşamıyor. Masaüstünüze uygun xdg-desktop-portal paketini kurup oturumu "
                "yeniden açın."));
}

TEST_F(PortalCaptureRecoveryTest, ADialogIsClosedAtTheLimit)
{
    makeCapture({.sameEvent = 100ms, .recovery = 1s});
    record();
    behave("Start", {{.response = Response::none}});
    fake.reset();
    ASSERT_TRUE(waitForCount("Start", 2));
    EXPECT_EQ(portal->count("Close"), 1);
    expectEnd(unsharedText());
    EXPECT_TRUE(waitForCount("Close", 3));
    EXPECT_TRUE(portal->callsOf("Close").at(1).path.contains(QStringLiteral("/request/")));
}

TEST_F(PortalCaptureRecoveryTest, ANewSizeOfTheStreamKeepsTheOutputSize)
{
    record();
    fake->change({.size = {500, 400}});
    EXPECT_TRUE(waitFor([this] { return screen->size() == QSize(500, 400); }));
    EXPECT_TRUE(showUntilSeen(test::Violet));
    EXPECT_EQ(log.newest()->size, test::OutputSize);
    EXPECT_EQ(portal->count("CreateSession"), 1);
}

TEST_F(PortalCaptureRecoveryTest, ARestartedSoundAndVideoServerIsFoundAgain)
{
    makeCapture({.recovery = 60s});
    record();
    controlServer({QStringLiteral("kill"), QStringLiteral("pipewire")});
    EXPECT_TRUE(waitForCount("OpenPipeWireRemote", 3)) << "it is tried while there is no server";
    controlServer({QStringLiteral("restart")});
    replaceScreen();
    EXPECT_TRUE(showUntilSeen(test::Violet));
    EXPECT_TRUE(log.stopReasons().empty());
}

} // namespace
} // namespace quelto
