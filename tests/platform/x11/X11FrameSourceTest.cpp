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
// Longer than a frame by far, and short enough to wait for.
constexpr auto QuietTime = 400ms;

class X11FrameSource : public testing::Test {
protected:
    explicit X11FrameSource(const QString& size = QStringLiteral("640x480"), const QStringList& furtherArguments = {})
        : m_server(size, furtherArguments)
        , m_painter(m_server.name())
        , m_source(makeX11FrameSource(m_server.name()))
    {
        m_painter.warpPointer({639, 479});
        m_painter.fill(Screen, Grey);
    }

    FrameRequest request(QSize size = Screen.size(), bool showsCursor = false) const
    {
        return {.displayID = makeX11Displays(m_server.name())->all().value(0).id,
                .outputSize = size,
                .framesPerSecond = 60,
                .showsCursor = showsCursor};
    }
    void start(FrameLog& log, const FrameRequest& wanted) { m_source->start(wanted, log.events()); }
    /// The first frame is there, and all that the set-up of the test itself has changed.
    void startAndSettle(FrameLog& log, const FrameRequest& wanted)
    {
        const std::size_t before = log.count();
        start(log, wanted);
        ASSERT_TRUE(log.waitForCount(before + 1));
        while (!log.staysQuiet(QuietTime)) { }
    }
    /// As a mouse would, by so many pixels.
    void moveMouse(const char* right, const char* down)
    {
        ASSERT_TRUE(m_server.run(QStringLiteral("xdotool"),
                                 {QStringLiteral("mousemove_relative"), QStringLiteral("--"), QString::fromUtf8(right),
                                  QString::fromUtf8(down)}));
    }
    bool monitors(const char* name, const char* geometry, const char* output)
    {
        return m_server.run(QStringLiteral("xrandr"),
                            {QStringLiteral("--setmonitor"), QString::fromUtf8(name), QString::fromUtf8(geometry),
                             QString::fromUtf8(output)});
    }
    FrameRequest requestFor(const char* monitor, QSize size)
    {
        for (const auto& display : makeX11Displays(m_server.name())->all()) {
            if (display.name == QString::fromUtf8(monitor)) {
                auto wanted = request(size);
                wanted.displayID = display.id;
                return wanted;
            }
        }
        ADD_FAILURE() << "no monitor " << monitor;
        return {};
    }

    TestServer m_server;
    Painter m_painter;
    // Outlives the source, whose thread may still call it.
    FrameLog m_log;
    std::unique_ptr<FrameSource> m_source;
};

TEST_F(X11FrameSource, GivesTheScreensColours)
{
    m_painter.fill({100, 100, 64, 64}, Red);
    m_painter.fill({200, 100, 64, 64}, Green);
    m_painter.fill({300, 100, 64, 64}, Blue);
    startAndSettle(m_log, request());
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
    startAndSettle(m_log, request({320, 240}));
    const auto frame = m_log.newest();
    EXPECT_EQ(frame->size, QSize(320, 240));
    EXPECT_TRUE(isColour(*frame, {150, 200}, Red));
    EXPECT_TRUE(isColour(*frame, {170, 200}, Grey));
}

TEST_F(X11FrameSource, GivesAFirstFrameAndNoFurtherOneOfAStillScreen)
{
    const auto before = HostClock::now();
    start(m_log, request());
    ASSERT_TRUE(m_log.waitForCount(1, 2s));
    EXPECT_GE(m_log.times()[0], before);
    EXPECT_LE(m_log.times()[0], HostClock::now());
    EXPECT_TRUE(m_log.staysQuiet(1s));
}

TEST_F(X11FrameSource, CostsNextToNothingOnAStillScreen)
{
    startAndSettle(m_log, request(Screen.size(), true));
    const auto before = std::clock();
    std::this_thread::sleep_for(2s);
    const double seconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    RecordProperty("cpu_seconds_of_two", std::to_string(seconds));
    EXPECT_LT(seconds, 0.01);
}

