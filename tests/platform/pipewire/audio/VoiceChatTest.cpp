// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"
#include "Recording.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"
#include "platform/pipewire/core/PipeWireConnection.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <numbers>

namespace quelto::pipewire {
namespace {

using Ids = QSet<QString>;

const Ids Discord = {QStringLiteral("discord")};
const Ids DiscordAndSlack = {QStringLiteral("discord"), QStringLiteral("slack")};
const QString CaptureNode = QStringLiteral("quelto-voice-chat");

TonePlayerProcess::Settings tone(double hertz, const QString& binary)
{
    return {.leftHertz = hertz, .rightHertz = hertz, .target = {}, .binary = binary, .moreArguments = {}};
}

TonePlayerProcess::Settings discord(double hertz)
{
    return tone(hertz, QStringLiteral("Discord"));
}

TonePlayerProcess::Settings game(double hertz)
{
    return tone(hertz, QStringLiteral("zoom-game"));
}

/// A client of the PulseAudio protocol that plays a tone and reports the given property.
class PulseTonePlayer {
public:
    PulseTonePlayer(double hertz, const QString& property)
    {
        QByteArray samples;
        for (int i = 0; i < 30 * 48000; ++i) {
            const auto value = static_cast<float>(0.25 * std::sin(2 * std::numbers::pi * hertz * i / 48000));
            samples.append(reinterpret_cast<const char*>(&value), sizeof value);
        }
        QFile file(m_folder.filePath(QStringLiteral("tone")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(samples) == samples.size());
        file.close();
        m_process = std::make_unique<ChildProcess>(
            QStringLiteral("pacat"),
            QStringList{QStringLiteral("--playback"), QStringLiteral("--raw"), QStringLiteral("--format=float32le"),
                        QStringLiteral("--rate=48000"), QStringLiteral("--channels=1"),
                        QStringLiteral("--client-name=player"), QStringLiteral("--property=") + property,
                        file.fileName()});
    }
    ~PulseTonePlayer() { m_process->terminate(); }
    PulseTonePlayer(const PulseTonePlayer&) = delete;
    PulseTonePlayer& operator=(const PulseTonePlayer&) = delete;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_process;
};

class VoiceChatTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
        m_chat->start(m_recording.events());
    }

    /// The amplitude of a tone in the next third of a second; 0 without audio.
    static double amplitude(Recording& recording, double hertz)
    {
        recording.clear();
        if (!recording.waitForAudio(0.3, 1)) {
            return 0;
        }
        const AudioBuffers buffers = recording.buffers();
        const double left = steadyAmplitudeOf(channelOf(buffers, 0), hertz);
        return std::max(left, steadyAmplitudeOf(channelOf(buffers, buffers[0]->format.channels - 1), hertz));
    }
    static bool plays(Recording& recording, double hertz)
    {
        return std::abs(amplitude(recording, hertz) - 0.25) < 0.005;
    }
    /// Whether the recording contains exactly these of all tones.
    static bool playsOnly(Recording& recording, const std::set<double>& wanted)
    {
        const std::set<double> all = {500, 600, 700, 800};
        return std::ranges::all_of(all, [&](double hertz) {
            return wanted.contains(hertz) ? plays(recording, hertz) : amplitude(recording, hertz) < 0.003;
        });
    }
    bool records(double hertz)
    {
        return becomesTrue([&] { return plays(m_recording, hertz); });
    }
    /// What the source records now.
    bool becomesApplications(const Ids& ids)
    {
        return becomesTrue([&] {
            const auto reported = m_recording.applications();
            return reported.empty() ? ids.isEmpty() : reported.back() == ids;
        });
    }

    /// The objects in the graph. Their ids differ from one start of a program to the next.
    struct Contents {
        std::size_t clients = 0;
        std::multiset<QString> nodes;
        std::size_t ports = 0;
        std::size_t links = 0;
        bool operator==(const Contents&) const = default;

