// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioDesktop.h"
#include "Recording.h"
#include "platform/pipewire/audio/PipeWireAudioServer.h"
#include "tests/playback/mpv/MpvPlayerFixture.h"

namespace quelto {
namespace {

using namespace test;

constexpr double ClipHertz = 2000;
constexpr double OtherHertz = 440;

/// The outputs of libmpv that PipeWire serves.
class OwnSoundTest : public MpvPlayerTest, public testing::WithParamInterface<const char*> { };

INSTANTIATE_TEST_SUITE_P(All, OwnSoundTest, testing::Values("pipewire", "pulse"),
                         [](const auto& row) { return std::string(row.param); });

TEST_P(OwnSoundTest, SoundOfThePlayerIsNotRecorded)
{
    auto* const mpv = player->handle()->get();
    ASSERT_EQ(mpv_set_property_string(mpv, "ao", GetParam()), 0);
    const auto server = makePipeWireAudioServer();
    pipewire::Recording recording;
    const auto source = server->systemAudio();
    source->start(recording.events());
    const pipewire::TonePlayerProcess other({.leftHertz = OtherHertz, .rightHertz = OtherHertz});
    ASSERT_TRUE(recording.waitForAudio(0.3));

    player->open(
        clips.make(QStringLiteral("a.mp4"),
                   QStringLiteral("-f lavfi -i color=s=64x64:r=30:d=20 -f lavfi -i sine=f=%1:d=20 -c:v libx264 "
                                  "-preset ultrafast -c:a aac")
                       .arg(ClipHertz)));
    player->play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->position() > 0.5; }));
    const std::unique_ptr<char, void (*)(void*)> output(mpv_get_property_string(mpv, "current-ao"), mpv_free);
    ASSERT_STREQ(output.get(), GetParam());
    EXPECT_TRUE(pipewire::run(QStringLiteral("pw-link"), {QStringLiteral("-l")}).contains(u"Quelto:output_FL"))
        << "the player is not connected to the speaker";

    EXPECT_TRUE(pipewire::holdsInOneOfThree([&] {
        recording.clear();
        EXPECT_TRUE(recording.waitForAudio(1));
        const auto left = pipewire::channelOf(recording.buffers(), 0);
        const auto own = pipewire::amplitudeOf(left, ClipHertz);
        const auto others = pipewire::steadyAmplitudeOf(left, OtherHertz);
        std::printf("own %.4f, of the other program %.4f\n", own, others);
        return own < 0.001 && others > 0.2;
    }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return player->position() > 1.5; })) << "it does not play";
    source->stop();
}

} // namespace
} // namespace quelto