TEST_F(X11FrameSource, FollowsADrawing)
{
    startAndSettle(m_log, request());
    m_painter.fill({10, 300, 20, 20}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {20, 310}, Red); }));
    m_painter.fill({400, 20, 20, 20}, Blue);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) {
        return isColour(frame, {410, 30}, Blue) && isColour(frame, {20, 310}, Red);
    }));
    EXPECT_TRUE(m_log.staysQuiet(QuietTime));
}

/// Where frames lie against a grid of absolute times.
struct Pace {
    double framesPerSecond = 0;
    /// Frames that share their moment of the grid with the one before.
    int doubles = 0;
    /// Of the frames' places, in frame lengths, from the first third of them to the last.
    double drift = 0;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

Pace paceOf(const std::vector<HostTime>& times, double rate)
{
    const auto place = [&](HostTime time) { return inSeconds(time - times.front()) * rate; };
    std::vector<double> offsets;
    offsets.reserve(times.size());
    for (const auto time : times) {
        offsets.push_back(std::remainder(place(time), 1.0));
    }
    // The first frame may itself be late; most of the others are not.
    const double phase = median(offsets);
    Pace pace{.framesPerSecond = static_cast<double>(times.size() - 1) / inSeconds(times.back() - times.front())};
    std::vector<double> places;
    places.reserve(times.size());
    double before = -1;
    for (const auto time : times) {
        const double moment = std::floor(place(time) - phase + 0.25);
        pace.doubles += moment <= before ? 1 : 0;
        before = moment;
        places.push_back(std::remainder(place(time) - phase, 1.0));
    }
    const auto third = static_cast<std::ptrdiff_t>(places.size() / 3);
    pace.drift = median({places.end() - third, places.end()}) - median({places.begin(), places.begin() + third});
    return pace;
}

TEST_F(X11FrameSource, HoldsTheRateOfAMovingScreenWithoutDrift)
{
    // A machine that does much else at the same time misses moments, or lets two frames share one; it gets more tries.
    constexpr double LeastRate = 59.4;
    constexpr int MostDoubles = 5;
    Pace pace;
    for (int attempt = 0; attempt < 3; ++attempt) {
        FrameLog log;
        start(log, request());
        ASSERT_TRUE(log.waitForCount(1));
        const auto end = HostClock::now() + 3s;
        for (std::uint32_t step = 0; HostClock::now() < end; ++step) {
            m_painter.fill({0, 0, 64, 64}, step * 97);
            std::this_thread::sleep_for(2ms);
        }
        m_source->stop();
        pace = paceOf(log.times(), 60);
        std::printf("%.3f frames a second, drift %.4f frames, %d doubles\n", pace.framesPerSecond, pace.drift,
                    pace.doubles);
        if (pace.framesPerSecond >= LeastRate && pace.doubles <= MostDoubles) {
            break;
        }
    }
    EXPECT_GE(pace.framesPerSecond, LeastRate);
    EXPECT_LE(pace.framesPerSecond, 60.6);
    EXPECT_LE(pace.doubles, MostDoubles);
    EXPECT_LT(std::abs(pace.drift), 0.1);
}

TEST_F(X11FrameSource, KeepsSlowerRates)
{
    auto wanted = request();
    wanted.framesPerSecond = 10;
    start(m_log, wanted);
    const auto end = HostClock::now() + 1s;
    for (std::uint32_t step = 0; HostClock::now() < end; ++step) {
        m_painter.fill({0, 0, 64, 64}, step * 97);
        std::this_thread::sleep_for(5ms);
    }
    m_source->stop();
    EXPECT_LE(m_log.count(), 12U);
    EXPECT_GE(m_log.count(), 8U);
}

TEST_F(X11FrameSource, DrawsTheCursorOnlyWhenAsked)
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
    startAndSettle(m_log, request(Screen.size(), false));
    EXPECT_FALSE(differs(*m_log.newest()));
    startAndSettle(m_log, request(Screen.size(), true));
    EXPECT_TRUE(differs(*m_log.newest()));
    moveMouse("300", "200");
    EXPECT_TRUE(m_log.waitFor([&](const VideoFrame& frame) { return !differs(frame); }))
        << "it must leave nothing behind";
    EXPECT_FALSE(isColour(*m_log.newest(), {600, 400}, Grey));
}

