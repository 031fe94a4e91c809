// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"
#include "Recording.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"
#include "platform/pipewire/core/PipeWireConnection.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <future>

namespace quelto::pipewire {
namespace {

/// Receives a reply of AudioServer::listMicrophones().
class MicrophoneList {
public:
    std::function<void(QList<MicrophoneInfo>)> reply()
    {
        return [promise = m_promise](const QList<MicrophoneInfo>& list) { promise->set_value(list); };
    }
    /// Nothing on timeout.
    std::optional<QList<MicrophoneInfo>> wait()
    {
        auto future = m_promise->get_future();
        return future.wait_for(std::chrono::seconds(5)) == std::future_status::ready ? std::optional(future.get())
                                                                                     : std::nullopt;
    }

private:
    // Shared, because the reply may come after a timeout.
    std::shared_ptr<std::promise<QList<MicrophoneInfo>>> m_promise =
        std::make_shared<std::promise<QList<MicrophoneInfo>>>();
};

QList<MicrophoneInfo> microphonesOf(AudioServer& server)
{
    MicrophoneList list;
    server.listMicrophones(list.reply());
    const auto found = list.wait();
    EXPECT_TRUE(found) << "no reply";
    return found.value_or(QList<MicrophoneInfo>());
}

class MicrophoneTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopVariable("QUELTO_TEST_MIC").isEmpty()) {
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
        if (!m_recording.waitForAudio(0.5, 2)) {
            return 0;
        }
        const AudioBuffers buffers = m_recording.buffers();
        m_channels = buffers.last()->format.channels;
        return m_channels == buffers.first()->format.channels ? amplitudeOf(channelOf(buffers, 0), hertz) : 0;
    }
    bool records(double hertz)
    {
        return becomesTrue([&] { return amplitude(hertz) > 0.2; });
    }

    /// A second microphone, with one channel, and a program that plays into it.
    struct SecondMicrophone {
        LoadedModule sink{{QStringLiteral("module-null-sink"), QStringLiteral("sink_name=test_mic_in"),
                           QStringLiteral("channel_map=mono")}};
        LoadedModule source{{QStringLiteral("module-remap-source"), QStringLiteral("master=test_mic_in.monitor"),
                             QStringLiteral("source_name=test_mic"), QStringLiteral("channel_map=mono")}};
        TonePlayerProcess voice{{.leftHertz = 700, .rightHertz = 700, .target = QStringLiteral("test_mic_in")}};
    };
    TonePlayerProcess::Settings intoDefaultMicrophone() const
    {
        return {.leftHertz = 440, .rightHertz = 440, .target = desktopVariable("QUELTO_TEST_MIC_SINK")};
    }

    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
    Recording m_recording;
    std::unique_ptr<AudioSource> m_source;
    int m_channels = 0;
};

TEST_F(MicrophoneTest, RecordsTheChosenDevice)
{
    const TonePlayerProcess speaking(intoDefaultMicrophone());
    const TonePlayerProcess playing({.leftHertz = 900, .rightHertz = 900});
    start(desktopVariable("QUELTO_TEST_MIC"));
    EXPECT_TRUE(becomesTrue([&] { return std::abs(amplitude(440) - 0.25) < 0.005; }));
    EXPECT_LT(amplitude(900), 0.003) << "the speaker's audio";
    EXPECT_EQ(m_channels, 2);
}

TEST_F(MicrophoneTest, FallsBackToTheDefaultDeviceAndReturnsToItsOwn)
{
    const TonePlayerProcess speaking(intoDefaultMicrophone());
    start(QStringLiteral("test_mic"));
    EXPECT_TRUE(records(440));
    {
        const SecondMicrophone microphone;
        EXPECT_TRUE(records(700));
        EXPECT_EQ(m_channels, 1) << "the channels of the device";
    }
    EXPECT_TRUE(records(440));
    EXPECT_EQ(m_channels, 2);
    EXPECT_TRUE(m_recording.warnings().empty());
}

TEST_F(MicrophoneTest, FollowsTheDefaultDevice)
{
    const SecondMicrophone microphone;
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), desktopVariable("QUELTO_TEST_MIC")});
    const TonePlayerProcess speaking(intoDefaultMicrophone());
    start(QString());
    EXPECT_TRUE(records(440));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), QStringLiteral("test_mic")});
    EXPECT_TRUE(records(700));
    run(QStringLiteral("pactl"), {QStringLiteral("set-default-source"), desktopVariable("QUELTO_TEST_MIC")});
    EXPECT_TRUE(records(440));
}

