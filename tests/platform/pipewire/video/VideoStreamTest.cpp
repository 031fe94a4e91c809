// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeScreen.h"
#include "ServerSocket.h"
#include "StreamLog.h"

#include "tests/platform/pipewire/audio/ChildProcess.h"

#include <gtest/gtest.h>

#include <thread>

namespace quelto::pipewire {
namespace {

using namespace std::chrono_literals;
using test::FrameLog;

constexpr QSize Output = {160, 90};
constexpr std::uint32_t Orange = 0xe08020;
constexpr std::uint32_t Violet = 0x8040c0;

/// Runs tools/private-desktop-sound.
void controlServer(const QStringList& arguments)
{
    ChildProcess process(qEnvironmentVariable("QUELTO_TEST_SOUND"), arguments);
    EXPECT_EQ(process.wait(), 0);
}

/// A fake screen and a stream that receives it.
struct Received {
    explicit Received(const FakeScreen::Settings& settings = {}, FrameLog::Keep keep = FrameLog::Keep::newest)
        : screen(settings)
        , log(keep)
        , stream(FileDescriptor(), screen.nodeId(), {}, log.events())
    {
        EXPECT_TRUE(screen.waitUntilStreaming());
        EXPECT_TRUE(log.waitForSize(settings.size));
    }

    bool waitForColour(std::uint32_t rgb) const
    {
        return log.frames().waitFor([&](const VideoFrame& frame) { return shows(frame, rgb); });
    }

    /// Shows the picture again and again, because pictures are lost while the format changes.
    bool showUntilSeen(std::uint32_t rgb)
    {
        const auto isSeen = [&](const VideoFrame& frame) { return shows(frame, rgb); };
        for (int i = 0; i < 100; ++i) {
            screen.tryShow({rgb});
            if (log.frames().waitFor(isSeen, 100ms)) {
                return true;
            }
        }
        return false;
    }