TEST_F(X11FrameSource, SeesTheCursorMoveOverAStillScreen)
{
    startAndSettle(m_log, request(Screen.size(), true));
    const auto before = m_log.count();
    moveMouse("-20", "-20");
    EXPECT_TRUE(m_log.waitForCount(before + 1));
    while (!m_log.staysQuiet(QuietTime)) { }
    const auto beforeWarp = m_log.count();
    m_painter.warpPointer({50, 50});
    EXPECT_TRUE(m_log.waitForCount(beforeWarp + 1)) << "moved by a program";
    startAndSettle(m_log, request(Screen.size(), false));
    moveMouse("30", "30");
    EXPECT_TRUE(m_log.staysQuiet(QuietTime)) << "a cursor that is not shown is no change";
}

TEST_F(X11FrameSource, TakesNoNoticeOfWhatHappensElsewhere)
{
    ASSERT_TRUE(monitors("Left", "200/50x480/120+0+0", "screen"));
    ASSERT_TRUE(monitors("Middle", "200/50x480/120+200+0", "none"));
    ASSERT_TRUE(monitors("Right", "240/60x480/120+400+0", "none"));
    startAndSettle(m_log, requestFor("Middle", {200, 480}));
    // On both sides at once, so that the box around both lies over the recorded part.
    m_painter.fill({10, 10, 50, 50}, Red);
    m_painter.fill({500, 300, 50, 50}, Red);
    EXPECT_TRUE(m_log.staysQuiet(QuietTime));
    m_painter.fill({250, 100, 50, 50}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {75, 125}, Red); }));
}

TEST_F(X11FrameSource, KeepsTheLastChangeWhileNoFrameIsFree)
{
    FrameLog hoarder(FrameLog::Keep::all);
    start(hoarder, request());
    const auto paint = [this](int steps) {
        for (int step = 0; step < steps; ++step) {
            m_painter.fill({0, 0, 64, 64}, step % 2 == 0 ? Red : Green);
            std::this_thread::sleep_for(2ms);
        }
    };
    for (const auto end = HostClock::now() + 5s; hoarder.count() < 8 && HostClock::now() < end;) {
        paint(2);
    }
    paint(50);
    EXPECT_EQ(hoarder.count(), 8U) << "the pool's size";
    m_painter.fill({0, 0, 64, 64}, Blue);
    EXPECT_TRUE(hoarder.staysQuiet(QuietTime));
    hoarder.letGo();
    EXPECT_TRUE(hoarder.waitFor([](const VideoFrame& frame) { return isColour(frame, {30, 30}, Blue); }));
    m_source->stop();
}

// A virtual server's screen only shrinks below the size that it began with.
class X11FrameSourceOnALargeScreen : public X11FrameSource {
protected:
    X11FrameSourceOnALargeScreen()
        : X11FrameSource(QStringLiteral("1280x960"))
    {
        for (const auto& mode : {QStringLiteral("800x600"), QStringLiteral("640x480"), QStringLiteral("399x301")}) {
            const auto sides = mode.split(u'x');
            QStringList timings{mode, QStringLiteral("40")};
            for (const auto& side : sides) {
                for (const int beyond : {0, 40, 80, 120}) {
                    timings.append(QString::number(side.toInt() + beyond));
                }
            }
            EXPECT_TRUE(m_server.run(QStringLiteral("xrandr"), QStringList{QStringLiteral("--newmode")} + timings));
            EXPECT_TRUE(
                m_server.run(QStringLiteral("xrandr"), {QStringLiteral("--addmode"), QStringLiteral("screen"), mode}));
        }
    }

    /// The program itself fails over what is left of the screen, but only after the output is off.
    void turnOff()
    {
        const auto before = request().displayID;
        setOutput({QStringLiteral("--off")});
        ASSERT_NE(request().displayID, before);
    }
    bool setOutput(const QStringList& arguments)
    {
        return m_server.run(QStringLiteral("xrandr"),
                            QStringList{QStringLiteral("--output"), QStringLiteral("screen")} + arguments);
    }
};

