// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/screens/clip/ClipScreenFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quelto {
namespace {

using namespace test;

class ClipExportsTest : public ClipScreenFixture {
protected:
    ClipExportsTest()
        : ClipScreenFixture(copying.operations())
    {
    }

    /// Starts an export and waits until its work runs.
    void startTrim(const QString& path)
    {
        exports.trim(path, {.start = 1, .end = 4});
        gate.waitUntilReached();
    }

    static inline CopyingExports copying;
    CopyingExports::State& work = copying.state();
    Gate gate;
    QString clip = makeFile("Dota 2 - Ace.mp4");

    void SetUp() override { work = {}; }
};

ClipMeta sidecar()
{
    return {.game = QStringLiteral("Dota 2"),
            .label = QStringLiteral("Ace"),
            .tier = QStringLiteral("EFSANE"),
            .score = 95,
            .events = {ClipMeta::Event{0.5, QStringLiteral("kill")}, ClipMeta::Event{3, QStringLiteral("ace")}}};
}

TEST_F(ClipExportsTest, TrimOpensTheNewClipAndListsIt)
{
    navigation.openClip(clip);
    exports.trim(clip, {.start = 1, .end = 4});
    EXPECT_EQ(exports.runOf(clip), (ClipExports::Run{.text = QStringLiteral("Kırpılıyor…"), .progress = 0.5}));
    waitUntilIdle();
    EXPECT_EQ(work.ranges, (std::vector{TimeRange{.start = 1, .end = 4}}));
    EXPECT_EQ(exports.runOf(clip), std::nullopt);
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Ace (kırpılmış).mp4"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Kırpılmış klip kaydedildi"));
    libraryTime.settle();
    EXPECT_EQ(library.clips().size(), 2);
}

TEST_F(ClipExportsTest, AspectExportOpensTheNewClipAndListsIt)
{
    exports.exportAspect(clip, AspectRatio::square, FillMode::crop);
    EXPECT_EQ(exports.runOf(clip), (ClipExports::Run{.text = QStringLiteral("Dışa aktarılıyor…"), .progress = 0.5}));
    waitUntilIdle();
    EXPECT_EQ(work.shapes, (std::vector{std::pair(AspectRatio::square, FillMode::crop)}));
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Ace (9x16).mp4"));
    EXPECT_EQ(navigation.toast(), QStringLiteral("Yeni oranlı kopya kaydedildi"));
    libraryTime.settle();
    EXPECT_EQ(library.clips().size(), 2);
}

TEST_F(ClipExportsTest, ShrinkStaysOnTheClipAndAnnouncesTheCopy)
{
    sidecar().save(clip);
    navigation.openClip(clip);
    work.gate = gate;
    work.progress = 0.25;
    const QSignalSpy shrunk(&exports, &ClipExports::shrunk);
    exports.shrink(clip, 50);
    EXPECT_EQ(exports.runOf(clip),
              (ClipExports::Run{.text = QStringLiteral("Discord için küçültülüyor…"), .progress = 0}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return exports.runOf(clip)->progress == 0.25; }));
    gate.open();
    waitUntilIdle();
    const auto copy = path("Dota 2 - Ace (Discord).mp4");
    EXPECT_EQ(work.limits, std::vector{50});
    ASSERT_EQ(shrunk.size(), 1);
    EXPECT_EQ(shrunk.first(), (QVariantList{clip, copy}));
    EXPECT_EQ(navigation.selectedPath(), clip);
    EXPECT_EQ(navigation.toast(), QStringLiteral("Discord sürümü hazır"));
    EXPECT_EQ(ClipMeta::load(copy), std::nullopt);
    libraryTime.settle();
    EXPECT_EQ(library.clips().size(), 2);
}

TEST_F(ClipExportsTest, TrimGivesTheCopyTheEventsOfItsPart)
{
    sidecar().save(clip);
    exports.trim(clip, {.start = 1, .end = 3});
    waitUntilIdle();
    EXPECT_EQ(ClipMeta::load(navigation.selectedPath()), sidecar().trimmed(1, 3));
    EXPECT_EQ(ClipMeta::load(clip), sidecar());
}

/// The export starts at the first picture then.
TEST_F(ClipExportsTest, TrimFromBeforeTheStartShiftsNoEvents)
{
    sidecar().save(clip);
    exports.trim(clip, {.start = -2, .end = 4});
    waitUntilIdle();
    EXPECT_EQ(ClipMeta::load(navigation.selectedPath()), sidecar());
}

TEST_F(ClipExportsTest, AspectExportCopiesTheSidecar)
{
    sidecar().save(clip);
    exports.exportAspect(clip, AspectRatio::vertical, FillMode::blur);
    waitUntilIdle();
    EXPECT_EQ(ClipMeta::load(navigation.selectedPath()), sidecar());
}

TEST_F(ClipExportsTest, CopiesOfAClipWithoutASidecarHaveNone)
{
    exports.trim(clip, {.start = 1, .end = 3});
    waitUntilIdle();
    exports.exportAspect(clip, AspectRatio::vertical, FillMode::blur);
    waitUntilIdle();
    EXPECT_THAT(QDir(settings.saveFolder()).entryList(QDir::Files | QDir::Hidden), testing::SizeIs(3));
}

