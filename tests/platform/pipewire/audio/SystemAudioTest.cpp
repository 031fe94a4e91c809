// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recording.h"
#include "SoundDesktop.h"
#include "TonePlayer.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <thread>

namespace quelto::pipewire {
namespace {

/// Whether they hold the tone that loud; if nothing is said, as loud as OtherProgram plays it.
bool hasTone(const std::vector<float>& values, double hertz, double wanted = OtherProgram::Sound().amplitude)
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
        if (desktopName("QUELTO_TEST_SPEAKER").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        m_source->start(m_recording.events());
    }

    /// Records anew, for so long.
    AudioBuffers record(double seconds)
    {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForSound(seconds, seconds + 5)) << "no sound";
        return m_recording.samples();
    }

    std::vector<float> leftOf(double seconds) { return channelOf(record(seconds), 0); }

    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
    Recording m_recording;
    std::unique_ptr<AudioSource> m_source = m_server->systemAudio();
};

void print(const char* what, const BeepDistances& beeps)
{
    std::printf("%s: %zu beeps, mean %+.2f ms, worst %.2f ms\n", what, beeps.count, beeps.mean, beeps.worst);
}

TEST_F(SystemAudioTest, RecordsBothSidesAsTheyArePlayed)
{
    const OtherProgram player({.leftHertz = 440, .rightHertz = 1000, .amplitude = 0.25});
    ASSERT_TRUE(m_recording.waitForSound(0.3));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const AudioBuffers samples = record(1);
        const std::vector<float> left = channelOf(samples, 0);
        const std::vector<float> right = channelOf(samples, 1);
        EXPECT_EQ(samples[0]->format, AudioFormat{});
        return hasTone(left, 440) && hasTone(right, 1000) && lacksTone(left, 1000) && lacksTone(right, 440);
    }));
}

TEST_F(SystemAudioTest, MixesPrograms)
{
    const OtherProgram first({.leftHertz = 440, .rightHertz = 440, .amplitude = 0.2});
    const OtherProgram second({.leftHertz = 700, .rightHertz = 700, .amplitude = 0.3});
    EXPECT_TRUE(comesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return hasTone(left, 440, 0.2) && hasTone(left, 700, 0.3);
    }));
}

TEST_F(SystemAudioTest, LeavesOutThisProgramsOwnSound)
{
    const TonePlayer ours({.leftHertz = 2000, .rightHertz = 2000, .amplitude = 0.5F});
    const OtherProgram other({.leftHertz = 440, .rightHertz = 440});
    ASSERT_TRUE(m_recording.waitForSound(0.5));
    EXPECT_TRUE(run(QStringLiteral("pw-link"), {QStringLiteral("-l")}).contains(u"quelto-system-sound:input_FL"));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const std::vector<float> left = leftOf(1);
        return hasTone(left, 440) && lacksTone(left, 2000, 0.001);
    }));
}

