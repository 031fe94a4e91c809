// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/CounterClip.h"
#include "tests/ui/screens/clip/ClipScreenFixture.h"

#include <QSignalSpy>

namespace quelto {
namespace {

using namespace test;

class ClipFramesTest : public ClipScreenFixture {
protected:
    GeneratedClips generated;
    QString clip = [this] {
        auto file = path("Dota 2 - Ace.mp4");
        EXPECT_TRUE(QFile::copy(test::makeClip(generated, QStringLiteral("made.mp4"), {.seconds = 0.5}), file));
        return file;
    }();
    QStringList names() const { return QDir(settings.saveFolder()).entryList(QDir::Files | QDir::Hidden); }
};

TEST_F(ClipFramesTest, SavesTheFrameAndCopiesIt)
{
    const auto detail = open(clip);
    const QSignalSpy changed(detail.get(), &ClipDetail::savingFrameChanged);
    detail->saveFrame(0.2);
    EXPECT_TRUE(detail->isSavingFrame());
    EXPECT_EQ(navigation.toast(), QString());
    frameTime.settle();
    EXPECT_FALSE(detail->isSavingFrame());
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(navigation.toast(), QStringLiteral("Kare kaydedildi ve panoya kopyalandı"));
    const auto picture = path("Dota 2 - Ace 0m00.200s.png");
    EXPECT_EQ(numbersOf(readCounter(picture)), std::vector{12});
    EXPECT_EQ(pasteboard.image, QImage(picture).convertToFormat(pasteboard.image.format()));
    EXPECT_EQ(navigation.selectedPath(), clip);
}

TEST_F(ClipFramesTest, PictureIsNotListedAsAClip)
{
    open(clip)->saveFrame(0.2);
    frameTime.settle();
    library.reload();
    libraryTime.settle();
    ASSERT_EQ(library.clips().size(), 1);
    EXPECT_EQ(library.clips().first().path, clip);
}

TEST_F(ClipFramesTest, SecondRequestDuringASaveIsIgnored)
{
    const auto detail = open(clip);
    detail->saveFrame(0.2);
    detail->saveFrame(0.3);
    frameTime.settle();
    EXPECT_EQ(names().size(), 2);
    detail->saveFrame(0.3);
    frameTime.settle();
    EXPECT_EQ(names().size(), 3);
}

TEST_F(ClipFramesTest, SaveOutlivesThePage)
{
    auto detail = open(clip);
    detail->saveFrame(0.2);
    detail.reset();
    navigation.showSettings();
    detail = open(clip);
    EXPECT_TRUE(detail->isSavingFrame());
    frameTime.settle();
    EXPECT_FALSE(detail->isSavingFrame());
    EXPECT_EQ(navigation.toast(), QStringLiteral("Kare kaydedildi ve panoya kopyalandı"));
}

TEST_F(ClipFramesTest, FailureEndsInAToastAndLeavesTheClipboard)
{
    const auto detail = open(clip);
    QFile::remove(clip);
    detail->saveFrame(0.2);
    frameTime.settle();
    EXPECT_EQ(navigation.toast(),
              QStringLiteral("Kare kaydedilemedi: Klip bulunamadı. Silinmiş veya taşınmış olabilir."));
    EXPECT_TRUE(pasteboard.image.isNull());
    EXPECT_FALSE(detail->isSavingFrame());
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(ClipFramesTest, StoppedSaveLeavesNoPictureAndNoToast)
{
    open(clip)->saveFrame(0.2);
    frames.stop();
    frameTime.settle();
    EXPECT_EQ(navigation.toast(), QString());
    EXPECT_EQ(names().size(), 1);
}

TEST_F(ClipFramesTest, TaskThatEndsAfterTheProgramTouchesNothing)
{
    auto owner = std::make_unique<ClipFrames>(ClipFrames::Dependencies{
        .main = frameQueue, .work = frameQueue, .pasteboard = pasteboard, .navigation = navigation});
    owner->save(clip, 0.2);
    owner.reset();
    frameTime.settle();
    EXPECT_TRUE(pasteboard.image.isNull());
    EXPECT_EQ(names().size(), 1);
}

/// An export takes minutes.
TEST_F(ClipFramesTest, SavesWhileAnExportRuns)
{
    const Gate gate;
    queue.run({.work = [gate](const ExportControl& control) {
        gate.passOrStop(control.stop);
        return QString();
    }});
    gate.waitUntilReached();
    open(clip)->saveFrame(0.2);
    frameTime.settle();
    EXPECT_FALSE(pasteboard.image.isNull());
    gate.open();
    waitUntilIdle();
}

} // namespace
} // namespace quelto
