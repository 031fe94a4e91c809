// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/CanberraEventSounds.h"

#include "AudioDesktop.h"
#include "Recording.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cstring>

#include <unistd.h>

namespace quelto {
namespace {

using namespace pipewire;

constexpr double Silence = 0.001;

/// Records the speaker's monitor, the mix of all programs.
class Speaker {
public:
    Speaker()
        : m_process(QStringLiteral("parec"),
                    {QStringLiteral("--raw"), QStringLiteral("--format=float32le"), QStringLiteral("--rate=48000"),
                     QStringLiteral("--channels=1"), QStringLiteral("--latency-msec=20"), QStringLiteral("-d"),
                     desktopVariable("QUELTO_TEST_SPEAKER") + QStringLiteral(".monitor")})
    {
        EXPECT_TRUE(becomesTrue([this] { return read() > 0; })) << "the speaker's monitor delivers nothing";
    }

    ~Speaker() { m_process.terminate(); }
    Speaker(const Speaker&) = delete;
    Speaker& operator=(const Speaker&) = delete;

    /// Waits for a sound that is followed by half a second of silence. Returns its length in seconds; 0 if there is
    /// none.
    double waitForSound(double timeoutSeconds = 5)
    {
        m_first = m_last = -1;
        const bool isOver = becomesTrue([this] { return read() - m_last > 24000 && m_first >= 0; }, timeoutSeconds);
        return isOver ? static_cast<double>(m_last - m_first) / 48000 : 0;
    }

private:
    /// Returns the number of frames so far.
    std::int64_t read()
    {
        m_unread += m_process.readAvailable();
        const auto count = m_unread.size() / qsizetype(sizeof(float));
        for (qsizetype i = 0; i < count; ++i, ++m_frames) {
            float value = 0;
            std::memcpy(&value, m_unread.constData() + i * qsizetype(sizeof value), sizeof value);
            if (std::abs(value) > 0.01F) {
                m_first = m_first < 0 ? m_frames : m_first;
                m_last = m_frames;
            }
        }
        m_unread.remove(0, count * qsizetype(sizeof(float)));
        return m_frames;
    }

    ChildProcess m_process;
    QByteArray m_unread;
    std::int64_t m_frames = 0;
    std::int64_t m_first = -1;
    std::int64_t m_last = -1;
};

double peakOf(const AudioBuffers& buffers)
{
    double peak = 0;
    for (const float value : channelOf(buffers, 0)) {
        peak = std::max(peak, std::abs(static_cast<double>(value)));
    }
    return peak;
}

class CanberraEventSoundsTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (desktopVariable("QUELTO_TEST_SPEAKER").isEmpty()) {
            GTEST_SKIP() << "runs on the private desktop only";
        }
    }

    CanberraEventSounds m_sounds;
};

TEST_F(CanberraEventSoundsTest, AreHeardButNotRecorded)
{
    const auto server = makePipeWireAudioServer();
    Recording recording;
    const auto source = server->systemAudio();
    source->start(recording.events());
    // A silent program keeps the capture running.
    const TonePlayerProcess quiet({.amplitude = 0});
    ASSERT_TRUE(recording.waitForAudio(0.2));
    Speaker speaker;
    struct Row {
        EventSound sound;
        const char* name;
        double shortest;
        double longest;
    };
    constexpr Row Hero{EventSound::hero, "hero", 0.7, 1.5};
    constexpr Row Glass{EventSound::glass, "glass", 0.2, 0.6};
    constexpr Row Bell{EventSound::bell, "bell", 0.05, 0.4};
    for (const auto& row : {Hero, Glass, Hero, Glass, Bell}) {
        m_sounds.play(row.sound);
        const double length = speaker.waitForSound();
        std::printf("%s: %.2f s\n", row.name, length);
        EXPECT_GT(length, row.shortest) << row.name;
        EXPECT_LT(length, row.longest) << row.name;
    }
    ASSERT_TRUE(recording.waitForAudio(0.2));
    EXPECT_LT(peakOf(recording.buffers()), Silence);

    // The same file from another program is recorded, so the silence above is due to the exclusion of this program.
    run(QStringLiteral("paplay"), {QStringLiteral("/usr/share/sounds/freedesktop/stereo/complete.oga")});
    EXPECT_GT(peakOf(recording.buffers()), 0.05);
    source->stop();
}

TEST_F(CanberraEventSoundsTest, MixersShowThisProgramAsTheirSource)
{
    QJsonObject properties;
    const auto isListed = [&] {
        const QString list =
            run(QStringLiteral("pactl"),
                {QStringLiteral("-f"), QStringLiteral("json"), QStringLiteral("list"), QStringLiteral("sink-inputs")});
        properties = QJsonDocument::fromJson(list.toUtf8()).array().at(0).toObject().value(u"properties").toObject();
        return !properties.isEmpty();
    };
    // Repeats, because on a busy machine the sound may end before it is listed.
    ASSERT_TRUE(becomesTrue([&] {
        m_sounds.play(EventSound::hero);
        return becomesTrue(isListed, 1);
    }));
    EXPECT_EQ(properties.value(u"application.name").toString(), u"Quelto");
    EXPECT_EQ(properties.value(u"application.id").toString(), u"app.quelto.Quelto");
    EXPECT_EQ(properties.value(u"application.icon_name").toString(), u"app.quelto.Quelto");
    EXPECT_EQ(properties.value(u"media.role").toString(), u"event");
    EXPECT_EQ(properties.value(u"application.process.id").toString(), QString::number(getpid()));
}

TEST_F(CanberraEventSoundsTest, PlayAgainAfterAServerRestart)
{
    {
        Speaker speaker;
        m_sounds.play(EventSound::glass);
        ASSERT_GT(speaker.waitForSound(), 0);
    }
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("kill")});
    m_sounds.play(EventSound::glass);
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("start")});
    Speaker speaker;
    double length = 0;
    for (int attempt = 0; attempt < 3 && length == 0; ++attempt) {
        m_sounds.play(EventSound::glass);
        length = speaker.waitForSound(3);
    }
    EXPECT_GT(length, 0);
}

TEST_F(CanberraEventSoundsTest, DoNotBlockIfTheServerDoesNotRespond)
{
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("pause")});
    const HostTime begin = HostClock::now();
    {
        CanberraEventSounds sounds;
        sounds.play(EventSound::hero);
        sounds.play(EventSound::glass);
        EXPECT_LT(toSeconds(HostClock::now() - begin), 0.1);
    }
    EXPECT_LT(toSeconds(HostClock::now() - begin), 1);
    run(desktopVariable("QUELTO_TEST_SOUND"), {QStringLiteral("resume")});
}

} // namespace
} // namespace quelto
