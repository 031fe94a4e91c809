// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/capture/recorder/RecorderFixture.h"

namespace quelto {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const QString Discord = QStringLiteral("discord");
const QString Mumble = QStringLiteral("mumble");

/// The fake server reports applications as the real one does; which ones are listed is tested there.
class ChatStreamTest : public test::RecorderFixture {
protected:
    void SetUp() override
    {
        RecorderFixture::SetUp();
        settings.setAutoClipEnabled(false);
        QObject::connect(recorder.get(), &Recorder::chatActiveChanged, recorder.get(),
                         [this] { changes.push_back(recorder->chatActive()); });
    }

    void setApplications(const QSet<QString>& applications)
    {
        fakes.audioServer->chat->setApplications(applications);
        time.settle();
    }

    AudioBuffers savedChat()
    {
        recorder->saveClip();
        time.advance(seconds(2));
        return written.empty() ? AudioBuffers() : written.back().snapshot.chat;
    }

    std::vector<bool> changes;
};

TEST_F(ChatStreamTest, IsInactiveWithoutAnApplication)
{
    record();
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_TRUE(savedChat().isEmpty());
    EXPECT_EQ(written.size(), 1U);
    EXPECT_TRUE(changes.empty());
}

TEST_F(ChatStreamTest, RecordsApplicationsThatAlreadyRun)
{
    fakes.audioServer->chatApps = {Discord};
    record();
    EXPECT_TRUE(recorder->chatActive());
    fakes.audioServer->chat->emitTone(0.5F, time.now());
    EXPECT_EQ(savedChat().size(), 1);
    EXPECT_TRUE(written.at(0).snapshot.audio.isEmpty());
    EXPECT_TRUE(written.at(0).snapshot.mic.isEmpty());
}

TEST_F(ChatStreamTest, DoesNotExistWhileIdle)
{
    fakes.audioServer->chatApps = {Discord};
    time.advance(seconds(5));
    EXPECT_EQ(fakes.audioServer->chat, nullptr);
    EXPECT_FALSE(recorder->chatActive());
}

TEST_F(ChatStreamTest, FindsAnApplicationThatWasLaunchedDuringTheStart)
{
    whileOpeningEncoder = [this] {
        fakes.audioServer->chatApps = {Discord};
        EXPECT_EQ(fakes.audioServer->chat, nullptr);
        EXPECT_FALSE(recorder->chatActive());
    };
    record();
    EXPECT_TRUE(recorder->chatActive());
    EXPECT_EQ(changes, std::vector{true});
}

TEST_F(ChatStreamTest, FollowsApplicationsThatStartAndQuit)
{
    record();
    setApplications({Discord});
    EXPECT_TRUE(recorder->chatActive());
    setApplications({});
    EXPECT_FALSE(recorder->chatActive());
    setApplications({Mumble});
    EXPECT_TRUE(recorder->chatActive());
    EXPECT_EQ(changes, (std::vector{true, false, true}));
}

TEST_F(ChatStreamTest, KeepsItsSamplesWhenASecondApplicationStarts)
{
    fakes.audioServer->chatApps = {Discord};
    record();
    fakes.audioServer->chat->emitTone(0.5F, time.now());
    setApplications({Discord, Mumble});
    fakes.audioServer->chat->emitTone(0.25F, time.now() + milliseconds(10));
    EXPECT_EQ(savedChat().size(), 2);
    setApplications({Mumble});
    EXPECT_EQ(changes, std::vector{true}) << "stays active";
    EXPECT_EQ(fakes.frames->starts, 1);
}

TEST_F(ChatStreamTest, KeepsItsSamplesWhenTheLastApplicationQuits)
{
    fakes.audioServer->chatApps = {Discord};
    record();
    fakes.audioServer->chat->emitTone(0.5F, time.now());
    setApplications({});
    EXPECT_EQ(savedChat().size(), 1);
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
}

TEST_F(ChatStreamTest, DoesNotExistWhileTheSettingIsOff)
{
    fakes.audioServer->chatApps = {Discord};
    settings.setCaptureVoiceChat(false);
    record();
    EXPECT_EQ(fakes.audioServer->chat, nullptr);
    EXPECT_FALSE(recorder->chatActive());
}

TEST_F(ChatStreamTest, FollowsTheSettingWhileTheApplicationRuns)
{
    fakes.audioServer->chatApps = {Discord};
    record();
    const int withChat = fakes.audioServer->runningSources;
    settings.setCaptureVoiceChat(false);
    time.advance(milliseconds(800));
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_EQ(fakes.audioServer->runningSources, withChat - 1);
    settings.setCaptureVoiceChat(true);
    time.advance(milliseconds(800));
    EXPECT_TRUE(recorder->chatActive());
    EXPECT_EQ(fakes.audioServer->runningSources, withChat);
    EXPECT_EQ(changes, (std::vector{true, false, true}));
}

TEST_F(ChatStreamTest, DoesNotDependOnSystemAudio)
{
    fakes.audioServer->chatApps = {Discord};
    settings.setCaptureAudio(false);
    settings.setCaptureMicrophone(false);
    record();
    EXPECT_EQ(fakes.audioServer->runningSources, 1);
    EXPECT_TRUE(recorder->chatActive());
}

TEST_F(ChatStreamTest, EndsWithTheSession)
{
    fakes.audioServer->chatApps = {Discord};
    record();
    recorder->stop();
    time.settle();
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
    record();
    EXPECT_TRUE(recorder->chatActive());
    fakes.frames->events.onStopped(QStringLiteral("unplugged"));
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Error);
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
}

TEST_F(ChatStreamTest, IgnoresReportsOfAnEndedSession)
{
    record();
    fakes.audioServer->chat->setApplications({Discord});
    recorder->stop();
    time.settle();
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_TRUE(changes.empty());
}

TEST_F(ChatStreamTest, NeverWarns)
{
    fakes.audioServer->chatProblem = QStringLiteral("no server");
    record();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
    EXPECT_TRUE(recorder->micActive());
}

TEST_F(ChatStreamTest, FailureDoesNotAffectTheSession)
{
    fakes.audioServer->hasChatFailure = true;
    record();
    EXPECT_FALSE(recorder->chatActive());
    EXPECT_EQ(recorder->micWarning(), std::nullopt);
    EXPECT_TRUE(recorder->micActive());
    EXPECT_EQ(fakes.audioServer->runningSources, 2);
    recorder->stop();
    time.settle();
    EXPECT_EQ(fakes.audioServer->runningSources, 0);
}

} // namespace
} // namespace quelto