TEST_F(SystemAudioTest, IsSilentWhileNobodyPlays)
{
    {
        const OtherProgram player({});
        ASSERT_TRUE(m_recording.waitForSound(0.3));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    m_recording.clear();
    EXPECT_FALSE(m_recording.waitForSound(0.02, 1)) << "the node is driven though nothing is linked to it";
    EXPECT_TRUE(m_recording.warnings().empty());
}

TEST_F(SystemAudioTest, LeavesAGapWhereNobodyPlayed)
{
    {
        const OtherProgram player({});
        ASSERT_TRUE(m_recording.waitForSound(0.3));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    const HostTime middle = HostClock::now();
    const OtherProgram player({});
    ASSERT_TRUE(m_recording.waitForSound(0.3));
    const AudioBuffers samples = m_recording.samples();
    for (const AudioBufferPtr& sample : samples) {
        EXPECT_FALSE(sample->presentationTime < middle && endOf(*sample) > middle);
    }
    EXPECT_LT(samples.first()->presentationTime, middle);
    EXPECT_GT(samples.last()->presentationTime, middle);
}

TEST_F(SystemAudioTest, FollowsTheDefaultOutput)
{
    const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
    const OtherProgram onSpeaker({.leftHertz = 440, .rightHertz = 440, .target = desktopName("QUELTO_TEST_SPEAKER")});
    const OtherProgram onHeadset({.leftHertz = 700, .rightHertz = 700, .target = QStringLiteral("test_headset")});
    ASSERT_TRUE(m_recording.waitForSound(0.5));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const std::vector<float> left = leftOf(0.5);
        return hasTone(left, 440) && lacksTone(left, 700);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_headset")});
    EXPECT_TRUE(comesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return lacksTone(left, 440) && hasTone(left, 700);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopName("QUELTO_TEST_SPEAKER")});
    EXPECT_TRUE(comesTrue([&] {
        const std::vector<float> left = leftOf(0.5);
        return lacksTone(left, 700) && hasTone(left, 440);
    }));
}

TEST_F(SystemAudioTest, FollowsAProgramThatIsMoved)
{
    const LoadedModule other({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_other")});
    const OtherProgram moving({.leftHertz = 440, .rightHertz = 440});
    ASSERT_TRUE(comesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    const QString stream = onlyStream();
    const OtherProgram staying({.leftHertz = 700, .rightHertz = 700, .target = desktopName("QUELTO_TEST_SPEAKER")});
    moveStream(stream, QStringLiteral("test_other"));
    EXPECT_TRUE(comesTrue([&] { return lacksTone(leftOf(0.5), 440); }));
    moveStream(stream, desktopName("QUELTO_TEST_SPEAKER"));
    EXPECT_TRUE(comesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    EXPECT_TRUE(holdsUndisturbed([&] { return hasTone(leftOf(0.5), 700); }));
}

TEST_F(SystemAudioTest, SurvivesTheLossOfItsOutput)
{
    const OtherProgram player({.leftHertz = 440, .rightHertz = 440});
    {
        const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
        run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_headset")});
        EXPECT_TRUE(comesTrue([&] { return hasTone(leftOf(0.5), 440); }));
    }
    m_recording.clear();
    EXPECT_TRUE(m_recording.waitForSound(0.5, 2)) << "not back within two seconds";
    EXPECT_TRUE(holdsUndisturbed([&] { return hasTone(leftOf(0.5), 440); }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopName("QUELTO_TEST_SPEAKER")});
}

TEST_F(SystemAudioTest, FoldsASurroundOutputIntoTwoSides)
{
    const LoadedModule surround({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_surround"),
                                 QStringLiteral("channels=6"),
                                 QStringLiteral("channel_map=front-left,front-right,front-center,lfe,rear-left,"
                                                "rear-right")});
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("test_surround")});
    const OtherProgram player({.leftHertz = 440, .rightHertz = 1000});
    ASSERT_TRUE(m_recording.waitForSound(0.5));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const AudioBuffers samples = record(0.5);
        const std::vector<float> left = channelOf(samples, 0);
        const std::vector<float> right = channelOf(samples, 1);
        const auto isStronger = [](const auto& side, const auto& otherSide, double hertz) {
            const double own = steadyAmplitudeOf(side, hertz);
            const double others = steadyAmplitudeOf(otherSide, hertz);
            std::printf("%.0f Hz: %.4f on its side, %.4f on the other\n", hertz, own, others);
            return own >= 0.25 && own > 1.5 * others;
        };
        // The session spreads stereo over all speakers, so the middle brings some of each side to the other.
        return isStronger(left, right, 440) && isStronger(right, left, 1000);
    }));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), desktopName("QUELTO_TEST_SPEAKER")});
}

TEST_F(SystemAudioTest, StampsFollowEachOtherEvenly)
{
    const OtherProgram player({});
    ASSERT_TRUE(m_recording.waitForSound(0.3));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const double worst = worstStep(record(4));
        std::printf("stamps: worst step %.4f ms\n", worst);
        return worst < 3;
    }));
}

