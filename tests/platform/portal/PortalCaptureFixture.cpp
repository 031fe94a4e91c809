// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalCaptureFixture.h"

#include "platform/PlatformError.h"

#include "tests/platform/pipewire/video/ServerSocket.h"
#include "tests/platform/pipewire/video/StreamLog.h"

#include <QGuiApplication>
#include <QScreen>

namespace quelto::test {

namespace {

using namespace std::chrono_literals;

template <typename Result> bool isReady(const std::future<Result>& result)
{
    return result.wait_for(0s) == std::future_status::ready;
}

} // namespace

void PortalCaptureFixture::SetUp()
{
    PortalFixture::SetUp();
    if (IsSkipped()) {
        return;
    }
    screen = std::make_shared<PortalScreen>();
    screen->token().save({});
    portal->makeRemote = [] { return pipewire::connectToServer(); };
    replaceScreen();
    makeCapture();
}

void PortalCaptureFixture::TearDown()
{
    // Before the log that it writes to.
    capture.reset();
}

void PortalCaptureFixture::makeCapture(const Limits& limits)
{
    capture.reset();
    capture = std::make_unique<PortalCapture>(connection, screen, limits);
}

void PortalCaptureFixture::replaceScreen(const pipewire::FakeScreen::Settings& settings)
{
    fake.reset();
    fake = std::make_unique<pipewire::FakeScreen>(settings);
    behave("Start", {{.results = shared()}});
}

QVariantMap PortalCaptureFixture::shared() const
{
    return {{QStringLiteral("streams"), streams({{.node = fake->nodeId(), .properties = {}}})},
            {QStringLiteral("restore_token"), nextToken}};
}

std::future<PortalCaptureFixture::Opened> PortalCaptureFixture::beginOpen(ScreenCastCursor cursor)
{
    cancellation = std::stop_source();
    return std::async(std::launch::async, [this, cursor, cancelled = cancellation.get_token()] {
        try {
            return Opened{.size = capture->open(cursor, cancelled), .problem = {}};
        } catch (const PlatformError& error) {
            return Opened{.size = {}, .problem = QString::fromUtf8(error.what())};
        }
    });
}

PortalCaptureFixture::Opened PortalCaptureFixture::finish(std::future<Opened>& opening)
{
    if (!waitFor([&] { return isReady(opening); }, 20'000)) {
        ADD_FAILURE() << "open() does not return";
        cancellation.request_stop();
    }
    return opening.get();
}

PortalCaptureFixture::Opened PortalCaptureFixture::open()
{
    auto opening = beginOpen();
    return finish(opening);
}

void PortalCaptureFixture::start()
{
    capture->start({.outputSize = OutputSize, .framesPerSecond = 60}, log.events());
}

void PortalCaptureFixture::record()
{
    ASSERT_EQ(open().problem, QString());
    start();
    ASSERT_TRUE(showUntilSeen(Orange));
}

bool PortalCaptureFixture::showUntilSeen(std::uint32_t rgb)
{
    const auto isSeen = [&] {
        fake->tryShow({rgb});
        const auto newest = log.newest();
        return newest && pipewire::shows(*newest, rgb);
    };
    return waitFor(isSeen, 10'000);
}

void PortalCaptureFixture::closeSession()
{
    portal->emitSignal(portal->session(), "org.freedesktop.portal.Session", "Closed", {});
}

void PortalCaptureFixture::changeDisplays()
{
    auto* const display = QGuiApplication::primaryScreen();
    Q_EMIT display->geometryChanged(display->geometry());
}

} // namespace quelto::test
