// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameLog.h"
#include "TestServer.h"

#include "platform/PlatformError.h"
#include "platform/x11/X11Platform.h"

#include <gtest/gtest.h>

#include <ctime>
#include <thread>

namespace quelto {
namespace {

using namespace std::chrono_literals;
using test::FrameLog;
using test::isColour;
using test::Painter;
using test::TestServer;

constexpr QRect Screen{0, 0, 640, 480};
constexpr std::uint32_t Red = 0xff0000;
constexpr std::uint32_t Green = 0x00ff00;
constexpr std::uint32_t Blue = 0x0000ff;
constexpr std::uint32_t Grey = 0x808080;
// Much longer than a frame.
constexpr auto QuietTime = 400ms;

struct Capture {
    FrameSourceRequest request;
    FrameSourceSettings settings;
};

class X11FrameSource : public testing::Test {
protected:
    explicit X11FrameSource(const QString& size = QStringLiteral("640x480"), const QStringList& extraArguments = {})
        : m_server(size, extraArguments)
        , m_painter(m_server.name())
        , m_source(makeX11FrameSource(m_server.name()))
    {
        m_painter.warpPointer({639, 479});
        m_painter.fill(Screen, Grey);
    }

    Capture captureOf(QSize size = Screen.size(), bool showsCursor = false) const
    {
        const auto display = makeX11Displays(m_server.name())->all().value(0).id;
        return {.request = {.displayID = display, .showsCursor = showsCursor},
                .settings = {.outputSize = size, .framesPerSecond = 60}};
    }
    void start(FrameLog& log, const Capture& capture)
    {
        m_source->open(capture.request, {});
        m_source->start(capture.settings, log.events());
    }
    /// Waits for the first frame and for all frames that the test's own set-up causes.
    void startAndSettle(FrameLog& log, const Capture& capture)
    {
        const std::size_t before = log.count();
        start(log, capture);
        ASSERT_TRUE(log.waitForCount(before + 1));
        while (!log.getsNoFrame(QuietTime)) { }
    }
    /// Moves the pointer by pixels, as a mouse does.
    void moveMouse(const char* right, const char* down)
    {
        ASSERT_TRUE(m_server.run(QStringLiteral("xdotool"),
                                 {QStringLiteral("mousemove_relative"), QStringLiteral("--"), QString::fromUtf8(right),
                                  QString::fromUtf8(down)}));
    }
    bool addMonitor(const char* name, const char* geometry, const char* output)
    {
        return m_server.run(QStringLiteral("xrandr"),
                            {QStringLiteral("--setmonitor"), QString::fromUtf8(name), QString::fromUtf8(geometry),
                             QString::fromUtf8(output)});
    }
    Capture captureOfMonitor(const char* monitor, QSize size)
    {
        for (const auto& display : makeX11Displays(m_server.name())->all()) {
            if (display.name == QString::fromUtf8(monitor)) {
                auto capture = captureOf(size);
                capture.request.displayID = display.id;
                return capture;
            }
        }
        ADD_FAILURE() << "no monitor " << monitor;
        return {};
    }

    TestServer m_server;
    Painter m_painter;
    // Declared before the source, whose thread calls it.
    FrameLog m_log;
    std::unique_ptr<FrameSource> m_source;
};

TEST_F(X11FrameSource, FramesHaveTheScreensColours)
{
    m_painter.fill({100, 100, 64, 64}, Red);
    m_painter.fill({200, 100, 64, 64}, Green);
    m_painter.fill({300, 100, 64, 64}, Blue);
    startAndSettle(m_log, captureOf());
    const auto frame = m_log.newest();
    EXPECT_EQ(frame->size, Screen.size());
    EXPECT_TRUE(isColour(*frame, {120, 120}, Red));
    EXPECT_TRUE(isColour(*frame, {220, 120}, Green));
    EXPECT_TRUE(isColour(*frame, {320, 120}, Blue));
    EXPECT_TRUE(isColour(*frame, {420, 120}, Grey));
    EXPECT_TRUE(isColour(*frame, {98, 120}, Grey));
}

TEST_F(X11FrameSource, ScalesToTheOutputSize)
{
    m_painter.fill({0, 0, 320, 480}, Red);
    startAndSettle(m_log, captureOf({320, 240}));
    const auto frame = m_log.newest();
    EXPECT_EQ(frame->size, QSize(320, 240));
    EXPECT_TRUE(isColour(*frame, {150, 200}, Red));
    EXPECT_TRUE(isColour(*frame, {170, 200}, Grey));
}

TEST_F(X11FrameSource, StaticScreenProducesOneFrame)
{
    const auto before = HostClock::now();
    start(m_log, captureOf());
    ASSERT_TRUE(m_log.waitForCount(1, 2s));
    EXPECT_GE(m_log.times()[0], before);
    EXPECT_LE(m_log.times()[0], HostClock::now());
    EXPECT_TRUE(m_log.getsNoFrame(1s));
}

TEST_F(X11FrameSource, StaticScreenUsesAlmostNoCpu)
{
    startAndSettle(m_log, captureOf(Screen.size(), true));
    const auto before = std::clock();
    std::this_thread::sleep_for(2s);
    const double seconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    RecordProperty("cpu_seconds_of_two", std::to_string(seconds));
    EXPECT_LT(seconds, 0.01);
}

TEST_F(X11FrameSource, DrawingProducesAFrame)
{
    startAndSettle(m_log, captureOf());
    m_painter.fill({10, 300, 20, 20}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {20, 310}, Red); }));
    m_painter.fill({400, 20, 20, 20}, Blue);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) {
        return isColour(frame, {410, 30}, Blue) && isColour(frame, {20, 310}, Red);
    }));
    EXPECT_TRUE(m_log.getsNoFrame(QuietTime));
}

