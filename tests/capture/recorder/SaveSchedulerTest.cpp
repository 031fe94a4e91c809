// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/capture/recorder/RecorderFixture.h"

#include "library/naming/ClipMeta.h"

namespace quelto {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class SaveSchedulerTest : public test::RecorderFixture {
protected:
    static Moment pentakill(int length = 40)
    {
        return {.game = QStringLiteral("League of Legends"),
                .tier = ClipTier::epic,
                .score = 170,
                .label = QStringLiteral("PENTAKILL"),
                .seconds = length,
                .events = {{.secondsBeforeEnd = 5, .name = QStringLiteral("multikill_5")}}};
    }
};

TEST_F(SaveSchedulerTest, SavesAQuarterOfASecondAfterThePress)
{
    record();
    const auto pressed = time.now();
    recorder->saveClip();
    EXPECT_TRUE(recorder->isSaving());
    time.advance(milliseconds(249));
    EXPECT_TRUE(written.empty());
    time.advance(milliseconds(1));
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written.at(0).endTime, pressed);
    EXPECT_EQ(written.at(0).seconds, 30);
    EXPECT_EQ(written.at(0).suffix, std::nullopt);
    EXPECT_EQ(savedPaths, QStringList{folder.filePath(QStringLiteral("1.mp4"))});
    EXPECT_FALSE(recorder->isSaving());
}

TEST_F(SaveSchedulerTest, IsNotSavingWhenItReportsTheClip)
{
    bool wasSaving = true;
    QObject::connect(recorder.get(), &Recorder::clipSaved, recorder.get(), [&] { wasSaving = recorder->isSaving(); });
    record();
    recorder->saveClip();
    time.advance(seconds(1));
    EXPECT_FALSE(wasSaving);
}

struct Front {
    const char* name;
    std::optional<FrontApplicationInfo> front;
    QString game;
};

class SaveSchedulerFront : public test::RecorderFixture, public testing::WithParamInterface<Front> { };

TEST_P(SaveSchedulerFront, NamesTheClip)
{
    fakes.front->front = GetParam().front;
    record();
    recorder->saveClip();
    time.advance(seconds(1));
    EXPECT_EQ(written.at(0).game, GetParam().game);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SaveSchedulerFront,
    testing::Values(Front{"Game", FrontApplicationInfo{.name = QStringLiteral("Dota 2")}, QStringLiteral("Dota 2")},
                    Front{"Nothing", std::nullopt, QStringLiteral("Ekran")},
                    Front{"Nameless", FrontApplicationInfo{}, QStringLiteral("Ekran")},
                    Front{"FileManager", FrontApplicationInfo{.name = QStringLiteral("Files"), .isDesktop = true},
                          QStringLiteral("Masaüstü")},
                    Front{"ThisProgram", FrontApplicationInfo{.name = QStringLiteral("Quelto"), .isThisProgram = true},
                          QStringLiteral("Masaüstü")}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(SaveSchedulerTest, TwoQuickPressesGiveTwoClips)
{
    record();
    const auto first = time.now();
    recorder->saveClip();
    time.advance(milliseconds(100));
    recorder->saveClip();
    // The first is written at 250 ms; the second tries again half a second after its request.
    time.advance(milliseconds(250));
    EXPECT_EQ(written.size(), 1U);
    time.advance(milliseconds(499));
    EXPECT_EQ(written.size(), 1U);
    time.advance(milliseconds(1));
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written.at(0).endTime, first);
    EXPECT_EQ(written.at(1).endTime, first + milliseconds(100));
    EXPECT_EQ(savedPaths.size(), 2);
}

TEST_F(SaveSchedulerTest, RunsOneSaveAtATime)
{
    std::vector<HostTime> begun;
    whileWriting = [&] { begun.push_back(time.now()); };
    record();
    for (int i = 0; i < 20; ++i) {
        recorder->saveClip();
    }
    time.advance(seconds(60));
    EXPECT_EQ(savedPaths.size(), 20);
    EXPECT_FALSE(recorder->hasSavesToFinish());
    for (std::size_t i = 1; i < begun.size(); ++i) {
        EXPECT_GE(begun[i] - begun[i - 1], milliseconds(250));
    }
}

TEST_F(SaveSchedulerTest, SavesEveryMomentHoweverManyWait)
{
    recorder->start();
    for (int i = 0; i < 30; ++i) {
        recorder->saveAutoClip(Moment{.seconds = 10}, QStringLiteral("Game"));
    }
    time.settle();
    showFrame();
    time.advance(seconds(120));
    EXPECT_EQ(savedPaths.size(), 30);
}

TEST_F(SaveSchedulerTest, DropsARequestOutsideASession)
{
    recorder->saveClip();
    encoderError = -1;
    recorder->start();
    time.settle();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Error);
    recorder->saveClip();
    time.advance(seconds(10));
    EXPECT_TRUE(written.empty());
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(SaveSchedulerTest, SavesPendingRequestsOneSecondAfterRecordingBegins)
{
    recorder->start();
    recorder->saveClip();
    time.settle();
    showFrame();
    const auto began = time.now();
    time.advance(milliseconds(1249));
    EXPECT_TRUE(written.empty());
    time.advance(milliseconds(1));
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written.at(0).endTime, began + seconds(1));
    time.advance(seconds(10));
    EXPECT_EQ(written.size(), 1U);
}

