// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"
#include "Recording.h"
#include "TonePlayer.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <thread>

namespace quelto::pipewire {
namespace {

/// Whether the values contain the tone with the amplitude, by default that of TonePlayerProcess.
bool hasTone(const std::vector<float>& values, double hertz, double wanted = TonePlayerProcess::Settings().amplitude)
{
    const double amplitude = steadyAmplitudeOf(values, hertz);
    std::printf("%.0f Hz: %.4f\n", hertz, amplitude);
    return std::abs(amplitude - wanted) < 0.005;
}

bool lacksTone(const std::vector<float>& values, double hertz, double most = 0.003)
{
    const double amplitude = amplitudeOf(values, hertz);
    std::printf("%.0f Hz: %.4f\n", hertz, amplitude);
    return amplitude < most;
}

class SystemAudioTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        m_source->start(m_recording.events());
    }

    /// Starts a new recording of that length.
    AudioBuffers record(double seconds)
    {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForAudio(seconds, seconds + 5)) << "no audio";
        return m_recording.buffers();
    }

    std::vector<float> leftOf(double seconds) { return channelOf(record(seconds), 0); }

    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
    Recording m_recording;
    std::unique_ptr<AudioSource> m_source = m_server->systemAudio();
};

void print(const char* what, const BeepOffsets& beeps)
{
    std::printf("%s: %zu beeps, mean %+.2f ms, worst %.2f ms\n", what, beeps.count, beeps.mean, beeps.worst);
}

TEST_F(SystemAudioTest, RecordsLeftAndRightChannels)
{
    const TonePlayerProcess player({.leftHertz = 440, .rightHertz = 1000, .amplitude = 0.25});
    ASSERT_TRUE(m_recording.waitForAudio(0.3));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const AudioBuffers buffers = record(1);
        const std::vector<float> left = channelOf(buffers, 0);
        const std::vector<float> right = channelOf(buffers, 1);
        EXPECT_EQ(buffers[0]->format, AudioFormat{});
        return hasTone(left, 440) && hasTone(right, 1000) && lacksTone(left, 1000) && lacksTone(right, 440);
    }));
}

TEST_F(SystemAudioTest, MixesPrograms)
{
    const TonePlayerProcess first({.leftHertz = 440, .rightHertz = 440, .amplitude = 0.2});
    const TonePlayerProcess second({.leftHertz = 700, .rightHertz = 700, .amplitude = 0.3});
    EXPECT_TRUE(becomesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return hasTone(left, 440, 0.2) && hasTone(left, 700, 0.3);
    }));
}

TEST_F(SystemAudioTest, ExcludesThisProgramsAudio)
{
    const TonePlayer ours({.leftHertz = 2000, .rightHertz = 2000, .amplitude = 0.5F});
    const TonePlayerProcess other({.leftHertz = 440, .rightHertz = 440});
    ASSERT_TRUE(m_recording.waitForAudio(0.5));
    EXPECT_TRUE(run(QStringLiteral("pw-link"), {QStringLiteral("-l")}).contains(u"quelto-system-sound:input_FL"));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const std::vector<float> left = leftOf(1);
        return hasTone(left, 440) && lacksTone(left, 2000, 0.001);
    }));
}

TEST_F(SystemAudioTest, DeliversSilenceWhileNothingPlays)
{
    {
        const TonePlayerProcess player({});
        ASSERT_TRUE(m_recording.waitForAudio(0.3));
    }
    ASSERT_TRUE(m_recording.waitForSilence(1));
    const auto silence = m_recording.silence();
    const auto last = endOf(*m_recording.buffers().last());
    EXPECT_LT(std::abs(toSeconds(silence.first()->presentationTime - last)), 0.01);
    m_recording.clear();
    EXPECT_TRUE(m_recording.waitForSilence(1));
    EXPECT_TRUE(m_recording.buffers().isEmpty()) << "the node runs although nothing is linked to it";
    EXPECT_TRUE(m_recording.warnings().empty());
}

