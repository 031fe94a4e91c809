// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortalFixture.h"

#include "platform/portal/PortalCapture.h"

#include "tests/platform/pipewire/video/FakeScreen.h"
#include "tests/platform/x11/FrameLog.h"

#include <future>

namespace quelto::test {

inline constexpr QSize OutputSize = {160, 90};
inline constexpr std::uint32_t Orange = 0xe08020;
inline constexpr std::uint32_t Violet = 0x8040c0;

/// Captures a fake screen that the test's portal shares.
class PortalCaptureFixture : public PortalFixture {
protected:
    using Limits = PortalCaptureLimits;

    struct Opened {
        QSize size;
        /// Why it failed.
        QString problem;
    };

    void SetUp() override;
    void TearDown() override;

    void makeCapture(const Limits& limits = {});
    /// Replaces the screen, as another compositor would. The portal shares the new one from now on.
    void replaceScreen(const pipewire::FakeScreen::Settings& settings = {});
    /// What the portal answers when it is to share the screen.
    QVariantMap shared() const;
    void behave(const char* method, const QList<PortalBehaviour>& list)
    {
        portal->behaviours[QLatin1String(method)] = list;
    }

    std::future<Opened> beginOpen(ScreenCastCursor cursor = ScreenCastCursor::embedded);
    /// Waits until open() has returned.
    Opened finish(std::future<Opened>& opening);
    Opened open();
    void start();
    /// Opens, starts and waits for the first frame.
    void record();

    /// Shows the picture again and again until a frame has it: a stream that is just starting loses pictures.
    bool showUntilSeen(std::uint32_t rgb);
    bool waitForCount(const char* method, int count, int milliseconds = 5000)
    {
        return waitFor([=, this] { return portal->count(method) >= count; }, milliseconds);
    }
    bool waitForStop(int milliseconds = 5000)
    {
        return waitFor([this] { return !log.stopReasons().empty(); }, milliseconds);
    }
    QVariantMap lastSourceOptions() const { return portal->callsOf("SelectSources").last().options(); }

    /// The desktop ends the sharing.
    void closeSession();
    /// A display of the desktop changes, for instance because it is rotated.
    static void changeDisplays();

    std::shared_ptr<PortalScreen> screen;
    std::unique_ptr<pipewire::FakeScreen> fake;
    std::unique_ptr<PortalCapture> capture;
    std::stop_source cancellation;
    FrameLog log;
    /// What the portal returns with the next shared screen.
    QString nextToken = QStringLiteral("next");
};

} // namespace quelto::test
