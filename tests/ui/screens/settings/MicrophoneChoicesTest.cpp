// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/MicrophoneChoices.h"

#include "tests/capture/FakePlatform.h"
#include "tests/moments/watcher/WaitFor.h"

#include <gtest/gtest.h>

#include <thread>

namespace quelto {
namespace {

using test::waitFor;

const MicrophoneInfo Headset{.id = QStringLiteral("alsa_input.usb"), .name = QStringLiteral("Headset")};
const MicrophoneInfo Webcam{.id = QStringLiteral("alsa_input.cam"), .name = QStringLiteral("Webcam")};

QStringList linesOf(const MicrophoneChoices& choices)
{
    QStringList lines;
    for (const auto& choice : choices.choices()) {
        const auto entry = choice.toMap();
        lines.append(entry[QStringLiteral("text")].toString() + u'|' + entry[QStringLiteral("value")].toString());
    }
    return lines;
}

class MicrophoneChoicesTest : public testing::Test {
protected:
    test::FakeAudioServer m_server;
};

/// Replies when the test asks for it, on another thread.
class SlowAudioServer final : public AudioServer {
public:
    std::function<void(QList<MicrophoneInfo>)> reply;

    void answer(const QList<MicrophoneInfo>& devices) const
    {
        std::thread([&] { reply(devices); }).join();
    }

    std::unique_ptr<AudioSource> systemAudio() override { return nullptr; }
    std::unique_ptr<AudioSource> microphone(const QString& /*id*/) override { return nullptr; }
    std::unique_ptr<AudioSource> voiceChat() override { return nullptr; }
    void listMicrophones(std::function<void(QList<MicrophoneInfo>)> wanted) override { reply = std::move(wanted); }
};

TEST_F(MicrophoneChoicesTest, OffersTheDefaultFirstThenTheDevices)
{
    m_server.microphones = {Headset, Webcam};
    const MicrophoneChoices choices(m_server);
    ASSERT_TRUE(waitFor([&] { return choices.choices().size() == 3; }));
    EXPECT_EQ(linesOf(choices),
              (QStringList{QStringLiteral("Sistem varsayılanı|"), QStringLiteral("Headset|alsa_input.usb"),
                           QStringLiteral("Webcam|alsa_input.cam")}));
}

TEST_F(MicrophoneChoicesTest, RefreshFindsANewDevice)
{
    MicrophoneChoices choices(m_server);
    EXPECT_EQ(choices.choices().size(), 1);
    m_server.microphones = {Headset};
    choices.refresh();
    EXPECT_TRUE(waitFor([&] { return linesOf(choices).last() == QStringLiteral("Headset|alsa_input.usb"); }));
}

TEST_F(MicrophoneChoicesTest, AnUnchangedListIsNotPublishedAgain)
{
    SlowAudioServer server;
    MicrophoneChoices choices(server);
    int changes = 0;
    QObject::connect(&choices, &MicrophoneChoices::changed, &choices, [&] { ++changes; });
    server.answer({Headset});
    ASSERT_TRUE(waitFor([&] { return changes == 1; }));
    choices.refresh();
    server.answer({Headset});
    choices.refresh();
    server.answer({});
    ASSERT_TRUE(waitFor([&] { return choices.choices().size() == 1; }));
    EXPECT_EQ(changes, 2);
}

TEST_F(MicrophoneChoicesTest, AReplyMayArriveAfterItsEnd)
{
    SlowAudioServer server;
    auto choices = std::make_unique<MicrophoneChoices>(server);
    server.answer({Headset});
    choices.reset();
    server.answer({Headset, Webcam});
    QCoreApplication::processEvents();
}

} // namespace
} // namespace quelto
