// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recording.h"
#include "SoundDesktop.h"
#include "platform/PlatformError.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto::pipewire {
namespace {

class MicrophoneTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopName("QUELTO_TEST_MIC").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    void start(const QString& id)
    {
        m_source = m_server->microphone(id);
        m_source->start(m_recording.events());
    }

    double amplitude(double hertz)
    {
        m_recording.clear();
        if (!m_recording.waitForSound(0.5, 2)) {
            return 0;
        }
        const AudioBuffers samples = m_recording.samples();
        m_channels = samples.last()->format.channels;
        return m_channels == samples.first()->format.channels ? amplitudeOf(channelOf(samples, 0), hertz) : 0;
    }
    bool hears(double hertz)
    {
        return comesTrue([&] { return amplitude(hertz) > 0.2; });
    }

    /// A second microphone, with one channel, and the sink whose sound it hears.
    struct SecondMicrophone {
        LoadedModule sink{{QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_mic_in"),
                           QStringLiteral("channel_map=mono")}};
        LoadedModule source{{QStringLiteral("module-remap-source"), QStringLiteral("master=test_mic_in.monitor"),
                             QStringLiteral("source_name=test_mic"), QStringLiteral("channel_map=mono")}};
        OtherProgram voice{{.leftHertz = 700, .rightHertz = 700, .target = QStringLiteral("test_mic_in")}};
    };
    OtherProgram::Sound intoDefaultMicrophone() const
    {
        return {.leftHertz = 440, .rightHertz = 440, .target = desktopName("QUELTO_TEST_MIC_SINK")};
    }

    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
    Recording m_recording;
    std::unique_ptr<AudioSource> m_source;
    int m_channels = 0;
};

TEST_F(MicrophoneTest, HearsTheChosenDevice)
{
    const OtherProgram speaking(intoDefaultMicrophone());
    const OtherProgram playing({.leftHertz = 900, .rightHertz = 900});
    start(desktopName("QUELTO_TEST_MIC"));
    EXPECT_TRUE(comesTrue([&] { return std::abs(amplitude(440) - 0.25) < 0.005; }));
    EXPECT_LT(amplitude(900), 0.003) << "the speaker's sound";
    EXPECT_EQ(m_channels, 2);
}

TEST_F(MicrophoneTest, FallsBackToTheDefaultDeviceAndReturnsToItsOwn)
{
    const OtherProgram speaking(intoDefaultMicrophone());
    start(QStringLiteral("test_mic"));
    EXPECT_TRUE(hears(440));
    {
        const SecondMicrophone microphone;
        EXPECT_TRUE(hears(700));
        EXPECT_EQ(m_channels, 1) << "as many as the device has";
    }
    EXPECT_TRUE(hears(440));
    EXPECT_EQ(m_channels, 2);
    EXPECT_TRUE(m_recording.warnings().empty());
}

TEST_F(MicrophoneTest, FollowsTheDefaultDevice)
{
    const SecondMicrophone microphone;
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), desktopName("QUELTO_TEST_MIC")});
    const OtherProgram speaking(intoDefaultMicrophone());
    start(QString());
    EXPECT_TRUE(hears(440));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), QStringLiteral("test_mic")});
    EXPECT_TRUE(hears(700));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), desktopName("QUELTO_TEST_MIC")});
    EXPECT_TRUE(hears(440));
}

TEST_F(MicrophoneTest, StampsLieOnTheHostClock)
{
    const OtherProgram speaking(intoDefaultMicrophone());
    start(desktopName("QUELTO_TEST_MIC"));
    ASSERT_TRUE(m_recording.waitForSound(0.5));
    m_recording.clear();
    const HostTime before = HostClock::now();
    ASSERT_TRUE(m_recording.waitForSound(2));
    const HostTime after = HostClock::now();
    const AudioBuffers samples = m_recording.samples();
    const double first = inSeconds(samples.first()->presentationTime - before);
    const double last = inSeconds(samples.last()->presentationTime - after);
    std::printf("microphone: first stamp %+.1f ms, last stamp %+.1f ms from the clock\n", first * 1000, last * 1000);
    EXPECT_NEAR(first, 0, 0.15);
    EXPECT_NEAR(last, 0, 0.15);
}