TEST_F(SystemAudioTest, PutsBlocksOfALowLatencyGraphTogether)
{
    const GraphSetting quantum(QStringLiteral("clock.force-quantum"), 64);
    OtherProgram player({.amplitude = 0.5, .isBeeping = true});
    ASSERT_TRUE(m_recording.waitForSound(0.3));
    EXPECT_TRUE(holdsUndisturbed([&] {
        const AudioBuffers samples = record(2.5);
        const auto together = std::ranges::count_if(
            samples, [](const AudioBufferPtr& sample) { return sample->frames >= 480 && sample->frames < 480 + 64; });
        const BeepDistances beeps = distances(beepsIn(samples), player.beeps());
        print("64 frames a cycle", beeps);
        // Even a quiet machine loses cycles at that pace. A gap ends a sample early, the silence in place of a shorter
        // one makes it longer, and what is lost shows in the stamps half a second later.
        return together > samples.size() * 3 / 4 && beeps.count >= 2 && beeps.worst < 30;
    }));
}

TEST_F(SystemAudioTest, StampsABeepWithTheTimeAtWhichItIsHeard)
{
    OtherProgram player({.amplitude = 0.5, .isBeeping = true});
    EXPECT_TRUE(holdsUndisturbed([&] {
        const AudioBuffers samples = record(6.2);
        const BeepDistances beeps = distances(beepsIn(samples), player.beeps());
        print("system sound", beeps);
        return beeps.count >= 5 && beeps.worst < 3;
    }));
}

TEST_F(SystemAudioTest, StampsABeepRightInAGraphOfAnotherRate)
{
    const GraphSetting rate(QStringLiteral("clock.force-rate"), 44100);
    OtherProgram player({.amplitude = 0.5, .isBeeping = true});
    EXPECT_TRUE(holdsUndisturbed([&] {
        const AudioBuffers samples = record(4.2);
        EXPECT_TRUE(
            std::ranges::all_of(samples, [](const auto& sample) { return sample->format.sampleRate == 48000; }));
        const BeepDistances beeps = distances(beepsIn(samples), player.beeps());
        print("graph at 44,100 Hz", beeps);
        return beeps.count >= 3 && beeps.worst < 30;
    }));
}

TEST_F(SystemAudioTest, CostsLittle)
{
    const OtherProgram player({});
    ASSERT_TRUE(m_recording.waitForSound(0.5));
    const auto processorSeconds = [] {
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
            double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    };
    const double before = processorSeconds();
    ASSERT_TRUE(m_recording.waitForSound(4, 8));
    const double cost = (processorSeconds() - before) / 4 * 1000;
    std::printf("capture: %.2f ms of processor time a second\n", cost);
    EXPECT_LT(cost, 100);
}

TEST_F(SystemAudioTest, ComesBackWithinTwoSecondsAfterTheServerDied)
{
    {
        const OtherProgram player({});
        ASSERT_TRUE(m_recording.waitForSound(0.3));
    }
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(1));
    EXPECT_TRUE(m_recording.warnings()[0]);
    const HostTime dead = HostClock::now();
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    const HostTime back = HostClock::now();
    const OtherProgram player({});
    ASSERT_TRUE(m_recording.waitForSound(0.05));
    std::printf("sound is back %.0f ms after the server\n", inSeconds(HostClock::now() - back) * 1000);
    EXPECT_LT(inSeconds(HostClock::now() - back), 2);
    EXPECT_FALSE(m_recording.warnings().back());
    for (const AudioBufferPtr& sample : m_recording.samples()) {
        EXPECT_TRUE(sample->presentationTime < dead || sample->presentationTime >= back)
            << "sound from where there was none, " << inSeconds(sample->presentationTime - dead) << " s after the end";
    }
    EXPECT_TRUE(holdsUndisturbed([&] { return hasTone(leftOf(0.5), 440); }));
}

TEST_F(SystemAudioTest, TellsNothingAfterItWasStopped)
{
    {
        const OtherProgram player({});
        ASSERT_TRUE(m_recording.waitForSound(0.3));
        m_source->stop();
        m_recording.clear();
        EXPECT_FALSE(m_recording.waitForSound(0.01, 0.3));
    }
    m_source->start(m_recording.events());
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(1));
    m_source->stop();
    m_recording.clear();
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    EXPECT_FALSE(m_recording.waitForWarnings(1, 0.5));
    m_source->stop();
    m_source->start(m_recording.events());
    const OtherProgram player({});
    EXPECT_TRUE(m_recording.waitForSound(0.3));
}

} // namespace
} // namespace quelto::pipewire
