// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/faults/FileFaults.h"
#include "tests/export/operations/ExportFixture.h"
#include "tests/media/probe/Probe.h"
#include "tests/ui/screens/clip/ClipScreenFixture.h"

#include <cerrno>

namespace quelto {
namespace {

using namespace test;

/// Real exports of a real clip with a sidecar.
class ClipExportFilesTest : public ClipScreenFixture {
protected:
    QStringList allFiles() const { return filesIn(settings.saveFolder()); }
    FileState sidecarState() const { return stateOf(ClipMeta::pathFor(clip)); }

    GeneratedClips generated;
    QString clip = [this] {
        auto file = path("Dota 2 - Ace.mp4");
        EXPECT_TRUE(QFile::copy(test::makeClip(generated, QStringLiteral("made.mp4"), {.seconds = 1}), file));
        return file;
    }();
    const ClipMeta meta{.game = QStringLiteral("Dota 2"),
                        .events = {ClipMeta::Event{0.2, QStringLiteral("kill")},
                                   ClipMeta::Event{0.5, QStringLiteral("ace")},
                                   ClipMeta::Event{0.9, QStringLiteral("kill")}}};
    const bool isSaved = [this] {
        meta.save(clip);
        return true;
    }();
};

TEST_F(ClipExportFilesTest, TrimWritesThePartAndItsEvents)
{
    open(clip)->trim(0.25, 0.75);
    waitUntilIdle();
    const auto copy = path("Dota 2 - Ace (kırpılmış).mp4");
    ASSERT_EQ(navigation.selectedPath(), copy);
    EXPECT_EQ(numbersOf(readCounter(copy)).front(), 15);
    EXPECT_EQ(readCounter(copy).size(), 30U);
    EXPECT_EQ(ClipMeta::load(copy)->events, (QList{ClipMeta::Event{0.25, QStringLiteral("ace")}}));
    EXPECT_EQ(navigation.selected()->title, QStringLiteral("Ace (kırpılmış)"));
}

TEST_F(ClipExportFilesTest, AspectExportWritesTheShapeAndAllEvents)
{
    open(clip)->exportAspect(QStringLiteral("1:1"), ClipDetail::defaultFill());
    waitUntilIdle();
    const auto copy = path("Dota 2 - Ace (1x1).mp4");
    ASSERT_EQ(navigation.selectedPath(), copy);
    EXPECT_EQ(pictureSize(copy), QSize(360, 360));
    EXPECT_EQ(ClipMeta::load(copy), meta);
}

TEST_F(ClipExportFilesTest, ShrinkWritesASmallCopyWithoutASidecar)
{
    padded(clip, 1'100'000);
    settings.setDiscordLimitMB(1);
    const auto detail = open(clip);
    ASSERT_TRUE(detail->isAboveLimit());
    detail->shrink();
    waitUntilIdle();
    const auto copy = path("Dota 2 - Ace (Discord).mp4");
    EXPECT_EQ(detail->discordPath(), copy);
    EXPECT_LT(QFileInfo(copy).size(), 1'000'000);
    EXPECT_EQ(ClipMeta::load(copy), std::nullopt);
    EXPECT_EQ(decodingErrors(copy).toStdString(), "");
}

TEST_F(ClipExportFilesTest, FullDiskAndReadOnlyFolderLeaveTheClipAndItsSidecar)
{
    const auto detail = open(clip);
    const auto before = allFiles();
    const auto source = stateOf(clip);
    const auto sidecar = sidecarState();
    FileFaults faults(settings.saveFolder());
    const std::vector<std::pair<QByteArray, QString>> rows{
        {"write 0 " + QByteArray::number(ENOSPC) + " *.part",
         QStringLiteral("Dışa aktarma başarısız: Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin.")},
        {"create 0 " + QByteArray::number(EROFS) + " *.part",
         QStringLiteral("Dışa aktarma başarısız: Kayıt klasörü salt okunur. Başka bir kayıt klasörü seçin.")}};
    for (const auto& [rule, message] : rows) {
        faults.use({rule});
        navigation.showToast({});
        detail->trim(0.25, 0.75);
        waitUntilIdle();
        EXPECT_EQ(navigation.toast().toStdString(), message.toStdString());
        EXPECT_EQ(navigation.selectedPath(), clip);
        EXPECT_EQ(allFiles(), before);
        EXPECT_EQ(stateOf(clip), source);
        EXPECT_EQ(sidecarState(), sidecar);
        EXPECT_FALSE(detail->isBusy());
    }
    faults.use({});
    detail->trim(0.25, 0.75);
    waitUntilIdle();
    EXPECT_EQ(allFiles().size(), before.size() + 2);
}

TEST_F(ClipExportFilesTest, CopyIsCompleteWithoutASidecarThatCannotBeWritten)
{
    FileFaults faults(settings.saveFolder());
    faults.use({"renameat 0 " + QByteArray::number(EIO) + " *.json"});
    open(clip)->trim(0.25, 0.75);
    waitUntilIdle();
    const auto copy = path("Dota 2 - Ace (kırpılmış).mp4");
    EXPECT_EQ(navigation.selectedPath(), copy);
    EXPECT_EQ(navigation.toast(), QStringLiteral("Kırpılmış klip kaydedildi"));
    EXPECT_EQ(ClipMeta::load(copy), std::nullopt);
    EXPECT_EQ(readCounter(copy).size(), 30U);
}

TEST_F(ClipExportFilesTest, ClipThatIsGoneEndsInAToast)
{
    const auto detail = open(clip);
    QFile::remove(clip);
    detail->trim(0.25, 0.75);
    waitUntilIdle();
    EXPECT_EQ(navigation.toast(),
              QStringLiteral("Dışa aktarma başarısız: Klip bulunamadı. Silinmiş veya taşınmış olabilir."));
    EXPECT_FALSE(detail->isBusy());
}

TEST_F(ClipExportFilesTest, RenameDuringAnExportKeepsTheExportAndTheSidecar)
{
    auto detail = open(clip);
    detail->exportAspect(QStringLiteral("9:16"), ClipDetail::defaultFill());
    detail->rename(QStringLiteral("Rampage"));
    detail = open(navigation.selectedPath());
    waitUntilIdle();
    EXPECT_FALSE(detail->isBusy());
    EXPECT_TRUE(navigation.selectedPath().endsWith(QStringLiteral(" (9x16).mp4")))
        << navigation.selectedPath().toStdString() << ": " << navigation.toast().toStdString();
    EXPECT_EQ(ClipMeta::load(navigation.selectedPath()), meta);
    EXPECT_EQ(ClipMeta::load(path("Dota 2 - Rampage.mp4")), meta);
}

} // namespace
} // namespace quelto