TEST_F(SystemAudioTest, LeavesAGapWhileNothingPlayed)
{
    {
        const TonePlayerProcess player({});
        ASSERT_TRUE(m_recording.waitForAudio(0.3));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    const HostTime middle = HostClock::now();
    const TonePlayerProcess player({});
    ASSERT_TRUE(m_recording.waitForAudio(0.3));
    const AudioBuffers buffers = m_recording.buffers();
    for (const AudioBufferPtr& buffer : buffers) {
        EXPECT_FALSE(buffer->presentationTime < middle && endOf(*buffer) > middle);
    }
    EXPECT_LT(buffers.first()->presentationTime, middle);
    EXPECT_GT(buffers.last()->presentationTime, middle);
}

TEST_F(SystemAudioTest, FollowsTheDefaultOutput)
{
    const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
    const TonePlayerProcess onSpeaker(
        {.leftHertz = 440, .rightHertz = 440, .target = desktopVariable("QUELTO_TEST_SPEAKER")});
    const TonePlayerProcess onHeadset({.leftHertz = 700, .rightHertz = 700, .target = QStringLiteral("test_headset")});
    ASSERT_TRUE(m_recording.waitForAudio(0.5));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const std::vector<float> left = leftOf(0.5);
        return hasTone(left, 440) && lacksTone(left, 700);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_headset")});
    EXPECT_TRUE(becomesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return lacksTone(left, 440) && hasTone(left, 700);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopVariable("QUELTO_TEST_SPEAKER")});
    EXPECT_TRUE(becomesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return lacksTone(left, 700) && hasTone(left, 440);
    }));
}

TEST_F(SystemAudioTest, FollowsAStreamMovedToAnotherOutput)
{
    const LoadedModule other({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_other")});
    const TonePlayerProcess moving({.leftHertz = 440, .rightHertz = 440});
    ASSERT_TRUE(becomesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    const QString stream = playingNode();
    const TonePlayerProcess staying(
        {.leftHertz = 700, .rightHertz = 700, .target = desktopVariable("QUELTO_TEST_SPEAKER")});
    moveStream(stream, QStringLiteral("test_other"));
    EXPECT_TRUE(becomesTrue([&] { return lacksTone(leftOf(0.5), 440); }));
    moveStream(stream, desktopVariable("QUELTO_TEST_SPEAKER"));
    EXPECT_TRUE(becomesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    EXPECT_TRUE(holdsInOneOfThree([&] { return hasTone(leftOf(0.5), 700); }));
}

TEST_F(SystemAudioTest, ContinuesAfterItsOutputIsRemoved)
{
    const TonePlayerProcess player({.leftHertz = 440, .rightHertz = 440});
    {
        const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
        run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_headset")});
        EXPECT_TRUE(becomesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    }
    m_recording.clear();
    EXPECT_TRUE(m_recording.waitForAudio(0.5, 2)) << "must continue within two seconds";
    EXPECT_TRUE(holdsInOneOfThree([&] { return hasTone(leftOf(0.5), 440); }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopVariable("QUELTO_TEST_SPEAKER")});
}

TEST_F(SystemAudioTest, DownmixesSurroundToStereo)
{
    const LoadedModule surround({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_surround"),
                                 QStringLiteral("channels=6"),
                                 QStringLiteral("channel_map=front-left,front-right,front-center,lfe,rear-left,"
                                                "rear-right")});
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_surround")});
    const TonePlayerProcess player({.leftHertz = 440, .rightHertz = 1000});
    ASSERT_TRUE(m_recording.waitForAudio(0.5));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const AudioBuffers buffers = record(0.5);
        const std::vector<float> left = channelOf(buffers, 0);
        const std::vector<float> right = channelOf(buffers, 1);
        const auto isStronger = [](const auto& side, const auto& otherSide, double hertz) {
            const double own = steadyAmplitudeOf(side, hertz);
            const double others = steadyAmplitudeOf(otherSide, hertz);
            std::printf("%.0f Hz: %.4f on its own side, %.4f on the other\n", hertz, own, others);
            // With rounding errors: where nothing is upmixed, a side keeps exactly its amplitude of 0.25.
            return own >= 0.2499 && own > 1.5 * others;
        };
        // Some session managers upmix stereo to all channels, so the centre adds some of each side to the other.
        return isStronger(left, right, 440) && isStronger(right, left, 1000);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopVariable("QUELTO_TEST_SPEAKER")});
}

TEST_F(SystemAudioTest, TimestampsAreContinuous)
{
    const TonePlayerProcess player({});
    ASSERT_TRUE(m_recording.waitForAudio(0.3));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const double worst = largestTimestampError(record(4));
        std::printf("timestamps: largest error %.4f ms\n", worst);
        return worst < 3;
    }));
}