TEST_F(MicrophoneTest, TimestampsAreOnTheHostClock)
{
    const TonePlayerProcess speaking(intoDefaultMicrophone());
    start(desktopVariable("QUELTO_TEST_MIC"));
    ASSERT_TRUE(m_recording.waitForAudio(0.5));
    m_recording.clear();
    const HostTime before = HostClock::now();
    ASSERT_TRUE(m_recording.waitForAudio(2));
    const HostTime after = HostClock::now();
    const AudioBuffers buffers = m_recording.buffers();
    const double first = toSeconds(buffers.first()->presentationTime - before);
    const double last = toSeconds(buffers.last()->presentationTime - after);
    std::printf("microphone: timestamps: first %+.1f ms, last %+.1f ms from the host clock\n", first * 1000,
                last * 1000);
    EXPECT_NEAR(first, 0, 0.15);
    EXPECT_NEAR(last, 0, 0.15);
}

TEST_F(MicrophoneTest, TimestampIsWhenTheAudioWasSpoken)
{
    start(desktopVariable("QUELTO_TEST_MIC"));
    TonePlayerProcess::Settings settings = intoDefaultMicrophone();
    settings.amplitude = 0.5;
    settings.isBeeping = true;
    TonePlayerProcess speaking(settings);
    EXPECT_TRUE(holdsInOneOfThree([&] {
        m_recording.clear();
        EXPECT_TRUE(m_recording.waitForAudio(5.2, 10));
        const BeepOffsets beeps = beepOffsets(beepsIn(m_recording.buffers()), speaking.beeps());
        std::printf("microphone: %zu beeps, mean %+.2f ms, worst %.2f ms\n", beeps.count, beeps.mean, beeps.worst);
        return beeps.count >= 4 && beeps.worst < 30;
    }));
}

TEST_F(MicrophoneTest, ResumesAfterAServerRestart)
{
    start(desktopVariable("QUELTO_TEST_MIC"));
    ASSERT_TRUE(m_recording.waitForAudio(0.2)) << "a microphone delivers silence too";
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    ASSERT_TRUE(m_recording.waitForWarnings(2));
    EXPECT_FALSE(m_recording.warnings()[0]);
    EXPECT_TRUE(m_recording.warnings()[1]);
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    EXPECT_TRUE(m_recording.waitForAudio(0.05, 2));
    EXPECT_FALSE(m_recording.warnings().back());
}

TEST_F(MicrophoneTest, ListsDevicesWithoutMonitors)
{
    const SecondMicrophone microphone;
    const auto ids = [&] {
        QStringList found;
        for (const MicrophoneInfo& info : microphonesOf(*m_server)) {
            found.append(info.id);
        }
        found.sort();
        return found;
    };
    const QStringList expected = {desktopVariable("QUELTO_TEST_MIC"), QStringLiteral("test_mic")};
    EXPECT_TRUE(becomesTrue([&] { return ids() == expected; })) << ids().join(u' ').toStdString();
    const auto list = microphonesOf(*m_server);
    EXPECT_TRUE(std::ranges::any_of(list, [](const auto& info) { return info.name == u"Test microphone"; }));
}

TEST_F(MicrophoneTest, ListDoesNotWaitForAStoppedServer)
{
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("pause")});
    MicrophoneList list;
    const HostTime before = HostClock::now();
    m_server->listMicrophones(list.reply());
    const double call = toSeconds(HostClock::now() - before);
    EXPECT_EQ(list.wait(), QList<MicrophoneInfo>());
    const double answer = toSeconds(HostClock::now() - before);
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("resume")});
    std::printf("stopped server: the call returned after %.2f ms, the reply came after %.0f ms\n", call * 1000,
                answer * 1000);
    EXPECT_LT(call, 0.01);
    EXPECT_GT(answer, 0.45);
    EXPECT_LT(answer, 1);
    EXPECT_TRUE(becomesTrue([&] { return !microphonesOf(*m_server).isEmpty(); })) << "the server continues";
}

TEST_F(MicrophoneTest, ServerCanBeDestroyedWhileListsAreRequested)
{
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("pause")});
    std::atomic<int> replies = 0;
    const HostTime before = HostClock::now();
    for (int i = 0; i < 20; ++i) {
        m_server->listMicrophones([&](const QList<MicrophoneInfo>&) { ++replies; });
    }
    m_server.reset();
    const double duration = toSeconds(HostClock::now() - before);
    const int repliesBefore = replies;
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("resume")});
    EXPECT_LT(duration, 1);
    EXPECT_LE(repliesBefore, 1);
    EXPECT_EQ(replies, repliesBefore) << "a reply after the destruction";
}

/// Points XDG_RUNTIME_DIR to a folder without a server.
class NoServerTest : public testing::Test {
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8()); }
    void TearDown() override { qputenv("XDG_RUNTIME_DIR", m_before); }

    /// The first report of a source: its warning, empty if it works.
    static QString firstReport(AudioSource& source)
    {
        Recording recording;
        source.start(recording.events());
        EXPECT_TRUE(recording.waitForWarnings(1)) << "no report";
        source.stop();
        const auto warnings = recording.warnings();
        return warnings.empty() ? QString() : warnings.front().value_or(QString());
    }

    QTemporaryDir m_folder;
    QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
    std::unique_ptr<AudioServer> m_server = makePipeWireAudioServer();
};

