// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/library/matches/MatchClipsFixture.h"

#include <QSignalSpy>

namespace quelto {
namespace {

class MatchClipsTest : public test::MatchClipsFixture {
protected:
    MatchClipsTest()
    {
        QObject::connect(&clips, &MatchClips::changed, [this] { ++changes; });
    }

    int changes = 0;
};

TEST_F(MatchClipsTest, ListsExistingClipsOldestFirst)
{
    const auto newest = makeFile("L - c.mp4", 10);
    const auto oldest = makeFile("L - a.mp4", 30);
    const auto middle = makeFile("L - b.mp4", 20);
    const auto match = playMatch({newest, oldest, path("L - gone.mp4"), middle, settings.saveFolder()});
    EXPECT_EQ(pathsOf(match), QStringList({oldest, middle, newest}));
    EXPECT_TRUE(clips.clipsOf(QUuid::createUuid()).isEmpty());
}

TEST_F(MatchClipsTest, FollowsTheRunningMatch)
{
    tracker.gameStarted(game, QString());
    tracker.clipSaved(makeFile("L - a.mp4"));
    settle();
    EXPECT_EQ(clips.clipsOf(tracker.current()->id).size(), 1);
}

TEST_F(MatchClipsTest, FindsClipsOutsideTheSaveFolder)
{
    const auto clip = makeFile("L - a.mp4");
    const auto match = playMatch({clip});
    settings.setSaveFolder(folder.filePath(QStringLiteral("other")));
    settle();
    EXPECT_EQ(pathsOf(match), QStringList(clip));
}

TEST_F(MatchClipsTest, UnmountedFolderLosesNothing)
{
    const auto match = playMatch({makeFile("L - a.mp4", 20), makeFile("L - b.mp4", 10)});
    library.reload();
    settle();
    const auto before = pathsOf(match);
    const auto stored = tracker.sessions();
    const auto elsewhere = folder.filePath(QStringLiteral("elsewhere"));
    ASSERT_TRUE(QDir().rename(settings.saveFolder(), elsewhere));
    library.reload();
    settle();
    EXPECT_TRUE(clips.clipsOf(match).isEmpty());
    EXPECT_EQ(tracker.sessions(), stored);
    QDir().rmdir(settings.saveFolder());
    ASSERT_TRUE(QDir().rename(elsewhere, settings.saveFolder()));
    library.reload();
    settle();
    EXPECT_EQ(pathsOf(match), before);
}

TEST_F(MatchClipsTest, RenamedClipNeverDisappears)
{
    const auto match = playMatch({makeFile("L - a.mp4")});
    library.reload();
    settle();
    changes = 0;
    QObject::connect(&clips, &MatchClips::changed, [&] { EXPECT_EQ(clips.clipsOf(match).size(), 1); });
    const auto renamed = library.rename(clips.clipsOf(match).first(), QStringLiteral("best"));
    ASSERT_TRUE(renamed);
    EXPECT_GT(changes, 0);
    EXPECT_EQ(pathsOf(match), QStringList(renamed->path));
    settle();
    EXPECT_EQ(pathsOf(match), QStringList(renamed->path));
}

TEST_F(MatchClipsTest, RenamedClipOutsideTheSaveFolderNeverDisappears)
{
    const auto match = playMatch({makeFile("L - a.mp4")});
    settings.setSaveFolder(folder.filePath(QStringLiteral("other")));
    settle();
    QObject::connect(&clips, &MatchClips::changed, [&] { EXPECT_EQ(clips.clipsOf(match).size(), 1); });
    const auto renamed = library.rename(clips.clipsOf(match).first(), QStringLiteral("best"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(pathsOf(match), QStringList(renamed->path));
    settle();
    EXPECT_EQ(pathsOf(match), QStringList(renamed->path));
}

TEST_F(MatchClipsTest, LookUpFromBeforeTheMoveToTheTrashTakesNothingBack)
{
    const auto clip = makeFile("L - a.mp4");
    const auto match = playMatch({clip});
    tracker.deleteClips({clip}, match);
    makeFile("L - a.mp4");
    // Finds the file, but its reply comes after that of the trash.
    lookUpTime.settle();
    QFile::remove(clip);
    const QSignalSpy changed(&tracker, &MatchTracker::sessionsChanged);
    trash.answer();
    QCoreApplication::processEvents();
    libraryTime.settle();
    EXPECT_EQ(changed.size(), 1);
    time.settle();
    EXPECT_EQ(tracker.session(match)->trashed, QStringList(clip));
    settle();
    EXPECT_TRUE(pathsOf(match).isEmpty());
}

TEST_F(MatchClipsTest, RestoredClipComesBackToItsMatch)
{
    const auto clip = makeFile("L - a.mp4", 20);
    const auto kept = makeFile("L - b.mp4", 10);
    const auto match = playMatch({clip, kept});
    tracker.deleteClips({clip}, match);
    EXPECT_EQ(pathsOf(match), QStringList(kept)) << "at once";
    trash.answer();
    settle();
    EXPECT_EQ(pathsOf(match), QStringList(kept));
    makeFile("L - a.mp4", 20);
    library.reload();
    settle();
    EXPECT_EQ(pathsOf(match), QStringList({clip, kept}));
    EXPECT_TRUE(tracker.session(match)->trashed.isEmpty());
}

TEST_F(MatchClipsTest, ClipThatCannotBeTrashedComesBack)
{
    const auto clip = makeFile("L - a.mp4");
    const auto match = playMatch({clip});
    tracker.deleteClips({clip}, match);
    makeFile("L - a.mp4");
    settle();
    EXPECT_TRUE(pathsOf(match).isEmpty()) << "the trash has not answered";
    trash.answer();
    settle();
    EXPECT_EQ(pathsOf(match), QStringList(clip));
}

TEST_F(MatchClipsTest, IsLoadedAfterTheFilesOfStoredMatchesWereLookedUp)
{
    const auto match = playMatch({makeFile("L - a.mp4")});
    MatchTracker next({.library = library,
                       .main = main,
                       .work = matchWork,
                       .store = MatchStore(folder.filePath(QStringLiteral("m.json")))});
    MatchClips nextClips({.tracker = next, .library = library, .main = main, .work = lookUpWork});
    lookUpTime.settle();
    time.settle();
    EXPECT_FALSE(nextClips.isLoaded()) << "the matches are not loaded";
    matchTime.settle();
    time.settle();
    EXPECT_FALSE(nextClips.isLoaded()) << "their files are not looked up";
    lookUpTime.settle();
    time.settle();
    EXPECT_TRUE(nextClips.isLoaded());
    EXPECT_EQ(nextClips.clipsOf(match).size(), 1);
}

TEST_F(MatchClipsTest, UnchangedFilesAreNotAnnounced)
{
    playMatch({makeFile("L - a.mp4")});
    changes = 0;
    clips.refresh();
    settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(MatchClipsTest, LookUpMayEndAfterTheObjectIsGone)
{
    const auto match = playMatch({makeFile("L - a.mp4")});
    auto shortLived = std::make_unique<MatchClips>(
        MatchClips::Dependencies{.tracker = tracker, .library = library, .main = main, .work = lookUpWork});
    shortLived.reset();
    settle();
    EXPECT_EQ(clips.clipsOf(match).size(), 1);
}

} // namespace
} // namespace quelto