TEST_F(SystemAudioTest, CombinesBlocksOfALowLatencyGraph)
{
    const GraphSetting quantum(QStringLiteral("clock.force-quantum"), 64);
    TonePlayerProcess player({.amplitude = 0.5, .isBeeping = true});
    ASSERT_TRUE(m_recording.waitForAudio(0.3));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const AudioBuffers buffers = record(2.5);
        const auto combined = std::ranges::count_if(
            buffers, [](const AudioBufferPtr& buffer) { return buffer->frames >= 480 && buffer->frames < 480 + 64; });
        const BeepOffsets beeps = beepOffsets(beepsIn(buffers), player.beeps());
        print("64 frames per cycle", beeps);
        // Even an idle machine loses cycles at that rate. A long gap ends a buffer early, the silence that fills a
        // short one makes it longer, and lost frames affect the timestamps for half a second.
        return combined > buffers.size() * 3 / 4 && beeps.count >= 2 && beeps.worst < 30;
    }));
}

TEST_F(SystemAudioTest, TimestampIsWhenTheAudioIsHeard)
{
    TonePlayerProcess player({.amplitude = 0.5, .isBeeping = true});
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const AudioBuffers buffers = record(6.2);
        const BeepOffsets beeps = beepOffsets(beepsIn(buffers), player.beeps());
        print("system audio", beeps);
        return beeps.count >= 5 && beeps.worst < 3;
    }));
}

TEST_F(SystemAudioTest, TimestampIsCorrectAtAnotherGraphRate)
{
    const GraphSetting rate(QStringLiteral("clock.force-rate"), 44100);
    TonePlayerProcess player({.amplitude = 0.5, .isBeeping = true});
    EXPECT_TRUE(holdsInOneOfThree([&] {
        const AudioBuffers buffers = record(4.2);
        EXPECT_TRUE(
            std::ranges::all_of(buffers, [](const auto& buffer) { return buffer->format.sampleRate == 48000; }));
        const BeepOffsets beeps = beepOffsets(beepsIn(buffers), player.beeps());
        print("graph at 44,100 Hz", beeps);
        return beeps.count >= 3 && beeps.worst < 30;
    }));
}

TEST_F(SystemAudioTest, UsesLittleCpu)
{
    const TonePlayerProcess player({});
    ASSERT_TRUE(m_recording.waitForAudio(0.5));
    const auto processorSeconds = [] {
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
            double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    };
    const double before = processorSeconds();
    ASSERT_TRUE(m_recording.waitForAudio(4, 8));
    const double cost = (processorSeconds() - before) / 4 * 1000;
    std::printf("capture: %.2f ms of CPU time per second\n", cost);
    EXPECT_LT(cost, 100);
}

TEST_F(SystemAudioTest, ResumesWithinTwoSecondsOfAServerRestart)
{
    {
        const TonePlayerProcess player({});
        ASSERT_TRUE(m_recording.waitForAudio(0.3));
    }
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(2));
    EXPECT_FALSE(m_recording.warnings()[0]);
    EXPECT_TRUE(m_recording.warnings()[1]);
    const HostTime dead = HostClock::now();
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    const HostTime back = HostClock::now();
    const TonePlayerProcess player({});
    ASSERT_TRUE(m_recording.waitForAudio(0.05));
    std::printf("audio resumed %.0f ms after the server\n", toSeconds(HostClock::now() - back) * 1000);
    EXPECT_LT(toSeconds(HostClock::now() - back), 2);
    EXPECT_FALSE(m_recording.warnings().back());
    for (const AudioBufferPtr& buffer : m_recording.buffers()) {
        EXPECT_TRUE(buffer->presentationTime < dead || buffer->presentationTime >= back)
            << "audio from a time without a server, " << toSeconds(buffer->presentationTime - dead)
            << " s after it died";
    }
    EXPECT_TRUE(holdsInOneOfThree([&] { return hasTone(leftOf(0.5), 440); }));
}

TEST_F(SystemAudioTest, NoEventAfterStop)
{
    {
        const TonePlayerProcess player({});
        ASSERT_TRUE(m_recording.waitForAudio(0.3));
        m_source->stop();
        m_recording.clear();
        EXPECT_FALSE(m_recording.waitForAudio(0.01, 0.3));
    }
    m_source->start(m_recording.events());
    ASSERT_TRUE(m_recording.waitForWarnings(1)) << "it works";
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(2));
    m_source->stop();
    m_recording.clear();
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    EXPECT_FALSE(m_recording.waitForWarnings(1, 0.5));
    m_source->stop();
    m_source->start(m_recording.events());
    const TonePlayerProcess player({});
    EXPECT_TRUE(m_recording.waitForAudio(0.3));
}

} // namespace
} // namespace quelto::pipewire