/// How regularly frames arrive, compared with a grid of frame slots.
struct Pace {
    double framesPerSecond = 0;
    /// Frames in the same slot as the previous frame.
    int duplicates = 0;
    /// How far the frames move within their slots from the first third to the last. Units: frame durations.
    double drift = 0;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

Pace paceOf(const std::vector<HostTime>& times, double rate)
{
    const auto slotPosition = [&](HostTime time) { return toSeconds(time - times.front()) * rate; };
    std::vector<double> offsets;
    offsets.reserve(times.size());
    for (const auto time : times) {
        offsets.push_back(std::remainder(slotPosition(time), 1.0));
    }
    // The median, because single frames, including the first, may be late.
    const double phase = median(offsets);
    Pace pace{.framesPerSecond = static_cast<double>(times.size() - 1) / toSeconds(times.back() - times.front())};
    std::vector<double> positions;
    positions.reserve(times.size());
    double before = -1;
    for (const auto time : times) {
        const double slot = std::floor(slotPosition(time) - phase + 0.25);
        pace.duplicates += slot <= before ? 1 : 0;
        before = slot;
        positions.push_back(std::remainder(slotPosition(time) - phase, 1.0));
    }
    const auto third = static_cast<std::ptrdiff_t>(positions.size() / 3);
    pace.drift =
        median({positions.end() - third, positions.end()}) - median({positions.begin(), positions.begin() + third});
    return pace;
}

TEST_F(X11FrameSource, KeepsTheFrameRateWithoutDrift)
{
    start(m_log, captureOf());
    ASSERT_TRUE(m_log.waitForCount(1));
    const auto end = HostClock::now() + 3s;
    for (std::uint32_t step = 0; HostClock::now() < end; ++step) {
        m_painter.fill({0, 0, 64, 64}, step * 97);
        std::this_thread::sleep_for(2ms);
    }
    m_source->stop();
    const Pace pace = paceOf(m_log.times(), 60);
    std::printf("%.3f frames a second, drift %.4f frames, %d duplicates\n", pace.framesPerSecond, pace.drift,
                pace.duplicates);
    EXPECT_GE(pace.framesPerSecond, 59.4);
    EXPECT_LE(pace.framesPerSecond, 60.6);
    // Threads that wake up late on a busy machine put two frames into one slot. A wrong pace does so more often.
    EXPECT_LE(pace.duplicates, 18);
    EXPECT_LT(std::abs(pace.drift), 0.1);
}

TEST_F(X11FrameSource, KeepsLowFrameRates)
{
    auto capture = captureOf();
    capture.settings.framesPerSecond = 10;
    start(m_log, capture);
    const auto end = HostClock::now() + 1s;
    for (std::uint32_t step = 0; HostClock::now() < end; ++step) {
        m_painter.fill({0, 0, 64, 64}, step * 97);
        std::this_thread::sleep_for(5ms);
    }
    m_source->stop();
    EXPECT_LE(m_log.count(), 12U);
    EXPECT_GE(m_log.count(), 8U);
}

TEST_F(X11FrameSource, DrawsTheCursorOnlyIfRequested)
{
    m_painter.warpPointer({300, 200});
    const auto differs = [](const VideoFrame& frame) {
        for (int y = 180; y < 230; ++y) {
            for (int x = 280; x < 330; ++x) {
                if (!isColour(frame, {x, y}, Grey)) {
                    return true;
                }
            }
        }
        return false;
    };
    startAndSettle(m_log, captureOf(Screen.size(), false));
    EXPECT_FALSE(differs(*m_log.newest()));
    startAndSettle(m_log, captureOf(Screen.size(), true));
    EXPECT_TRUE(differs(*m_log.newest()));
    moveMouse("300", "200");
    EXPECT_TRUE(m_log.waitFor([&](const VideoFrame& frame) { return !differs(frame); }))
        << "the old cursor is still visible";
    EXPECT_FALSE(isColour(*m_log.newest(), {600, 400}, Grey));
}

TEST_F(X11FrameSource, CursorMotionOverAStaticScreenProducesAFrame)
{
    startAndSettle(m_log, captureOf(Screen.size(), true));
    const auto before = m_log.count();
    moveMouse("-20", "-20");
    EXPECT_TRUE(m_log.waitForCount(before + 1));
    while (!m_log.getsNoFrame(QuietTime)) { }
    const auto beforeWarp = m_log.count();
    m_painter.warpPointer({50, 50});
    EXPECT_TRUE(m_log.waitForCount(beforeWarp + 1)) << "pointer moved by a program";
    startAndSettle(m_log, captureOf(Screen.size(), false));
    moveMouse("30", "30");
    EXPECT_TRUE(m_log.getsNoFrame(QuietTime)) << "the cursor is not shown";
}

TEST_F(X11FrameSource, IgnoresChangesOutsideTheDisplay)
{
    ASSERT_TRUE(addMonitor("Left", "200/50x480/120+0+0", "screen"));
    ASSERT_TRUE(addMonitor("Middle", "200/50x480/120+200+0", "none"));
    ASSERT_TRUE(addMonitor("Right", "240/60x480/120+400+0", "none"));
    startAndSettle(m_log, captureOfMonitor("Middle", {200, 480}));
    // On both sides at once, so that the bounding box includes the captured display.
    m_painter.fill({10, 10, 50, 50}, Red);
    m_painter.fill({500, 300, 50, 50}, Red);
    EXPECT_TRUE(m_log.getsNoFrame(QuietTime));
    m_painter.fill({250, 100, 50, 50}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {75, 125}, Red); }));
}