TEST_F(SaveSchedulerTest, DropsPendingRequestsWhenTheStartFails)
{
    fakes.frames->error = QStringLiteral("no sound server");
    recorder->start();
    recorder->saveClip();
    time.advance(seconds(10));
    EXPECT_TRUE(written.empty());
    EXPECT_TRUE(failures.isEmpty());
    fakes.frames->error.reset();
    record();
    time.advance(seconds(10));
    EXPECT_TRUE(written.empty());
}

TEST_F(SaveSchedulerTest, DropsAWaitingRequestAfterAStop)
{
    record();
    recorder->saveClip();
    recorder->saveClip();
    recorder->stop();
    time.advance(seconds(10));
    EXPECT_LE(written.size(), 1U);
}

TEST_F(SaveSchedulerTest, FinishesARunningSaveAcrossARestart)
{
    record();
    recorder->saveClip();
    whileWriting = [this] { recorder->restart(); };
    time.advance(seconds(2));
    EXPECT_EQ(savedPaths.size(), 1);
    EXPECT_EQ(written.at(0).snapshot.video.size(), 1);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(SaveSchedulerTest, GivesUpAfterSixRetriesWithoutAKeyFrame)
{
    keyFrames = test::FakeKeyFrames::none;
    record();
    recorder->saveClip();
    time.advance(milliseconds(250 + 6 * 750 - 1));
    EXPECT_TRUE(written.empty());
    EXPECT_TRUE(recorder->isSaving());
    time.advance(milliseconds(1));
    EXPECT_EQ(written.size(), 1U);
    EXPECT_EQ(failures, QStringList{QStringLiteral("Tamponda henüz görüntü yok.")});
    EXPECT_FALSE(recorder->isSaving());
}

TEST_F(SaveSchedulerTest, EndsARetriedClipAtTheRetry)
{
    recorder->start();
    time.settle();
    recorder->saveClip();
    time.advance(milliseconds(260));
    showFrame();
    const auto retried = time.now() + milliseconds(490);
    time.advance(seconds(1));
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written.at(0).endTime, retried);
}

TEST_F(SaveSchedulerTest, LimitsAMomentsClipToTheBuffer)
{
    settings.setAutoClipEnabled(false);
    settings.setClipLength(45);
    record();
    recorder->saveAutoClip(pentakill(60), QStringLiteral("League of Legends"));
    time.advance(seconds(1));
    EXPECT_EQ(written.at(0).seconds, 45);
}

TEST_F(SaveSchedulerTest, NamesAMomentsClipByTierScoreAndLabel)
{
    record();
    recorder->saveAutoClip(pentakill(), QStringLiteral("League of Legends"));
    time.advance(seconds(1));
    EXPECT_EQ(written.at(0).game, QStringLiteral("League of Legends"));
    EXPECT_EQ(written.at(0).suffix, QStringLiteral("[EFSANE 170] PENTAKILL"));
    EXPECT_EQ(written.at(0).seconds, 40);
}