TEST_F(NoServerTest, ListsNoMicrophones)
{
    const HostTime before = HostClock::now();
    EXPECT_TRUE(microphonesOf(*m_server).isEmpty());
    EXPECT_LT(toSeconds(HostClock::now() - before), 0.1);
}

TEST_F(NoServerTest, WarningExplainsHowToStartTheServer)
{
    const auto source = m_server->systemAudio();
    const QString message = firstReport(*source);
    EXPECT_TRUE(message.contains(u"systemctl --user start pipewire wireplumber")) << message.toStdString();
    EXPECT_TRUE(message.contains(u"sistem sesini kapatın")) << message.toStdString();
    source->stop();
    EXPECT_TRUE(firstReport(*m_server->microphone(QString())).contains(u"PipeWire"));
}

TEST_F(NoServerTest, WarningNamesTheMissingDevice)
{
    ChildProcess bare(QStringLiteral("pipewire"), {});
    const auto system = m_server->systemAudio();
    const auto microphone = m_server->microphone(QStringLiteral("gone"));
    QString message;
    EXPECT_TRUE(becomesTrue([&] { return !(message = firstReport(*system)).contains(u"PipeWire"); }));
    EXPECT_TRUE(message.startsWith(u"Ses çıkışı bulunamadı.")) << message.toStdString();
    EXPECT_EQ(firstReport(*microphone), QStringLiteral("Mikrofon bulunamadı."));
    EXPECT_TRUE(microphonesOf(*m_server).isEmpty());
    bare.terminate();
}

TEST_F(NoServerTest, ConnectsToAServerThatStartsLater)
{
    if (desktopVariable("QUELTO_TEST_MIC").isEmpty()) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    const auto source = m_server->systemAudio();
    Recording recording;
    source->start(recording.events());
    ASSERT_TRUE(recording.waitForWarnings(1));
    EXPECT_TRUE(recording.warnings().front());
    qputenv("XDG_RUNTIME_DIR", m_before);
    ASSERT_TRUE(recording.waitForWarnings(2));
    EXPECT_EQ(recording.warnings().back(), std::nullopt);
}

class IgnoringListener final : public PipeWireConnection::Listener {
public:
    void onGraphChanged() override { }
    void onServerLost() override { }
};

/// Notes whether a core is destroyed. Needs the loop's lock.
class CoreObserver {
public:
    explicit CoreObserver(pw_core* core)
    {
        pw_proxy_add_listener(reinterpret_cast<pw_proxy*>(core), m_hook.get(), &Events, this);
    }

    bool isDestroyed = false;

private:
    static void noteDestruction(void* data)
    {
        auto* self = static_cast<CoreObserver*>(data);
        self->m_hook.remove();
        self->isDestroyed = true;
    }

    static constexpr pw_proxy_events Events = {.version = PW_VERSION_PROXY_EVENTS,
                                               .destroy = &noteDestruction,
                                               .bound = nullptr,
                                               .removed = nullptr,
                                               .done = nullptr,
                                               .error = nullptr};

    Hook m_hook;
};

TEST_F(NoServerTest, PendingAttemptDoesNotReplaceANewConnection)
{
    if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
        GTEST_SKIP() << "runs on the private desktop only";
    }
    PipeWireConnection connection;
    IgnoringListener listener;
    ASSERT_TRUE(connection.start());
    {
        const PipeWireConnection::Lock lock(connection);
        connection.addListener(&listener);
    }
    qputenv("XDG_RUNTIME_DIR", m_before);
    ASSERT_TRUE(connection.waitUntilReady(std::chrono::seconds(5)));
    std::optional<CoreObserver> core;
    bool isAttemptOver = false;
    std::optional<LoopTimer> afterAttempt;
    {
        const PipeWireConnection::Lock lock(connection);
        core.emplace(connection.core());
        afterAttempt.emplace(connection.loop(), [&] { isAttemptOver = true; });
        afterAttempt->arm(500);
    }
    EXPECT_TRUE(becomesTrue([&] {
        const PipeWireConnection::Lock lock(connection);
        return isAttemptOver;
    }));
    const PipeWireConnection::Lock lock(connection);
    EXPECT_FALSE(core->isDestroyed);
    core.reset();
    afterAttempt.reset();
    connection.removeListener(&listener);
}

TEST_F(NoServerTest, StartDoesNotWait)
{
    const auto source = m_server->systemAudio();
    const HostTime before = HostClock::now();
    source->start({});
    EXPECT_LT(toSeconds(HostClock::now() - before), 0.5);
}

} // namespace
} // namespace quelto::pipewire