    FakeScreen screen;
    StreamLog log;
    VideoStream stream;
};

TEST(VideoStream, EveryFormatHasTheRightColours)
{
    for (const spa_video_format format : {SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA, SPA_VIDEO_FORMAT_RGBx,
                                          SPA_VIDEO_FORMAT_RGBA, SPA_VIDEO_FORMAT_BGR}) {
        Received received({.format = format});
        received.stream.start(Output, 60);
        ASSERT_TRUE(received.screen.show({Orange}));
        EXPECT_TRUE(received.waitForColour(Orange)) << "format " << format;
        EXPECT_EQ(received.log.frames().newest()->size, Output);
    }
}

TEST(VideoStream, StrideAndOffsetAreThoseOfTheBuffer)
{
    for (const spa_video_format format : {SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGR}) {
        Received received({.size = {321, 181}, .format = format, .stride = 1397, .offset = 131});
        received.stream.start({320, 180}, 60);
        ASSERT_TRUE(received.screen.show({Orange}));
        EXPECT_TRUE(received.waitForColour(Orange)) << "format " << format;
    }
}

TEST(VideoStream, FlawedPicturesAreSkipped)
{
    Received received;
    received.stream.start(Output, 60);
    for (const auto flaw :
         {FakeScreen::Flaw::corruptedChunk, FakeScreen::Flaw::corruptedHeader, FakeScreen::Flaw::empty}) {
        for (int i = 0; i < 10; ++i) {
            ASSERT_TRUE(received.screen.show({.rgb = Violet, .flaw = flaw}));
        }
    }
    ASSERT_TRUE(received.screen.show({Orange}));
    EXPECT_TRUE(received.waitForColour(Orange));
    EXPECT_EQ(received.log.frames().count(), 1u);
}

TEST(VideoStream, PresentationTimeIsThatOfTheSource)
{
    Received received;
    received.stream.start(Output, 60);
    const HostTime time = HostClock::now() + 20ms;
    ASSERT_TRUE(received.screen.show({.rgb = Orange, .time = time}));
    ASSERT_TRUE(received.log.frames().waitForCount(1));
    EXPECT_EQ(received.log.frames().times(), std::vector{time});
}

TEST(VideoStream, WithoutHeaderThePresentationTimeIsTheArrival)
{
    Received received({.hasHeader = false});
    received.stream.start(Output, 60);
    const HostTime before = HostClock::now();
    ASSERT_TRUE(received.screen.show({.rgb = Orange, .time = before - 1s}));
    ASSERT_TRUE(received.log.frames().waitForCount(1));
    EXPECT_GE(received.log.frames().times().front(), before);
    EXPECT_LE(received.log.frames().times().front(), HostClock::now());
}

TEST(VideoStream, PresentationTimesRise)
{
    Received received;
    received.stream.start(Output, 60);
    const HostTime time = HostClock::now() + 1ms;
    for (const auto shift : {0ms, 0ms, -5ms}) {
        const auto count = received.log.frames().count();
        ASSERT_TRUE(received.screen.show({.rgb = Orange, .time = time + shift}));
        ASSERT_TRUE(received.log.frames().waitForCount(count + 1));
    }
    const auto times = received.log.frames().times();
    ASSERT_EQ(times.size(), 3u);
    EXPECT_EQ(times[0], time);
    EXPECT_GT(times[1], times[0]);
    EXPECT_GT(times[2], times[1]);
    EXPECT_LT(times[2], time + 1ms);
}

TEST(VideoStream, FirstPictureWaitsForTheStart)
{
    Received received;
    ASSERT_TRUE(received.screen.show({Violet}));
    ASSERT_TRUE(received.screen.show({Orange}));
    EXPECT_TRUE(received.log.frames().getsNoFrame(100ms));
    const HostTime before = HostClock::now();
    received.stream.start(Output, 60);
    EXPECT_TRUE(received.waitForColour(Orange));
    EXPECT_EQ(received.log.frames().count(), 1u);
    EXPECT_GE(received.log.frames().times().front(), before);
}

TEST(VideoStream, NewFormatKeepsTheOutputSize)
{
    Received received;
    received.stream.start(Output, 60);
    ASSERT_TRUE(received.screen.show({Orange}));
    ASSERT_TRUE(received.waitForColour(Orange));

    received.screen.change({.size = {500, 400}, .format = SPA_VIDEO_FORMAT_RGBA, .stride = 2048});
    ASSERT_TRUE(received.log.waitForSize({500, 400}));
    EXPECT_TRUE(received.showUntilSeen(Violet));
    EXPECT_EQ(received.log.frames().newest()->size, Output);

    received.screen.change({.size = {120, 200}, .format = SPA_VIDEO_FORMAT_BGR});
    ASSERT_TRUE(received.log.waitForSize({120, 200}));
    EXPECT_TRUE(received.showUntilSeen(Orange));
    EXPECT_EQ(received.log.sizes(), (std::vector<QSize>{{320, 180}, {500, 400}, {120, 200}}));
    EXPECT_TRUE(received.log.ends().empty());
}

TEST(VideoStream, StalledSourceGoesOn)
{
    Received received;
    received.stream.start(Output, 60);
    ASSERT_TRUE(received.screen.show({Orange}));
    ASSERT_TRUE(received.waitForColour(Orange));
    EXPECT_TRUE(received.log.frames().getsNoFrame(1s));
    ASSERT_TRUE(received.screen.show({Violet}));
    EXPECT_TRUE(received.waitForColour(Violet));
    EXPECT_TRUE(received.log.ends().empty());
}

TEST(VideoStream, EndOfTheSourceIsReportedOnce)
{
    auto screen = std::make_unique<FakeScreen>(FakeScreen::Settings{});
    StreamLog log;
    VideoStream stream(FileDescriptor(), screen->nodeId(), {}, log.events());
    ASSERT_TRUE(screen->waitUntilStreaming());
    stream.start(Output, 60);
    ASSERT_TRUE(screen->show({Orange}));
    ASSERT_TRUE(log.frames().waitForCount(1));
    screen.reset();
    EXPECT_TRUE(log.waitForEnd());
    EXPECT_TRUE(log.frames().getsNoFrame(1s));
    EXPECT_EQ(log.ends(), std::vector{StreamEnd::sourceStopped});
}

TEST(VideoStream, IsDestroyedDuringFrames)
{
    FakeScreen screen({});
    const std::uint32_t node = screen.nodeId();
    std::atomic<bool> isDone = false;
    std::thread painter([&] {
        while (!isDone) {
            screen.tryShow({Orange});
            std::this_thread::sleep_for(1ms);
        }
    });
    for (int round = 0; round < 5; ++round) {
        StreamLog log;
        {
            VideoStream stream(FileDescriptor(), node, {}, log.events());
            stream.start(Output, 240);
            EXPECT_TRUE(log.frames().waitForCount(5));
        }
        EXPECT_TRUE(log.frames().getsNoFrame(50ms));
        EXPECT_TRUE(log.ends().empty());
    }
    isDone = true;
    painter.join();
}

TEST(VideoStream, SourceAtTheRateLosesNoFrame)
{
    Received received;
    received.stream.start(Output, 60);
    ASSERT_TRUE(received.screen.show({Orange}));
    ASSERT_TRUE(received.log.frames().waitForCount(1));
    const HostTime begin = HostClock::now() + 50ms;
    std::vector<HostTime> times;
    for (int i = 0; i < 300; ++i) {
        // A monitor with 120 Hz shows some frames one refresh late.
        const auto jitter = i * 7 % 5 < 2 ? 8'300us : 0us;
        times.push_back(begin + HostDuration(1s) * i / 60 + jitter);
        std::this_thread::sleep_until(std::chrono::steady_clock::time_point(times.back().time_since_epoch()));
        ASSERT_TRUE(received.screen.show({.rgb = Orange, .time = times.back()}));
    }
    EXPECT_TRUE(received.log.frames().waitForCount(301));
    auto shown = received.log.frames().times();
    shown.erase(shown.begin());
    EXPECT_EQ(shown, times);
}

TEST(VideoStream, FasterSourceIsThinnedAndItsLastFrameArrives)
{
    Received received;
    received.stream.start(Output, 60);
    const HostTime begin = HostClock::now();
    HostTime time;
    for (int i = 0; i < 360; ++i) {
        time = begin + HostDuration(1s) * i / 120;
        std::this_thread::sleep_until(std::chrono::steady_clock::time_point(time.time_since_epoch()));
        ASSERT_TRUE(received.screen.show({.rgb = i < 359 ? Orange : Violet, .time = time}));
    }
    EXPECT_TRUE(received.waitForColour(Violet));
    EXPECT_EQ(received.log.frames().times().back(), time);
    EXPECT_NEAR(static_cast<double>(received.log.frames().count()), 180, 4);
}

TEST(VideoStream, LastPictureBeforeAStillScreenArrives)
{
    Received received;
    received.stream.start(Output, 60);
    for (int round = 0; round < 20; ++round) {
        const std::uint32_t last = round % 2 == 0 ? Orange : Violet;
        ASSERT_TRUE(received.screen.show({0x404040}));
        ASSERT_TRUE(received.screen.show({0x808080}));
        ASSERT_TRUE(received.screen.show({last}));
        ASSERT_TRUE(received.waitForColour(last)) << round;
    }
}

TEST(VideoStream, BusyEncoderGetsTheNewestPictureLater)
{
    Received received({}, FrameLog::Keep::all);
    received.stream.start(Output, 60);
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(received.screen.show({Orange}));
        ASSERT_TRUE(received.log.frames().waitForCount(static_cast<std::size_t>(i) + 1));
    }
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(received.screen.show({i < 19 ? 0x404040u : Violet}));
    }
    EXPECT_TRUE(received.log.frames().getsNoFrame(100ms));
    received.log.releaseFrames();
    EXPECT_TRUE(received.waitForColour(Violet));
}

TEST(VideoStream, UsesAGivenConnection)
{
    FileDescriptor remote = connectToServer();
    ASSERT_GE(remote.get(), 0);
    FakeScreen screen({});
    StreamLog log;
    VideoStream stream(std::move(remote), screen.nodeId(), {}, log.events());
    ASSERT_TRUE(screen.waitUntilStreaming());
    stream.start(Output, 60);
    ASSERT_TRUE(screen.show({Orange}));
    EXPECT_TRUE(log.frames().waitForCount(1));
}

TEST(VideoStream, EndOfTheServerIsReportedOnce)
{
    auto received = std::make_unique<Received>();
    received->stream.start(Output, 60);
    ASSERT_TRUE(received->screen.show({Orange}));
    ASSERT_TRUE(received->log.frames().waitForCount(1));
    controlServer({QStringLiteral("kill"), QStringLiteral("pipewire")});
    EXPECT_TRUE(received->log.waitForEnd());
    EXPECT_TRUE(received->log.frames().getsNoFrame(1s));
    EXPECT_EQ(received->log.ends(), std::vector{StreamEnd::serverLost});
    received.reset();
    controlServer({QStringLiteral("restart")});
}

} // namespace
} // namespace quelto::pipewire