TEST_F(X11FrameSourceOnALargeScreen, GoesOnAfterAChangeOfTheScreensSize)
{
    startAndSettle(m_log, request({640, 480}));
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
    EXPECT_TRUE(m_log.endings().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, SurvivesAMomentWithoutAMode)
{
    startAndSettle(m_log, request({640, 480}));
    turnOff();
    std::this_thread::sleep_for(200ms);
    ASSERT_TRUE(setOutput({QStringLiteral("--mode"), QStringLiteral("800x600")}));
    m_painter.fill({0, 0, 2000, 2000}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {630, 470}, Red); }));
    EXPECT_TRUE(m_log.endings().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, DoesNotHoldAMomentWithoutAModeAgainstAScreenThatStandsStillAfterwards)
{
    startAndSettle(m_log, request({640, 480}));
    turnOff();
    std::this_thread::sleep_for(200ms);
    ASSERT_TRUE(setOutput({QStringLiteral("--auto")}));
    // Longer than a display may be away.
    std::this_thread::sleep_for(2500ms);
    m_painter.fill({0, 0, 2000, 2000}, Red);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) { return isColour(frame, {320, 240}, Red); }));
    EXPECT_TRUE(m_log.endings().empty());
}

TEST_F(X11FrameSourceOnALargeScreen, EndsWithASentenceWhenItsDisplayVanishes)
{
    startAndSettle(m_log, request({640, 480}));
    turnOff();
    ASSERT_TRUE(m_log.waitForEnding());
    EXPECT_FALSE(m_log.endings()[0].isEmpty());
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.endings().size(), 1U);
}

TEST_F(X11FrameSource, EndsOnceWithASentenceWhenTheServerDies)
{
    startAndSettle(m_log, request());
    m_server.kill();
    ASSERT_TRUE(m_log.waitForEnding());
    EXPECT_FALSE(m_log.endings()[0].isEmpty());
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.endings().size(), 1U);
    m_source->stop();
}

TEST_F(X11FrameSource, EndsWhenTheServerDiesInFullMotion)
{
    start(m_log, request(Screen.size(), true));
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
    ASSERT_TRUE(m_log.waitForEnding());
    EXPECT_EQ(m_log.endings().size(), 1U);
}

TEST_F(X11FrameSource, SaysWhyItCannotStart)
{
    auto unknown = request();
    unknown.displayID = 12345;
    EXPECT_THROW(m_source->start(unknown, m_log.events()), PlatformError);
    EXPECT_THROW(makeX11FrameSource(QStringLiteral(":9999"))->start(request(), m_log.events()), PlatformError);
}

TEST_F(X11FrameSource, GivesNothingAfterStop)
{
    start(m_log, request());
    ASSERT_TRUE(m_log.waitForCount(1));
    m_source->stop();
    const auto count = m_log.count();
    m_painter.fill(Screen, Red);
    m_server.kill();
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(m_log.count(), count);
    EXPECT_TRUE(m_log.endings().empty());
    m_source->stop();
}

class X11FrameSourceWithoutSharedMemory : public X11FrameSource {
protected:
    X11FrameSourceWithoutSharedMemory()
        : X11FrameSource(QStringLiteral("640x480"), {QStringLiteral("-extension"), QStringLiteral("MIT-SHM")})
    {
    }
};

TEST_F(X11FrameSourceWithoutSharedMemory, ReadsOverTheConnection)
{
    m_painter.fill({100, 100, 64, 64}, Red);
    startAndSettle(m_log, request());
    EXPECT_TRUE(isColour(*m_log.newest(), {120, 120}, Red));
    m_painter.fill({100, 300, 64, 64}, Green);
    EXPECT_TRUE(m_log.waitFor([](const VideoFrame& frame) {
        return isColour(frame, {120, 320}, Green) && isColour(frame, {120, 120}, Red);
    }));
}

} // namespace
} // namespace quelto
