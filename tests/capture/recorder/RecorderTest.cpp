// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/capture/recorder/RecorderFixture.h"

namespace quelto {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class RecorderTest : public test::RecorderFixture { };

TEST_F(RecorderTest, IsIdleAtFirst)
{
    EXPECT_EQ(recorder->state(), RecorderState{});
    EXPECT_FALSE(recorder->isActive());
}

TEST_F(RecorderTest, GoesFromStartingToRecording)
{
    std::vector<CaptureState> states;
    QObject::connect(recorder.get(), &Recorder::stateChanged, recorder.get(),
                     [&] { states.push_back(recorder->stateKind()); });
    recorder->start();
    EXPECT_TRUE(recorder->isActive());
    time.settle();
    EXPECT_EQ(states, (std::vector{CaptureState::Starting, CaptureState::Recording}));
}

TEST_F(RecorderTest, StartsOnePipelineWhenStartedTwice)
{
    recorder->start();
    recorder->start();
    time.settle();
    recorder->start();
    time.settle();
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(RecorderTest, BuildsThePipelineFromTheSettings)
{
    settings.setFps(30);
    settings.setShowCursor(false);
    settings.setMicrophoneID(QStringLiteral("usb"));
    settings.setResolution(ResolutionPreset::p720);
    record();
    EXPECT_EQ(fakes.frames->request.displayID, 7U);
    EXPECT_EQ(fakes.frames->settings.outputSize, QSize(1280, 720));
    EXPECT_EQ(fakes.frames->settings.framesPerSecond, 30);
    EXPECT_FALSE(fakes.frames->request.showsCursor);
    EXPECT_EQ(fakes.audioServer->askedFor, QStringLiteral("usb"));
    EXPECT_EQ(encoders.at(0).bitsPerSecond, CaptureSettings::of(settings).bitrate({1280, 720}));
}

TEST_F(RecorderTest, DescribesTheRunningSession)
{
    record();
    EXPECT_EQ(recorder->captureSummary(), QStringLiteral("1920×1080 • 60 FPS • 14 Mbps • H.264"));
}

struct DisplayChoice {
    const char* name;
    std::uint32_t wanted;
    QList<DisplayInfo> displays;
    std::uint32_t chosen;
};

class RecorderDisplay : public test::RecorderFixture, public testing::WithParamInterface<DisplayChoice> { };

TEST_P(RecorderDisplay, IsChosenFromTheConnectedDisplays)
{
    settings.setDisplayID(GetParam().wanted);
    fakes.displays->displays = GetParam().displays;
    record();
    EXPECT_EQ(fakes.frames->request.displayID, GetParam().chosen);
}

const DisplayInfo Left{.id = 3, .pixelSize = {1280, 720}};
const DisplayInfo Main{.id = 5, .pixelSize = {1920, 1080}, .isMain = true};

INSTANTIATE_TEST_SUITE_P(Cases, RecorderDisplay,
                         testing::Values(DisplayChoice{"ZeroIsTheMainOne", 0, {Left, Main}, 5},
                                         DisplayChoice{"ById", 3, {Left, Main}, 3},
                                         DisplayChoice{"GoneFallsBackToTheMainOne", 9, {Left, Main}, 5},
                                         DisplayChoice{"GoneWithoutAMainOneTakesTheFirst", 9, {Left}, 3},
                                         DisplayChoice{"ZeroWithoutAMainOneTakesTheFirst", 0, {Left}, 3}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(RecorderTest, FailsWithoutADisplay)
{
    fakes.displays->displays.clear();
    recorder->start();
    time.settle();
    EXPECT_EQ(recorder->state().kind, CaptureState::Error);
    EXPECT_EQ(recorder->state().message, QStringLiteral("Kaydedilecek ekran bulunamadı."));
}

TEST_F(RecorderTest, StopEndsAStartThatWaitsForTheUser)
{
    std::vector<CaptureState> states;
    QObject::connect(recorder.get(), &Recorder::stateChanged, recorder.get(),
                     [&] { states.push_back(recorder->stateKind()); });
    fakes.frames->whileOpening = [this] { recorder->stop(); };
    recorder->start();
    time.settle();
    EXPECT_EQ(states, (std::vector{CaptureState::Starting, CaptureState::Idle}));
    EXPECT_TRUE(encoders.empty());

    fakes.frames->whileOpening = {};
    record();
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(RecorderTest, RestartWhileTheUserIsAskedAsksAgain)
{
    fakes.frames->whileOpening = [this] {
        fakes.frames->whileOpening = {};
        recorder->restart();
    };
    recorder->start();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(RecorderTest, ReportsTheStatusWhenNoEncoderOpens)
{
    encoderError = -1313558101;
    recorder->start();
    time.settle();
    EXPECT_EQ(recorder->state().message,
              QStringLiteral("Video kodlayıcı başlatılamadı (-1313558101). Farklı bir çözünürlük veya codec deneyin."));
    EXPECT_FALSE(fakes.frames->isRunning);
}

TEST_F(RecorderTest, FailsWithTheScreensMessageAndStopsEverything)
{
    fakes.frames->error = QStringLiteral("no screen");
    recorder->start();
    time.settle();
    EXPECT_EQ(recorder->state(), (RecorderState{.kind = CaptureState::Error, .message = QStringLiteral("no screen")}));
    EXPECT_FALSE(fakes.frames->isRunning);
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
}

TEST_F(RecorderTest, RecordsWithoutAnOutputDeviceAndWarnsUntilOneAppears)
{
    fakes.audioServer->systemProblem = QStringLiteral("no output device");
    record();
    EXPECT_EQ(recorder->micWarning(), QStringLiteral("no output device"));
    EXPECT_TRUE(recorder->micActive());
    fakes.audioServer->system->events.onWarning(std::nullopt);
    time.settle();
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
}

TEST_F(RecorderTest, ForgetsWarningsOfAnEarlierStart)
{
    fakes.audioServer->systemProblem = QStringLiteral("no output device");
    fakes.audioServer->micProblem = QStringLiteral("no microphone");
    record();
    fakes.frames->events.onStopped(QStringLiteral("unplugged"));
    time.settle();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Error);
    settings.setCaptureAudio(false);
    settings.setCaptureMicrophone(false);
    record();
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
}

TEST_F(RecorderTest, DoesNotUseTheAudioServerWhenNoSoundIsWanted)
{
    settings.setCaptureAudio(false);
    settings.setCaptureVoiceChat(false);
    settings.setCaptureMicrophone(false);
    record();
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
    EXPECT_FALSE(recorder->micActive());
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
}

TEST_F(RecorderTest, RecordsWithoutAMicrophoneAndWarns)
{
    fakes.audioServer->micProblem = QStringLiteral("Mikrofon bulunamadı.");
    record();
    EXPECT_FALSE(recorder->micActive());
    EXPECT_EQ(recorder->micWarning(), QStringLiteral("Mikrofon başlatılamadı: Mikrofon bulunamadı."));
}

TEST_F(RecorderTest, ReportsWarningsOfTheAudioSources)
{
    record();
    EXPECT_TRUE(recorder->micActive());
    fakes.audioServer->mic->events.onWarning(QStringLiteral("mic gone"));
    time.settle();
    EXPECT_FALSE(recorder->micActive());
    EXPECT_EQ(recorder->micWarning(), QStringLiteral("Mikrofon başlatılamadı: mic gone"));
    fakes.audioServer->mic->events.onWarning(std::nullopt);
    fakes.audioServer->system->events.onWarning(QStringLiteral("server gone"));
    time.settle();
    EXPECT_TRUE(recorder->micActive());
    EXPECT_EQ(recorder->micWarning(), QStringLiteral("server gone"));
    fakes.audioServer->system->events.onWarning(std::nullopt);
    time.settle();
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
}

TEST_F(RecorderTest, ShowsTheMicrophoneLevelAndResetsItOnStop)
{
    record();
    fakes.audioServer->mic->emitTone(0.5F);
    time.settle();
    EXPECT_EQ(recorder->micLevel(), 0.5F);
    recorder->stop();
    time.settle();
    EXPECT_EQ(recorder->micLevel(), 0.0F);
    EXPECT_FALSE(recorder->micActive());
}

TEST_F(RecorderTest, StartsNothingOnASettingsChangeWhileIdle)
{
    settings.setFps(30);
    time.advance(seconds(2));
    EXPECT_EQ(fakes.frames->starts, 0);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
}

TEST_F(RecorderTest, RestartsOnceAfterABurstOfCaptureSettings)
{
    record();
    settings.setFps(30);
    time.advance(milliseconds(500));
    settings.setFps(120);
    time.advance(milliseconds(799));
    EXPECT_EQ(fakes.frames->starts, 1);
    time.advance(milliseconds(1));
    EXPECT_EQ(fakes.frames->starts, 2);
    EXPECT_EQ(fakes.frames->settings.framesPerSecond, 120);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(RecorderTest, DoesNotRestartForClipLengthAndVolumes)
{
    record();
    settings.setClipLength(300);
    settings.setSystemVolume(0.3);
    settings.setMicVolume(2);
    settings.setSaveFolder(folder.path());
    time.advance(seconds(2));
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(RecorderTest, DoesNotRestartForASettingThatWasRestored)
{
    record();
    settings.setFps(30);
    settings.setFps(60);
    time.advance(seconds(2));
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(RecorderTest, AdjustsTheBufferToTheClipLength)
{
    settings.setAutoClipEnabled(false);
    settings.setClipLength(300);
    record();
    for (int i = 0; i < 200; ++i) {
        time.advance(seconds(1));
        showFrame();
    }
    settings.setClipLength(15);
    time.advance(seconds(1));
    showFrame();
    recorder->saveClip();
    time.advance(milliseconds(250));
    // A key frame every 30 frames, here every 30 seconds; the window is 18 seconds.
    EXPECT_LE(written.at(0).snapshot.video.size(), 49);
    EXPECT_GE(written.at(0).snapshot.video.size(), 19);
}

TEST_F(RecorderTest, UsesAClipLengthThatChangedDuringASlowStart)
{
    settings.setAutoClipEnabled(false);
    settings.setClipLength(300);
    whileOpeningEncoder = [this] {
        settings.setClipLength(15);
        time.advance(seconds(1));
    };
    recorder->start();
    time.advance(seconds(1));
    ASSERT_EQ(recorder->stateKind(), CaptureState::Recording);
    for (int i = 0; i < 200; ++i) {
        time.advance(seconds(1));
        showFrame();
    }
    recorder->saveClip();
    time.advance(milliseconds(250));
    EXPECT_LE(written.at(0).snapshot.video.size(), 49);
}

TEST_F(RecorderTest, AppliesASettingThatChangedDuringTheStart)
{
    recorder->start();
    settings.setFps(30);
    time.settle();
    EXPECT_EQ(fakes.frames->starts, 2);
    EXPECT_EQ(fakes.frames->settings.framesPerSecond, 30);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(RecorderTest, LosesTheBufferOnARestart)
{
    record();
    settings.setShowCursor(false);
    time.advance(milliseconds(800));
    recorder->saveClip();
    time.advance(milliseconds(250));
    EXPECT_TRUE(written.empty());
    showFrame();
    time.advance(seconds(1));
    EXPECT_EQ(written.at(0).snapshot.video.size(), 1);
}

TEST_F(RecorderTest, EncodesTheLastFrameOfAnUnchangedScreen)
{
    encoderDelay = test::FakeDelay::onePicture;
    record();
    // The repeated frame makes the encoder emit the one it held.
    encoded.wait(1);
    const auto shown = time.now();
    recorder->saveClip();
    time.advance(milliseconds(250));
    ASSERT_EQ(written.at(0).snapshot.video.size(), 1);
    EXPECT_EQ(written.at(0).snapshot.video.first()->presentationTime, shown);
}

TEST_F(RecorderTest, KeepsTheFrameThatItRepeats)
{
    encoderDelay = test::FakeDelay::onePicture;
    record();
    encoded.wait(1);
    EXPECT_EQ(encoderInput.pixel, test::FakeFrameSource::shownPixel);
}

TEST_F(RecorderTest, ReplacesASilentEncoderByOneInSoftware)
{
    encoderDelay = test::FakeDelay::forever;
    record();
    encoderDelay = test::FakeDelay::none;
    time.advance(milliseconds(1500));
    showFrame();
    time.advance(milliseconds(1499));
    showFrame();
    EXPECT_EQ(encoders.size(), 1U);
    time.advance(milliseconds(1));
    showFrame();
    ASSERT_EQ(encoders.size(), 2U);
    EXPECT_EQ(encoders.at(1).choice, EncoderChoice::software);
    EXPECT_EQ(encoders.at(1).size, encoders.at(0).size);
    recorder->saveClip();
    time.advance(seconds(1));
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    EXPECT_EQ(written.at(0).snapshot.video.size(), 1);
}

TEST_F(RecorderTest, FailsWhenTheSecondEncoderIsSilentToo)
{
    encoderDelay = test::FakeDelay::forever;
    record();
    for (int i = 0; i < 5; ++i) {
        time.advance(seconds(1));
        showFrame();
    }
    EXPECT_EQ(encoders.size(), 2U);
    time.advance(seconds(1));
    const auto released = fakes.frames->releasedFrames.load();
    fakes.frames->emitFrame(time.now());
    fakes.frames->releasedFrames.wait(released);
    time.settle();
    EXPECT_EQ(recorder->state(),
              (RecorderState{.kind = CaptureState::Error,
                             .message = QStringLiteral("Kayıt durdu: Video kodlayıcı görüntü vermiyor. Farklı bir "
                                                       "çözünürlük veya codec deneyin.")}));
    EXPECT_FALSE(fakes.frames->isRunning);
    EXPECT_EQ(encoders.size(), 2U);
}

TEST_F(RecorderTest, DoesNotTakeAStandstillOfTheProcessForASilentEncoder)
{
    encoderDelay = test::FakeDelay::onePicture;
    record();
    time.advance(seconds(60));
    showFrame();
    EXPECT_EQ(encoders.size(), 1U);
}

TEST_F(RecorderTest, DoesNotTakeAStillScreenForASilentEncoder)
{
    record();
    time.advance(seconds(60));
    showFrame();
    EXPECT_EQ(encoders.size(), 1U);
}

TEST_F(RecorderTest, DropsAPendingRepetitionOnARestart)
{
    encoderDelay = test::FakeDelay::onePicture;
    record();
    recorder->restart();
    time.settle();
    // The first session's repetition is due before the second one's.
    showFrame();
    encoded.wait(2);
    EXPECT_EQ(encoded, 3);
}

TEST_F(RecorderTest, MeasuresTheBufferEveryTwoSecondsWhileRecording)
{
    record();
    for (int i = 0; i < 1023; ++i) {
        showFrame();
    }
    EXPECT_EQ(recorder->bufferMB(), 0);
    time.advance(seconds(2));
    EXPECT_EQ(recorder->bufferMB(), 1.0);
}

TEST_F(RecorderTest, ResetsTheBufferSizeOnStopButNotOnAnError)
{
    record();
    time.advance(seconds(2));
    const auto size = recorder->bufferMB();
    EXPECT_GT(size, 0);
    fakes.frames->events.onStopped(QStringLiteral("unplugged"));
    time.advance(seconds(4));
    EXPECT_EQ(recorder->stateKind(), CaptureState::Error);
    EXPECT_EQ(recorder->bufferMB(), size);
    recorder->stop();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
    EXPECT_EQ(recorder->bufferMB(), 0);
}

TEST_F(RecorderTest, ReportsWhyTheScreenStoppedAndDoesNotRestart)
{
    record();
    fakes.frames->events.onStopped(QStringLiteral("unplugged"));
    time.advance(seconds(10));
    EXPECT_EQ(recorder->state(),
              (RecorderState{.kind = CaptureState::Error, .message = QStringLiteral("Kayıt durdu: unplugged")}));
    EXPECT_FALSE(fakes.frames->isRunning);
    EXPECT_EQ(fakes.frames->starts, 1);
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
}

TEST_F(RecorderTest, IgnoresEventsOfAnEndedSession)
{
    record();
    const auto events = fakes.frames->events;
    recorder->stop();
    events.onStopped(QStringLiteral("unplugged"));
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
}

TEST_F(RecorderTest, IsIdleWhenStoppedWhileStarting)
{
    recorder->start();
    recorder->stop();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
    EXPECT_FALSE(fakes.frames->isRunning);
}

TEST_F(RecorderTest, StartsAgainFromAnError)
{
    encoderError = -1;
    recorder->start();
    time.settle();
    encoderError.reset();
    recorder->toggle();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(RecorderTest, TogglesBetweenOnAndOff)
{
    recorder->toggle();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    recorder->toggle();
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
}

} // namespace
} // namespace quelto