        friend std::ostream& operator<<(std::ostream& stream, const Contents& contents)
        {
            stream << contents.clients << " clients, " << contents.ports << " ports, " << contents.links
                   << " links, nodes:";
            for (const QString& node : contents.nodes) {
                stream << ' ' << node.toStdString();
            }
            return stream;
        }
    };
    template <typename Function> auto inGraph(const Function& function)
    {
        EXPECT_TRUE(m_observer.waitUntilReady(std::chrono::seconds(5)));
        const PipeWireConnection::Lock lock(m_observer);
        return function(m_observer.graph());
    }
    std::optional<ObjectId> captureNode()
    {
        return inGraph([](const Graph& graph) { return graph.findNode(CaptureNode); });
    }
    Contents contents()
    {
        return inGraph([](const Graph& graph) {
            Contents found = {
                .clients = graph.clients.size(), .ports = graph.ports.size(), .links = graph.links.size()};
            for (const auto& [id, node] : graph.nodes) {
                found.nodes.insert(node.name);
            }
            return found;
        });
    }

    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
    PipeWireConnection m_observer;
    Recording m_recording;
    std::unique_ptr<AudioSource> m_chat = m_server->voiceChat();
};

TEST_F(VoiceChatTest, EachToneIsInItsOwnTrack)
{
    Recording system;
    Recording microphone;
    const auto systemSource = m_server->systemAudio();
    const auto microphoneSource = m_server->microphone(desktopVariable("QUELTO_TEST_MIC"));
    systemSource->start(system.events());
    microphoneSource->start(microphone.events());
    const TonePlayerProcess first(discord(500));
    const TonePlayerProcess second(tone(600, QStringLiteral("ts3client_linux_amd64")));
    const TonePlayerProcess playing(game(700));
    auto voice = tone(800, QStringLiteral("tone_player"));
    voice.target = desktopVariable("QUELTO_TEST_MIC_SINK");
    const TonePlayerProcess speaking(voice);
    EXPECT_TRUE(becomesApplications({QStringLiteral("discord"), QStringLiteral("teamspeak3")}));
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500, 600}); }, 15)) << "voice chat";
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(system, {500, 600, 700}); }, 15)) << "system audio";
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(microphone, {800}); }, 15)) << "microphone";
    systemSource->stop();
    microphoneSource->stop();
}

TEST_F(VoiceChatTest, KnowsProgramsOfThePulseAudioProtocol)
{
    const PulseTonePlayer byBinary(500, QStringLiteral("application.process.binary=Discord"));
    const PulseTonePlayer byName(600, QStringLiteral("application.name=ZOOM VoiceEngine"));
    const PulseTonePlayer playing(700, QStringLiteral("application.process.binary=game"));
    EXPECT_TRUE(becomesApplications({QStringLiteral("discord"), QStringLiteral("zoom")}));
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500, 600}); }, 15));
}

TEST_F(VoiceChatTest, KnowsAnElectronApplicationByItsCommandLine)
{
    auto wrapped = tone(500, QStringLiteral("electron28"));
    wrapped.moreArguments = {QStringLiteral("/usr/lib/discord/app.asar")};
    auto other = tone(600, QStringLiteral("electron28"));
    other.moreArguments = {QStringLiteral("/usr/lib/game/app.asar")};
    const TonePlayerProcess chatting(wrapped);
    const TonePlayerProcess playing(other);
    EXPECT_TRUE(becomesApplications(Discord));
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500}); }, 15));
}

TEST_F(VoiceChatTest, RecordsLeftAndRightChannels)
{
    auto settings = discord(500);
    settings.rightHertz = 600;
    const TonePlayerProcess chatting(settings);
    ASSERT_TRUE(m_recording.waitForAudio(0.3));
    EXPECT_TRUE(holdsInOneOfThree([&] {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForAudio(0.5));
        const AudioBuffers buffers = m_recording.buffers();
        EXPECT_EQ(buffers[0]->format, AudioFormat{});
        const auto left = channelOf(buffers, 0);
        const auto right = channelOf(buffers, 1);
        return std::abs(steadyAmplitudeOf(left, 500) - 0.25) < 0.005 && amplitudeOf(left, 600) < 0.003 &&
            std::abs(steadyAmplitudeOf(right, 600) - 0.25) < 0.005 && amplitudeOf(right, 500) < 0.003;
    }));
}

TEST_F(VoiceChatTest, RecordsApplicationsOnDifferentOutputs)
{
    const LoadedModule headset({QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_headset")});
    Recording system;
    const auto systemSource = m_server->systemAudio();
    systemSource->start(system.events());
    auto onHeadset = discord(500);
    onHeadset.target = QStringLiteral("test_headset");
    const TonePlayerProcess first(onHeadset);
    const TonePlayerProcess second(tone(600, QStringLiteral("mumble")));
    const TonePlayerProcess playing(game(700));
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500, 600}); }, 15)) << "voice chat";
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(system, {600, 700}); }, 15)) << "system audio";
    systemSource->stop();
}

TEST_F(VoiceChatTest, HasNoNodeAndNoAudioWithoutAnApplication)
{
    const TonePlayerProcess playing(game(700));
    EXPECT_FALSE(m_recording.waitForAudio(0.01, 1.5));
    EXPECT_TRUE(m_recording.silence().isEmpty());
    EXPECT_EQ(m_recording.warnings(), std::vector<std::optional<QString>>{std::nullopt});
    EXPECT_TRUE(m_recording.applications().empty());
    EXPECT_EQ(captureNode(), std::nullopt);
}