TEST_F(MicrophoneTest, StampsABeepWithTheTimeAtWhichItIsSpoken)
{
    start(desktopName("QUELTO_TEST_MIC"));
    OtherProgram::Sound sound = intoDefaultMicrophone();
    sound.amplitude = 0.5;
    sound.isBeeping = true;
    OtherProgram speaking(sound);
    EXPECT_TRUE(holdsUndisturbed([&] {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForSound(5.2, 10));
        const BeepDistances beeps = distances(beepsIn(m_recording.samples()), speaking.beeps());
        std::printf("microphone: %zu beeps, mean %+.2f ms, worst %.2f ms\n", beeps.count, beeps.mean, beeps.worst);
        return beeps.count >= 4 && beeps.worst < 30;
    }));
}

TEST_F(MicrophoneTest, ComesBackAfterTheServerDied)
{
    start(desktopName("QUELTO_TEST_MIC"));
    ASSERT_TRUE(m_recording.waitForSound(0.2)) << "a microphone gives silence too";
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(1));
    EXPECT_TRUE(m_recording.warnings().front());
    run(desktopName("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    EXPECT_TRUE(m_recording.waitForSound(0.05, 2));
    EXPECT_FALSE(m_recording.warnings().back());
}

TEST_F(MicrophoneTest, ListsDevicesAndNoMonitors)
{
    const SecondMicrophone microphone;
    const auto ids = [&] {
        QStringList found;
        for (const MicrophoneInfo& info : m_server->microphones()) {
            found.append(info.id);
        }
        found.sort();
        return found;
    };
    const QStringList expected = {desktopName("QUELTO_TEST_MIC"), QStringLiteral("test_mic")};
    EXPECT_TRUE(comesTrue([&] { return ids() == expected; })) << ids().join(u' ').toStdString();
    const auto list = m_server->microphones();
    EXPECT_TRUE(std::ranges::any_of(list, [](const auto& info) { return info.name == u"Test microphone"; }));
}

/// A folder in which no server listens.
class NoServerTest : public testing::Test {
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8()); }
    void TearDown() override { qputenv("XDG_RUNTIME_DIR", m_before); }

    QString messageOf(AudioSource& source)
    {
        try {
            source.start({});
        } catch (const PlatformError& error) {
            return error.message();
        }
        return {};
    }

    QTemporaryDir m_folder;
    QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
};

TEST_F(NoServerTest, HasNoMicrophones)
{
    const HostTime before = HostClock::now();
    EXPECT_TRUE(m_server->microphones().isEmpty());
    EXPECT_LT(inSeconds(HostClock::now() - before), 0.5);
}

TEST_F(NoServerTest, SaysHowToStartOne)
{
    const auto source = m_server->systemAudio();
    const QString message = messageOf(*source);
    EXPECT_TRUE(message.contains(u"systemctl --user start pipewire wireplumber")) << message.toStdString();
    EXPECT_TRUE(message.contains(u"sistem sesini kapatın")) << message.toStdString();
    source->stop();
    EXPECT_TRUE(messageOf(*m_server->microphone(QString())).contains(u"PipeWire"));
}

TEST_F(NoServerTest, SaysWhatIsMissingWhereTheServerHasNoDevices)
{
    ChildProcess bare(QStringLiteral("pipewire"), {});
    const auto system = m_server->systemAudio();
    const auto microphone = m_server->microphone(QStringLiteral("gone"));
    QString message;
    EXPECT_TRUE(comesTrue([&] { return !(message = messageOf(*system)).contains(u"PipeWire"); }));
    EXPECT_TRUE(message.startsWith(u"Ses çıkışı bulunamadı.")) << message.toStdString();
    EXPECT_EQ(messageOf(*microphone), QStringLiteral("Mikrofon bulunamadı."));
    EXPECT_TRUE(m_server->microphones().isEmpty());
    bare.terminate();
}

TEST_F(NoServerTest, FindsOneThatIsStartedLater)
{
    if (desktopName("QUELTO_TEST_MIC").isEmpty()) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    const auto source = m_server->systemAudio();
    EXPECT_FALSE(messageOf(*source).isEmpty());
    qputenv("XDG_RUNTIME_DIR", m_before);
    EXPECT_EQ(messageOf(*source), QString());
}

} // namespace
} // namespace quelto::pipewire