TEST_F(ClipExportsTest, FailuresEndInAToastAndLeaveTheSelection)
{
    work.failure = QStringLiteral("olmadı");
    navigation.openClip(clip);
    const QSignalSpy shrunk(&exports, &ClipExports::shrunk);
    const std::vector<std::function<void()>> all{
        [&] { exports.trim(clip, {.start = 1, .end = 3}); },
        [&] { exports.exportAspect(clip, AspectRatio::vertical, FillMode::blur); }, [&] { exports.shrink(clip, 10); }};
    for (const auto& start : all) {
        navigation.showToast({});
        start();
        EXPECT_NE(exports.runOf(clip), std::nullopt);
        waitUntilIdle();
        EXPECT_EQ(navigation.toast(), QStringLiteral("Dışa aktarma başarısız: olmadı"));
        EXPECT_EQ(exports.runOf(clip), std::nullopt);
        EXPECT_EQ(navigation.selectedPath(), clip);
    }
    EXPECT_TRUE(shrunk.isEmpty());
}

TEST_F(ClipExportsTest, AClipHasOneExportAtATime)
{
    work.gate = gate;
    startTrim(clip);
    exports.shrink(clip, 10);
    EXPECT_EQ(queue.count(), 1);
    gate.open();
    waitUntilIdle();
    EXPECT_TRUE(work.limits.empty());
}

TEST_F(ClipExportsTest, TwoClipsAreExportedOneAfterTheOther)
{
    const auto other = makeFile("Dota 2 - Roshan.mp4");
    work.gate = gate;
    startTrim(clip);
    exports.exportAspect(other, AspectRatio::vertical, FillMode::blur);
    EXPECT_TRUE(work.shapes.empty());
    EXPECT_NE(exports.runOf(other), std::nullopt) << "a waiting export is shown as running";
    gate.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !exports.runOf(clip); }));
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Ace (kırpılmış).mp4"));
    waitUntilIdle();
    EXPECT_EQ(exports.runOf(other), std::nullopt);
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Roshan (9x16).mp4"));
}

TEST_F(ClipExportsTest, RenamedClipStaysBusyUntilItsExportEnds)
{
    work.gate = gate;
    exports.shrink(clip, 10);
    gate.waitUntilReached();
    auto renamed = library.rename(Clip(clip), QStringLiteral("Rampage"))->path;
    const QSignalSpy changed(&exports, &ClipExports::runChanged);
    exports.renameClip(clip, [&renamed] { return renamed; });
    ASSERT_EQ(changed.size(), 2);
    EXPECT_EQ(changed.at(0), QVariantList{clip});
    EXPECT_EQ(changed.at(1), QVariantList{renamed});
    EXPECT_EQ(exports.runOf(clip), std::nullopt);
    EXPECT_NE(exports.runOf(renamed), std::nullopt);
    work.failure = QStringLiteral("olmadı");
    gate.open();
    waitUntilIdle();
    EXPECT_EQ(exports.runOf(renamed), std::nullopt);
}

TEST_F(ClipExportsTest, ExportThatWaitsFindsItsClipUnderTheNewName)
{
    sidecar().save(clip);
    const auto other = makeFile("Dota 2 - Roshan.mp4");
    work.gate = gate;
    startTrim(other);
    exports.exportAspect(clip, AspectRatio::vertical, FillMode::blur);
    auto renamed = library.rename(Clip(clip), QStringLiteral("Rampage"))->path;
    exports.renameClip(clip, [&renamed] { return renamed; });
    gate.open();
    waitUntilIdle();
    EXPECT_EQ(navigation.selectedPath(), path("Dota 2 - Rampage (9x16).mp4"));
    EXPECT_EQ(ClipMeta::load(navigation.selectedPath()), sidecar());
}

TEST_F(ClipExportsTest, ExportThatMissesItsClipDuringARenameTriesTheNewName)
{
    QString renamed;
    work.failure = QStringLiteral("not found");
    work.gate = gate;
    exports.exportAspect(clip, AspectRatio::vertical, FillMode::blur);
    gate.waitUntilReached();
    exports.renameClip(clip, [&] {
        renamed = library.rename(Clip(clip), QStringLiteral("Rampage"))->path;
        // The export fails now, because the clip has another name already.
        gate.open();
        return renamed;
    });
    waitUntilIdle();
    EXPECT_EQ(work.shapes.size(), 2U);
}

TEST_F(ClipExportsTest, RenamingAClipThatIsNotExportedChangesNothing)
{
    const QSignalSpy changed(&exports, &ClipExports::runChanged);
    exports.renameClip(clip, [&] { return path("other.mp4"); });
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_EQ(exports.runOf(path("other.mp4")), std::nullopt);
}

TEST_F(ClipExportsTest, StoppedQueueShowsNoToast)
{
    work.gate = gate;
    startTrim(clip);
    queue.stopAll();
    waitUntilIdle();
    EXPECT_EQ(navigation.toast(), QString());
    EXPECT_FALSE(navigation.hasSelected());
}

} // namespace
} // namespace quelto
