// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"
#include "tests/library/clips/LibraryFixture.h"

namespace quelto {
namespace {

class ClipLibraryTest : public test::LibraryFixture {
protected:
    QStringList names()
    {
        library.reload();
        QStringList found;
        std::ranges::transform(library.clips(), std::back_inserter(found),
                               [](const Clip& clip) { return QFileInfo(clip.path).fileName(); });
        return found;
    }
};

TEST_F(ClipLibraryTest, MakesAMissingFolderAndShowsNothing)
{
    EXPECT_EQ(names(), QStringList());
    EXPECT_TRUE(QDir(settings.saveFolder()).exists());
}

TEST_F(ClipLibraryTest, ShowsTheNewestFirst)
{
    makeFile("old.mp4", 100);
    makeFile("new.mp4", 1);
    makeFile("older.mp4", 1000);
    EXPECT_EQ(names().join(u' '), QStringLiteral("new.mp4 old.mp4 older.mp4"));
}

TEST_F(ClipLibraryTest, TakesVideosOnlyWhateverTheirCase)
{
    makeFile("a.MP4", 1);
    makeFile("b.mov", 2);
    makeFile("c.m4v", 3);
    makeFile("d.webm", 4);
    makeFile("mp4", 5);
    EXPECT_EQ(names().join(u' '), QStringLiteral("a.MP4 b.mov c.m4v"));
}

TEST_F(ClipLibraryTest, LeavesOutHiddenFilesAndSubFolders)
{
    makeFile("clip.mp4");
    makeFile(".clip.mp4.json");
    makeFile(".hidden.mp4");
    ASSERT_TRUE(QDir(settings.saveFolder()).mkpath(QStringLiteral("folder.mp4")));
    makeFile("folder.mp4/inside.mp4");
    EXPECT_EQ(names(), QStringList(QStringLiteral("clip.mp4")));
}

TEST_F(ClipLibraryTest, FollowsTheSaveFolder)
{
    makeFile("first.mp4");
    library.reload();
    settings.setSaveFolder(folder.filePath(QStringLiteral("elsewhere")));
    EXPECT_TRUE(library.clips().isEmpty());
    EXPECT_TRUE(QDir(folder.filePath(QStringLiteral("elsewhere"))).exists());
}

TEST_F(ClipLibraryTest, AFolderThatCannotBeMadeIsEmpty)
{
    makeFile("file.mp4");
    settings.setSaveFolder(path("file.mp4") + QStringLiteral("/below"));
    EXPECT_EQ(names(), QStringList());
}

TEST_F(ClipLibraryTest, TrashesInOneGoWithoutSidecarsAndReloadsBeforeItAnswers)
{
    const QStringList files{makeFile("a.mp4"), makeFile("b.mp4")};
    makeFile("c.mp4");
    ClipMeta().save(files.first());
    library.reload();
    bool isDone = false;
    library.trash(files, [&] {
        isDone = true;
        EXPECT_EQ(library.clips().size(), 1);
    });
    EXPECT_EQ(trash.recycled, files);
    EXPECT_EQ(trash.calls, 1);
    EXPECT_FALSE(QFile::exists(ClipMeta::pathFor(files.first())));
    EXPECT_EQ(library.clips().size(), 3);
    std::thread(trash.answer).join();
    EXPECT_FALSE(isDone) << "the answer has to travel to the main thread";
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(isDone);
}

TEST_F(ClipLibraryTest, NothingToTrashAnswersAtOnce)
{
    bool isDone = false;
    library.trash({}, [&] { isDone = true; });
    EXPECT_TRUE(isDone);
    EXPECT_EQ(trash.calls, 0);
    library.trash({});
}

} // namespace
} // namespace quelto