TEST_F(X11FrameSource, KeepsTheLastChangeWhileTheFramePoolIsEmpty)
{
    FrameLog keepingLog(FrameLog::Keep::all);
    start(keepingLog, captureOf());
    const auto paint = [this](int steps) {
        for (int step = 0; step < steps; ++step) {
            m_painter.fill({0, 0, 64, 64}, step % 2 == 0 ? Red : Green);
            std::this_thread::sleep_for(2ms);
        }
    };
    for (const auto end = HostClock::now() + 5s; keepingLog.count() < 8 && HostClock::now() < end;) {
        paint(2);
    }
    paint(50);
    EXPECT_EQ(keepingLog.count(), 8U) << "the pool's size";
    m_painter.fill({0, 0, 64, 64}, Blue);
    EXPECT_TRUE(keepingLog.getsNoFrame(QuietTime));
    keepingLog.releaseFrames();
    EXPECT_TRUE(keepingLog.waitFor([](const VideoFrame& frame) { return isColour(frame, {30, 30}, Blue); }));
    m_source->stop();
}

// A virtual server's screen can only shrink below its initial size.
class X11FrameSourceOnALargeScreen : public X11FrameSource {
protected:
    X11FrameSourceOnALargeScreen()
        : X11FrameSource(QStringLiteral("1280x960"))
    {
        for (const auto& mode : {QStringLiteral("800x600"), QStringLiteral("640x480"), QStringLiteral("399x301")}) {
            const auto sides = mode.split(u'x');
            QStringList timings{mode, QStringLiteral("40")};
            for (const auto& side : sides) {
                for (const int offset : {0, 40, 80, 120}) {
                    timings.append(QString::number(side.toInt() + offset));
                }
            }
            EXPECT_TRUE(m_server.run(QStringLiteral("xrandr"), QStringList{QStringLiteral("--newmode")} + timings));
            EXPECT_TRUE(
                m_server.run(QStringLiteral("xrandr"), {QStringLiteral("--addmode"), QStringLiteral("screen"), mode}));
        }
    }

    /// Turns the output off. xrandr then fails because of what remains of the screen, so its result is ignored.
    void turnOff()
    {
        const auto before = captureOf().request.displayID;
        setOutput({QStringLiteral("--off")});
        ASSERT_NE(captureOf().request.displayID, before);
    }
    bool setOutput(const QStringList& arguments)
    {
        return m_server.run(QStringLiteral("xrandr"),
                            QStringList{QStringLiteral("--output"), QStringLiteral("screen")} + arguments);
    }
};