TEST_F(VoiceChatTest, FollowsAnApplicationThatStartsAndQuits)
{
    {
        const TonePlayerProcess chatting(discord(500));
        EXPECT_TRUE(records(500));
        EXPECT_TRUE(captureNode());
    }
    EXPECT_TRUE(becomesApplications({}));
    EXPECT_TRUE(becomesTrue([&] { return !captureNode(); }));
    m_recording.clear();
    EXPECT_FALSE(m_recording.waitForAudio(0.01, 0.7)) << "no application runs";
    EXPECT_TRUE(m_recording.silence().isEmpty());
    const TonePlayerProcess again(discord(600));
    EXPECT_TRUE(records(600));
    EXPECT_EQ(m_recording.applications(), (std::vector{Discord, Ids(), Discord}));
    for (const auto& warning : m_recording.warnings()) {
        EXPECT_EQ(warning, std::nullopt);
    }
}

TEST_F(VoiceChatTest, KeepsTheNodeWhileApplicationsComeAndGo)
{
    const TonePlayerProcess first(discord(500));
    ASSERT_TRUE(records(500));
    const auto node = captureNode();
    ASSERT_TRUE(node);
    {
        const TonePlayerProcess secondStream(discord(600));
        EXPECT_TRUE(records(600));
        EXPECT_EQ(m_recording.applications(), std::vector{Discord}) << "the set is the same";
        const TonePlayerProcess secondApplication(tone(700, QStringLiteral("slack")));
        EXPECT_TRUE(becomesApplications(DiscordAndSlack));
        EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500, 600, 700}); }, 15));
    }
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {500}); }, 15));
    EXPECT_EQ(m_recording.applications(), (std::vector{Discord, DiscordAndSlack, Discord}));
    EXPECT_EQ(captureNode(), node);
}

TEST_F(VoiceChatTest, RemovesItsNodeWhenStopped)
{
    const TonePlayerProcess chatting(discord(500));
    ASSERT_TRUE(records(500));
    m_chat->stop();
    m_recording.clear();
    EXPECT_TRUE(becomesTrue([&] { return !captureNode(); }));
    EXPECT_FALSE(m_recording.waitForAudio(0.01, 0.3));
    EXPECT_EQ(m_recording.applications(), std::vector{Discord}) << "no event after stop()";
    m_chat->start(m_recording.events());
    EXPECT_TRUE(records(500));
    EXPECT_EQ(m_recording.applications(), (std::vector{Discord, Discord})) << "each start reports again";
}

TEST_F(VoiceChatTest, LeavesNothingBehindAfterAHundredCycles)
{
    Recording system;
    const auto systemSource = m_server->systemAudio();
    systemSource->start(system.events());
    const TonePlayerProcess playing(game(700));
    ASSERT_TRUE(becomesTrue([&] { return plays(system, 700); }));
    const Contents before = contents();
    int recorded = 0;
    for (int i = 0; i < 100; ++i) {
        m_recording.clear();
        const TonePlayerProcess chatting(discord(500));
        // Some of them quit before they are recorded.
        recorded += i % 4 != 3 && m_recording.waitForAudio(0.01, 2) ? 1 : 0;
    }
    EXPECT_EQ(recorded, 75);
    becomesTrue([&] { return contents() == before; });
    EXPECT_EQ(contents(), before);
    EXPECT_TRUE(becomesTrue([&] { return plays(system, 700); }));
    const TonePlayerProcess chatting(discord(600));
    EXPECT_TRUE(becomesTrue([&] { return playsOnly(m_recording, {600}); }, 15));
    systemSource->stop();
}

TEST_F(VoiceChatTest, TimestampIsWhenTheAudioIsHeard)
{
    auto settings = discord(500);
    settings.amplitude = 0.5;
    settings.isBeeping = true;
    TonePlayerProcess chatting(settings);
    EXPECT_TRUE(holdsInOneOfThree([&] {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForAudio(5.2, 10));
        const AudioBuffers buffers = m_recording.buffers();
        const BeepOffsets beeps = beepOffsets(beepsIn(buffers), chatting.beeps());
        const double gap = largestTimestampError(buffers);
        std::printf("voice chat: %zu beeps, mean %+.2f ms, worst %.2f ms; timestamps: largest error %.4f ms\n",
                    beeps.count, beeps.mean, beeps.worst, gap);
        return beeps.count >= 4 && beeps.worst < 3 && gap < 3;
    }));
}

TEST_F(VoiceChatTest, ResumesAfterAServerRestart)
{
    {
        const TonePlayerProcess chatting(discord(500));
        ASSERT_TRUE(records(500));
        run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
        EXPECT_TRUE(becomesApplications({})) << "nothing is recorded without a server";
    }
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    const TonePlayerProcess chatting(discord(600));
    EXPECT_TRUE(becomesApplications(Discord));
    EXPECT_TRUE(records(600));
}

} // namespace
} // namespace quelto::pipewire
