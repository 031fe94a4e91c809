// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/screens/clip/ClipScreenFixture.h"

#include <QSignalSpy>

namespace quelto {
namespace {

using namespace test;

const auto NotFound = QStringLiteral("Klip bulunamadı. Silinmiş veya taşınmış olabilir.");

class ClipDetailTest : public ClipScreenFixture {
protected:
    ClipDetailTest()
        : ClipScreenFixture(copying.operations())
    {
    }
    void SetUp() override { work = {}; }

    /// Runs the reads of clip files.
    void readClips()
    {
        for (const auto& read : std::exchange(reads, {})) {
            read();
        }
        libraryTime.settle();
    }
    /// A file of that size.
    QString makeClip(const char* name, qint64 size)
    {
        auto file = makeFile(name);
        EXPECT_TRUE(QFile::resize(file, size));
        return file;
    }

    static inline CopyingExports copying;
    CopyingExports::State& work = copying.state();
    Gate gate;
};

TEST_F(ClipDetailTest, ShowsAnAutomaticClip)
{
    const auto file = makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] Rampage.mp4");
    QFile clip(file);
    ASSERT_TRUE(clip.open(QIODevice::ReadWrite));
    const QDateTime date({2020, 3, 1}, {20, 15});
    ASSERT_TRUE(clip.setFileTime(date, QFileDevice::FileModificationTime));
    const auto detail = open(file);
    EXPECT_EQ(detail->title(), QStringLiteral("Rampage"));
    EXPECT_EQ(detail->editableTitle(), QString());
    EXPECT_EQ(detail->game(), QStringLiteral("Dota 2"));
    EXPECT_EQ(detail->tier(), QStringLiteral("EFSANE"));
    EXPECT_EQ(detail->tierLabel(), labelOf(ClipTier::epic));
    EXPECT_EQ(detail->score(), 95);
    EXPECT_EQ(detail->dateText(), QStringLiteral("1 Mar 2020 20:15"));
    EXPECT_EQ(detail->size(), 4);
    EXPECT_EQ(detail->sizeText(), L10n::fileSize(4));
}

TEST_F(ClipDetailTest, TitledClipHasNoTierAndCanEditItsTitle)
{
    const auto detail = open(makeFile("Dota 2 - Roshan.mp4"));
    EXPECT_EQ(detail->title(), QStringLiteral("Roshan"));
    EXPECT_EQ(detail->editableTitle(), QStringLiteral("Roshan"));
    EXPECT_EQ(detail->tier(), QString());
    EXPECT_EQ(detail->tierLabel(), QString());
    EXPECT_FALSE(detail->score().isValid());
}

TEST_F(ClipDetailTest, TechnicalDataIsADashUntilItIsRead)
{
    const auto detail = open(makeFile("Dota 2 - Roshan.mp4"));
    const QSignalSpy changed(detail.get(), &ClipDetail::infoChanged);
    EXPECT_EQ(detail->durationText(), QStringLiteral("—"));
    EXPECT_EQ(detail->resolutionText(), QStringLiteral("—"));
    EXPECT_EQ(detail->fpsText(), QStringLiteral("—"));
    EXPECT_EQ(detail->sizeText(), L10n::fileSize(4));
    EXPECT_NE(detail->dateText(), QString());
    readClips();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(detail->durationText(), QStringLiteral("1:02"));
    EXPECT_EQ(detail->resolutionText(), QStringLiteral("1920×1080"));
    EXPECT_EQ(detail->fpsText(), QStringLiteral("60"));
}

TEST_F(ClipDetailTest, TechnicalDataOfAnUnreadableClipStaysADash)
{
    info = {};
    const auto detail = open(makeFile("Dota 2 - Roshan.mp4"));
    readClips();
    EXPECT_EQ(detail->durationText(), QStringLiteral("—"));
    EXPECT_EQ(detail->resolutionText(), QStringLiteral("—"));
    EXPECT_EQ(detail->fpsText(), QStringLiteral("—"));
}

TEST_F(ClipDetailTest, PageThatClosesDuringTheReadIsNotTold)
{
    open(makeFile("Dota 2 - Roshan.mp4")).reset();
    readClips();
}

TEST_F(ClipDetailTest, PathIsSetOnce)
{
    const auto first = makeFile("Dota 2 - Roshan.mp4");
    const auto detail = open(first);
    detail->setPath(makeFile("Dota 2 - Ace.mp4"));
    EXPECT_EQ(detail->path(), first);
    EXPECT_EQ(detail->title(), QStringLiteral("Roshan"));
}

TEST_F(ClipDetailTest, OnlyAClipAboveTheLimitIsOfferedToBeShrunk)
{
    const auto atLimit = open(makeClip("a - at.mp4", 10'000'000));
    const auto above = open(makeClip("a - above.mp4", 10'000'001));
    EXPECT_FALSE(atLimit->isAboveLimit());
    EXPECT_TRUE(above->isAboveLimit());
    const QSignalSpy changed(above.get(), &ClipDetail::aboveLimitChanged);
    settings.setDiscordLimitMB(50);
    EXPECT_EQ(above->limitMB(), 50);
    EXPECT_FALSE(above->isAboveLimit());
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(ClipDetailTest, LimitOfThousandsOfMegabytesDoesNotOverflow)
{
    settings.setDiscordLimitMB(4000);
    EXPECT_FALSE(open(makeClip("a - small.mp4", 1000))->isAboveLimit());
    EXPECT_TRUE(open(makeClip("a - large.mp4", 4'000'000'001))->isAboveLimit());
}

TEST_F(ClipDetailTest, ShrunkCopyIsSharedInsteadOfTheClip)
{
    const auto clip = makeClip("a - b.mp4", 11'000'000);
    const auto detail = open(clip);
    EXPECT_EQ(detail->sharedPath(), clip);
    EXPECT_EQ(detail->sharedSizeText(), detail->sizeText());
    detail->shrink();
    EXPECT_TRUE(detail->isBusy());
    waitUntilIdle();
    EXPECT_EQ(work.limits, std::vector{10});
    const auto copy = path("a - b (Discord).mp4");
    EXPECT_EQ(detail->discordPath(), copy);
    EXPECT_EQ(detail->sharedPath(), copy);
    EXPECT_EQ(detail->sharedSizeText(), L10n::fileSize(2));
    EXPECT_FALSE(detail->isAboveLimit());
    detail->copy();
    EXPECT_EQ(pasteboard.file, copy);
    EXPECT_EQ(detail->path(), clip);
}

TEST_F(ClipDetailTest, NextVisitForgetsTheShrunkCopy)
{
    const auto clip = makeClip("a - b.mp4", 11'000'000);
    auto detail = open(clip);
    detail->shrink();
    waitUntilIdle();
    detail = open(clip);
    EXPECT_EQ(detail->discordPath(), QString());
    EXPECT_TRUE(detail->isAboveLimit());
    detail->copy();
    EXPECT_EQ(pasteboard.file, clip);
}

TEST_F(ClipDetailTest, PageOfAnotherClipIgnoresTheShrunkCopy)
{
    const auto other = open(makeClip("a - other.mp4", 11'000'000));
    const auto detail = open(makeClip("a - b.mp4", 11'000'000));
    detail->shrink();
    EXPECT_FALSE(other->isBusy());
    waitUntilIdle();
    EXPECT_EQ(other->discordPath(), QString());
}

TEST_F(ClipDetailTest, ExportOutlivesThePageAndANewPageIsBusy)
{
    const auto clip = makeFile("a - b.mp4");
    work.gate = gate;
    auto detail = open(clip);
    detail->trim(1, 2);
    gate.waitUntilReached();
    detail.reset();
    navigation.closeClip();
    detail = open(clip);
    EXPECT_TRUE(detail->isBusy());
    EXPECT_EQ(detail->busyText(), QStringLiteral("Kırpılıyor…"));
    EXPECT_EQ(detail->progress(), 0.5);
    detail.reset();
    navigation.showSettings();
    gate.open();
    waitUntilIdle();
    EXPECT_EQ(work.ranges, (std::vector{TimeRange{.start = 1, .end = 2}}));
    EXPECT_EQ(navigation.selectedPath(), path("a - b (kırpılmış).mp4"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Kırpılmış klip kaydedildi"));
}

TEST_F(ClipDetailTest, BusyClipCanBeShared)
{
    const auto clip = makeFile("a - b.mp4");
    work.gate = gate;
    const auto detail = open(clip);
    detail->trim(1, 2);
    gate.waitUntilReached();
    EXPECT_EQ(detail->sharedPath(), clip);
    gate.open();
    waitUntilIdle();
    EXPECT_FALSE(detail->isBusy());
    EXPECT_EQ(detail->busyText(), QString());
}

TEST_F(ClipDetailTest, ExportsInTheChosenShape)
{
    const auto detail = open(makeFile("a - b.mp4"));
    EXPECT_EQ(
        ClipDetail::aspects(),
        (QStringList{QStringLiteral("16:9"), QStringLiteral("9:16"), QStringLiteral("1:1"), QStringLiteral("4:5")}));
    EXPECT_EQ(ClipDetail::defaultAspect(), QStringLiteral("9:16"));
    EXPECT_EQ(ClipDetail::fillLabel(ClipDetail::fills().at(0)), QStringLiteral("Bulanık arka plan"));
    EXPECT_EQ(ClipDetail::fillLabel(ClipDetail::fills().at(1)), QStringLiteral("Ortadan kırp"));
    EXPECT_EQ(ClipDetail::defaultFill(), ClipDetail::fills().at(0));
    detail->exportAspect(QStringLiteral("4:5"), ClipDetail::fills().at(1));
    waitUntilIdle();
    EXPECT_EQ(work.shapes, (std::vector{std::pair(AspectRatio::portrait, FillMode::crop)}));
}

TEST_F(ClipDetailTest, RenameOpensTheClipUnderItsNewName)
{
    const auto detail = open(makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] Rampage.mp4"));
    detail->rename(QStringLiteral("Best"));
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Best.mp4"));
    EXPECT_EQ(navigation.selected()->autoTier, std::nullopt);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(ClipDetailTest, RenameToATakenNameChangesNothing)
{
    makeFile("a - taken.mp4");
    const auto clip = makeFile("a - b.mp4");
    const auto detail = open(clip);
    detail->rename(QStringLiteral("taken"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Yeniden adlandırılamadı"));
    EXPECT_EQ(navigation.selectedPath(), clip);
    EXPECT_TRUE(QFile::exists(clip));
}

TEST_F(ClipDetailTest, RenameDuringAnExportKeepsThePageBusyAndGivesItTheCopy)
{
    work.gate = gate;
    auto detail = open(makeFile("a - b.mp4"));
    detail->shrink();
    gate.waitUntilReached();
    detail->rename(QStringLiteral("new"));
    detail = open(navigation.selectedPath());
    EXPECT_TRUE(detail->isBusy());
    gate.open();
    waitUntilIdle();
    EXPECT_FALSE(detail->isBusy());
    EXPECT_EQ(detail->discordPath(), path("a - b (Discord).mp4"));
}

TEST_F(ClipDetailTest, TrashClosesTheClip)
{
    const auto clip = makeFile("a - b.mp4");
    const auto detail = open(clip);
    detail->trash();
    EXPECT_EQ(trash.recycled, QStringList{clip});
    EXPECT_FALSE(navigation.hasSelected());
}

TEST_F(ClipDetailTest, CopiesAndRevealsTheClip)
{
    const auto clip = makeFile("a - b.mp4");
    const auto detail = open(clip);
    detail->copy();
    EXPECT_EQ(pasteboard.file, clip);
    EXPECT_EQ(navigation.toast(), QStringLiteral("Klip panoya kopyalandı — Discord'da Ctrl+V ile yapıştırın"));
    detail->reveal();
    EXPECT_EQ(files.revealed, QStringList{clip});
}

TEST_F(ClipDetailTest, CommandsOnAClipThatIsGoneEndInAToast)
{
    const auto clip = makeFile("a - b.mp4");
    const auto detail = open(clip);
    QFile::remove(clip);
    detail->copy();
    EXPECT_EQ(navigation.toast(), NotFound);
    EXPECT_EQ(pasteboard.file, QString());
    navigation.showToast({});
    detail->reveal();
    EXPECT_EQ(navigation.toast(), NotFound);
    EXPECT_TRUE(files.revealed.isEmpty());
    navigation.showToast({});
    detail->shrink();
    EXPECT_EQ(navigation.toast(), NotFound);
    EXPECT_FALSE(detail->isBusy());
    detail->rename(QStringLiteral("new"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Yeniden adlandırılamadı"));
    EXPECT_EQ(navigation.selectedPath(), clip);
    detail->trash();
    EXPECT_FALSE(navigation.hasSelected());
}

} // namespace
} // namespace quelto