TEST_F(X11FrameSourceOnALargeScreen, ContinuesAfterAResize)
{
    startAndSettle(m_log, captureOf({640, 480}));
    for (const auto& mode : {QStringLiteral("800x600"), QStringLiteral("399x301"), QStringLiteral("640x480"),
                             QStringLiteral("1280x960")}) {
        const auto before = m_log.count();
        ASSERT_TRUE(setOutput({QStringLiteral("--mode"), mode}));
        EXPECT_TRUE(m_log.waitForCount(before + 1)) << mode.toStdString();
        m_painter.fill({0, 0, 2000, 2000}, Blue);
        EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) {
            return isColour(frame, {10, 10}, Blue) && isColour(frame, {630, 470}, Blue);
        })) << mode.toStdString();
        EXPECT_EQ(m_log.newest()->size, Screen.size());
        m_painter.fill({0, 0, 2000, 2000}, Grey);
    }
    EXPECT_TRUE(m_log.stopReasons().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, ContinuesAfterAModeChangeTurnsTheDisplayOff)
{
    startAndSettle(m_log, captureOf({640, 480}));
    turnOff();
    std::this_thread::sleep_for(200ms);
    ASSERT_TRUE(setOutput({QStringLiteral("--mode"), QStringLiteral("800x600")}));
    m_painter.fill({0, 0, 2000, 2000}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {630, 470}, Red); }));
    EXPECT_TRUE(m_log.stopReasons().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, ModeChangeFollowedByAStaticScreenIsNoFailure)
{
    startAndSettle(m_log, captureOf({640, 480}));
    turnOff();
    std::this_thread::sleep_for(200ms);
    ASSERT_TRUE(setOutput({QStringLiteral("--auto")}));
    // Longer than a display may be missing.
    std::this_thread::sleep_for(2500ms);
    m_painter.fill({0, 0, 2000, 2000}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {320, 240}, Red); }));
    EXPECT_TRUE(m_log.stopReasons().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, StopsWithAMessageIfTheDisplayIsDisconnected)
{
    startAndSettle(m_log, captureOf({640, 480}));
    turnOff();
    ASSERT_TRUE(m_log.waitForStop());
    EXPECT_FALSE(m_log.stopReasons()[0].isEmpty());
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.stopReasons().size(), 1U);
}

TEST_F(X11FrameSource, StopsOnceWithAMessageIfTheServerDies)
{
    startAndSettle(m_log, captureOf());
    m_server.kill();
    ASSERT_TRUE(m_log.waitForStop());
    EXPECT_FALSE(m_log.stopReasons()[0].isEmpty());
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.stopReasons().size(), 1U);
    m_source->stop();
}

TEST_F(X11FrameSource, StopsIfTheServerDiesWhileFramesArrive)
{
    start(m_log, captureOf(Screen.size(), true));
    ASSERT_TRUE(m_log.waitForCount(1));
    std::jthread painting([name = m_server.name()](const std::stop_token& stop) {
        Painter painter(name);
        for (std::uint32_t step = 0; !stop.stop_requested() && xcb_connection_has_error(painter.server()) == 0;
             ++step) {
            painter.fill(Screen, step);
        }
    });
    ASSERT_TRUE(m_log.waitForCount(20));
    m_server.kill();
    ASSERT_TRUE(m_log.waitForStop());
    EXPECT_EQ(m_log.stopReasons().size(), 1U);
}

TEST_F(X11FrameSource, OpenThrowsIfTheDisplayOrServerIsMissing)
{
    EXPECT_THROW(m_source->open({.displayID = 12345}, {}), PlatformError);
    EXPECT_THROW(makeX11FrameSource(QStringLiteral(":9999"))->open(captureOf().request, {}), PlatformError);
}

TEST_F(X11FrameSource, NoEventAfterStop)
{
    start(m_log, captureOf());
    ASSERT_TRUE(m_log.waitForCount(1));
    m_source->stop();
    const auto count = m_log.count();
    m_painter.fill(Screen, Red);
    m_server.kill();
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.count(), count);
    EXPECT_TRUE(m_log.stopReasons().empty());
    m_source->stop();
}

class X11FrameSourceWithoutSharedMemory : public X11FrameSource {
protected:
    X11FrameSourceWithoutSharedMemory()
        : X11FrameSource(QStringLiteral("640x480"), {QStringLiteral("-extension"), QStringLiteral("MIT-SHM")})
    {
    }
};

TEST_F(X11FrameSourceWithoutSharedMemory, ReadsPixelsOverTheConnection)
{
    m_painter.fill({100, 100, 64, 64}, Red);
    startAndSettle(m_log, captureOf());
    EXPECT_TRUE(isColour(*m_log.newest(), {120, 120}, Red));
    m_painter.fill({100, 300, 64, 64}, Green);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) {
        return isColour(frame, {120, 320}, Green) && isColour(frame, {120, 120}, Red);
    }));
}

} // namespace
} // namespace quelto