TEST_F(SaveSchedulerTest, HasWorkFromTheFirstRequestToTheLastClip)
{
    record();
    EXPECT_FALSE(recorder->hasSavesToFinish());
    recorder->saveClip();
    recorder->saveClip();
    time.advance(milliseconds(300));
    EXPECT_FALSE(recorder->isSaving());
    EXPECT_TRUE(recorder->hasSavesToFinish());
    time.advance(seconds(2));
    EXPECT_FALSE(recorder->hasSavesToFinish());
}

TEST_F(SaveSchedulerTest, KeepsPendingRequestsWhenTheStartBeginsAgain)
{
    recorder->start();
    recorder->saveClip();
    settings.setFps(30);
    time.settle();
    ASSERT_EQ(fakes.frames->starts, 2);
    showFrame();
    time.advance(seconds(2));
    EXPECT_EQ(written.size(), 1U);
}

TEST_F(SaveSchedulerTest, WritesASidecarOnlyForAMomentsClip)
{
    record();
    recorder->saveClip();
    time.advance(seconds(1));
    recorder->saveAutoClip(pentakill(), QStringLiteral("League of Legends"));
    time.advance(seconds(1));
    ASSERT_EQ(savedPaths.size(), 2);
    EXPECT_EQ(ClipMeta::load(savedPaths.at(0)), std::nullopt);
    const auto meta = ClipMeta::load(savedPaths.at(1));
    ASSERT_TRUE(meta);
    EXPECT_EQ(meta->label, QStringLiteral("PENTAKILL"));
    // 5 s before the end of a clip of 40 s.
    const QList<ClipMeta::Event> expected{ClipMeta::Event{35, QStringLiteral("multikill_5")}};
    EXPECT_EQ(meta->events, expected);
}

TEST_F(SaveSchedulerTest, ReportsPathDurationAndMomentOfASavedClip)
{
    clipDuration = 12.5;
    record();
    recorder->saveClip();
    time.advance(seconds(1));
    recorder->saveAutoClip(pentakill(), QStringLiteral("League of Legends"));
    time.advance(seconds(1));
    ASSERT_EQ(savedClips.size(), 2);
    EXPECT_EQ(savedClips.at(0).path, folder.filePath(QStringLiteral("1.mp4")));
    EXPECT_EQ(savedClips.at(0).duration, 12.5);
    EXPECT_FALSE(savedClips.at(0).moment);
    ASSERT_TRUE(savedClips.at(1).moment);
    EXPECT_EQ(savedClips.at(1).moment->label, QStringLiteral("PENTAKILL"));
    EXPECT_EQ(savedClips.at(1).moment->tier, ClipTier::epic);
}

TEST_F(SaveSchedulerTest, ReadsFolderAndVolumesWhenTheSaveIsScheduled)
{
    settings.setSaveFolder(QStringLiteral("/first"));
    settings.setSystemVolume(0.5);
    settings.setMicVolume(1.5);
    record();
    recorder->saveClip();
    settings.setSaveFolder(QStringLiteral("/second"));
    settings.setSystemVolume(2);
    settings.setMicVolume(0);
    time.advance(milliseconds(250));
    EXPECT_EQ(written.at(0).folder, QStringLiteral("/first"));
    EXPECT_EQ(written.at(0).systemGain, 0.5F);
    EXPECT_EQ(written.at(0).micGain, 1.5F);
}

TEST_F(SaveSchedulerTest, ServesTheNextRequestAfterAFailure)
{
    bool isDiskFull = true;
    whileWriting = [&] {
        if (isDiskFull) {
            throw RecorderError::writer(QStringLiteral("Diskte yer kalmadı."));
        }
    };
    record();
    recorder->saveClip();
    time.advance(seconds(1));
    EXPECT_EQ(failures, QStringList{QStringLiteral("Klip yazılamadı: Diskte yer kalmadı.")});
    EXPECT_EQ(failureReasons, QStringList{QStringLiteral("Diskte yer kalmadı.")});
    EXPECT_FALSE(recorder->isSaving());
    isDiskFull = false;
    recorder->saveClip();
    time.advance(seconds(1));
    EXPECT_EQ(savedPaths.size(), 1);
}

} // namespace
} // namespace quelto
