// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"
#include "tests/library/clips/LibraryFixture.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

class ClipLibraryTest : public test::LibraryFixture {
protected:
    ClipLibraryTest()
    {
        QObject::connect(&library, &ClipLibrary::clipsChanged, [this] { ++changes; });
    }

    /// The list as it stands, without reading the folder.
    QStringList listed() const
    {
        QStringList found;
        std::ranges::transform(library.clips(), std::back_inserter(found),
                               [](const Clip& clip) { return QFileInfo(clip.path).fileName(); });
        return found;
    }

    QString names()
    {
        library.reload();
        libraryTime.settle();
        return listed().join(u' ');
    }

    Clip clipOf(const char* name) const { return Clip(path(name)); }

    int changes = 0;
};

TEST_F(ClipLibraryTest, MakesAMissingFolderAndShowsNothing)
{
    EXPECT_FALSE(library.isLoaded());
    libraryTime.settle();
    EXPECT_TRUE(library.isLoaded());
    EXPECT_TRUE(library.clips().isEmpty());
    EXPECT_TRUE(QDir(settings.saveFolder()).exists());
    EXPECT_EQ(changes, 1) << "an empty list is news too when it is the first";
}

TEST_F(ClipLibraryTest, ReadsTheFolderFromTheStart)
{
    makeFile("a.mp4");
    libraryTime.settle();
    EXPECT_EQ(listed(), QStringList(QStringLiteral("a.mp4")));
}

TEST_F(ClipLibraryTest, ShowsTheNewestFirst)
{
    makeFile("old.mp4", 100);
    makeFile("new.mp4", 1);
    makeFile("older.mp4", 1000);
    EXPECT_EQ(names(), QStringLiteral("new.mp4 old.mp4 older.mp4"));
}

TEST_F(ClipLibraryTest, ListsTheSameClipsAsTheirPathsGive)
{
    makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.mp4", 50);
    names();
    ASSERT_EQ(library.clips().size(), 1);
    EXPECT_EQ(library.clips().first(), Clip(library.clips().first().path));
    EXPECT_EQ(library.clips().first().path, path("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.mp4"));
}

TEST_F(ClipLibraryTest, ReadsAnewWhatChangedUnderTheSameName)
{
    const auto file = makeFile("Dota 2 - a.mp4", 50);
    makeFile("Dota 2 - b.mp4", 100);
    EXPECT_EQ(names(), QStringLiteral("Dota 2 - a.mp4 Dota 2 - b.mp4"));
    ASSERT_TRUE(QFile::resize(file, 10));
    makeFile("Dota 2 - b.mp4", 200);
    makeFile("Dota 2 - c.mp4", 300);
    names();
    for (const auto& clip : library.clips()) {
        EXPECT_EQ(clip, Clip(clip.path)) << clip.path.toStdString();
    }
    makeFile("Dota 2 - a.mp4", 500);
    EXPECT_EQ(names(), QStringLiteral("Dota 2 - b.mp4 Dota 2 - c.mp4 Dota 2 - a.mp4"));
    EXPECT_EQ(library.clips().last(), Clip(file));
}

TEST_F(ClipLibraryTest, SaysNothingWhenNothingChanged)
{
    makeFile("a.mp4");
    names();
    const int before = changes;
    names();
    EXPECT_EQ(changes, before);
    makeFile("b.mp4");
    names();
    EXPECT_EQ(changes, before + 1);
}

TEST_F(ClipLibraryTest, ReadsOnTheWorkQueueOnly)
{
    libraryTime.settle();
    makeFile("a.mp4");
    library.reload();
    EXPECT_TRUE(library.clips().isEmpty());
    libraryTime.settle();
    EXPECT_EQ(library.clips().size(), 1);
}

TEST_F(ClipLibraryTest, AnswersARequestWithAListThatWasReadAfterIt)
{
    libraryTime.settle();
    QStringList log;
    library.reload([&] { log.append(QStringLiteral("first ") + QString::number(library.clips().size())); });
    // The reading for the first request is under way from here on; it has seen nothing of the file yet, but may have.
    makeFile("a.mp4");
    library.reload([&] { log.append(QStringLiteral("second ") + QString::number(library.clips().size())); });
    library.reload([&] { log.append(QStringLiteral("third ") + QString::number(library.clips().size())); });
    EXPECT_TRUE(log.isEmpty());
    libraryTime.settle();
    EXPECT_EQ(log.join(u','), QStringLiteral("first 1,second 1,third 1"));
}

TEST_F(ClipLibraryTest, SharesOneReadingAmongRequestsThatComeDuringAnother)
{
    // Each reading posts one task to either queue.
    library.reload();
    for (int i = 0; i < 100; ++i) {
        library.reload();
    }
    EXPECT_EQ(libraryWork.posted(), 1);
    libraryTime.settle();
    EXPECT_EQ(libraryWork.posted(), 2);
}

TEST_F(ClipLibraryTest, MayBeAskedAgainFromAnAnswer)
{
    int answers = 0;
    library.reload([&] { library.reload([&] { ++answers; }); });
    libraryTime.settle();
    EXPECT_EQ(answers, 1);
}

TEST_F(ClipLibraryTest, MayEndDuringAReading)
{
    auto other = std::make_unique<ClipLibrary>(parts());
    bool isDone = false;
    other->reload([&] { isDone = true; });
    other->scheduleReload();
    other.reset();
    libraryTime.advance(1s);
    EXPECT_FALSE(isDone);
}

TEST_F(ClipLibraryTest, AReadingMayOutliveTheLibraryAndItsMainQueue)
{
    libraryTime.settle();
    test::ManualTime workTime;
    test::ManualQueue work(workTime);
    auto otherMain = std::make_unique<test::ManualQueue>(libraryTime);
    auto others = parts();
    auto other = std::make_unique<ClipLibrary>(ClipLibrary::Dependencies{
        .settings = others.settings, .trash = others.trash, .main = *otherMain, .work = work});
    other.reset();
    // What comes late is not handed on.
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    workTime.settle();
    EXPECT_TRUE(QDir(settings.saveFolder()).exists()) << "it was read";
    EXPECT_EQ(otherMain->posted(), 0);
}

TEST_F(ClipLibraryTest, MayEndInAnAnswer)
{
    auto other = std::make_unique<ClipLibrary>(parts());
    other->reload([&] { other.reset(); });
    other->reload();
    libraryTime.settle();
    EXPECT_EQ(other, nullptr);
}

TEST_F(ClipLibraryTest, SchedulesOneReloadAfterTheLastOfManyRequests)
{
    libraryTime.settle();
    const int before = libraryWork.posted();
    for (int i = 0; i < 10; ++i) {
        library.scheduleReload();
        libraryTime.advance(399ms);
    }
    EXPECT_EQ(libraryWork.posted(), before);
    libraryTime.advance(1ms);
    EXPECT_EQ(libraryWork.posted(), before + 1);
    libraryTime.advance(10s);
    EXPECT_EQ(libraryWork.posted(), before + 1);
}

TEST_F(ClipLibraryTest, TakesVideosOnlyWhateverTheirCase)
{
    makeFile("a.MP4", 60);
    makeFile("b.mov", 120);
    makeFile("c.m4v", 180);
    makeFile("d.webm", 240);
    makeFile("mp4", 300);
    makeFile("e.mp4.part", 360);
    makeFile("f.", 420);
    EXPECT_EQ(names(), QStringLiteral("a.MP4 b.mov c.m4v"));
}

TEST_F(ClipLibraryTest, LeavesOutHiddenFilesAndSubFolders)
{
    makeFile("clip.mp4");
    makeFile(".clip.mp4.json");
    makeFile(".hidden.mp4");
    ASSERT_TRUE(QDir(settings.saveFolder()).mkpath(QStringLiteral("folder.mp4")));
    makeFile("folder.mp4/inside.mp4");
    EXPECT_EQ(names(), QStringLiteral("clip.mp4"));
}

TEST_F(ClipLibraryTest, TakesALinkToAVideoButNoneToNowhere)
{
    const auto target = makeFile("target.mp4", 5);
    ASSERT_TRUE(QFile::link(target, path("link.mp4")));
    ASSERT_TRUE(QFile::link(path("gone.mp4"), path("dangling.mp4")));
    ASSERT_TRUE(QFile::link(settings.saveFolder(), path("folder.mp4")));
    names();
    ASSERT_EQ(library.clips().size(), 2);
    EXPECT_EQ(library.clips()[0].size, library.clips()[1].size);
    EXPECT_EQ(library.clips()[0].date, library.clips()[1].date);
}

TEST_F(ClipLibraryTest, TakesEveryNameThatAFileCanHave)
{
    const QByteArray emoji("\U0001F3C6 Şampiyon - ß.mp4");
    const QByteArray longest = QByteArray(251, 'x') + ".mp4";
    makeFile("Dota 2 - two\nlines.mp4", 60);
    makeFile(emoji.constData(), 120);
    makeFile(longest.constData(), 180);
    makeFile("100% #1 ?.mp4", 240);
    makeFile(" - .mp4", 300);
    names();
    ASSERT_EQ(library.clips().size(), 5);
    EXPECT_EQ(library.clips()[0].title, QStringLiteral("two\nlines"));
    EXPECT_EQ(library.clips()[1].game, QString::fromUtf8("\U0001F3C6 Şampiyon"));
    EXPECT_EQ(library.clips()[2].title.size(), 251);
    EXPECT_EQ(library.clips()[3].title, QStringLiteral("100% #1 ?"));
    EXPECT_EQ(library.clips()[4].game, QString());
    EXPECT_EQ(library.clips()[4].title, QString());
}

TEST_F(ClipLibraryTest, ShowsANameThatIsNoText)
{
    names();
    const QByteArray name = QFile::encodeName(settings.saveFolder()) + "/\xff\xfe.mp4";
    auto* const file = std::fopen(name.constData(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("12345", file);
    std::fclose(file);
    names();
    ASSERT_EQ(library.clips().size(), 1);
    EXPECT_EQ(library.clips().first().size, 5);
    EXPECT_EQ(library.rename(library.clips().first(), QStringLiteral("x")), std::nullopt) << "it has no path as text";
    // Qt cannot remove it either.
    std::remove(name.constData());
}

TEST_F(ClipLibraryTest, FollowsTheSaveFolder)
{
    makeFile("first.mp4");
    names();
    settings.setSaveFolder(folder.filePath(QStringLiteral("elsewhere/deep")));
    libraryTime.settle();
    EXPECT_TRUE(library.clips().isEmpty());
    EXPECT_TRUE(QDir(folder.filePath(QStringLiteral("elsewhere/deep"))).exists());
}

TEST_F(ClipLibraryTest, ReadsTheSameFolderOnce)
{
    libraryTime.settle();
    const int before = libraryWork.posted();
    settings.setSaveFolder(settings.saveFolder());
    settings.setSaveFolder(settings.saveFolder() + u'/');
    EXPECT_EQ(libraryWork.posted(), before);
}

TEST_F(ClipLibraryTest, NeverShowsTheFolderThatItLeft)
{
    makeFile("first.mp4");
    names();
    makeFile("second.mp4");
    QList<qsizetype> sizes;
    QObject::connect(&library, &ClipLibrary::clipsChanged, [&] { sizes.append(library.clips().size()); });
    bool isDone = false;
    library.reload([&] {
        isDone = true;
        EXPECT_TRUE(library.clips().isEmpty());
    });
    settings.setSaveFolder(folder.filePath(QStringLiteral("elsewhere")));
    libraryTime.settle();
    EXPECT_TRUE(isDone);
    EXPECT_EQ(sizes, QList<qsizetype>{0});
}

TEST_F(ClipLibraryTest, AFolderThatCannotBeMadeIsEmpty)
{
    makeFile("file.mp4");
    names();
    settings.setSaveFolder(path("file.mp4") + QStringLiteral("/below"));
    EXPECT_EQ(names(), QString());
    settings.setSaveFolder(QFileInfo(path("..")).absolutePath() + QStringLiteral("/file.mp4"));
    EXPECT_EQ(names(), QString()) << "a file is no folder either";
}

TEST_F(ClipLibraryTest, TheWordForOtherFollowsTheLanguage)
{
    settings.setLanguage(QStringLiteral("tr"));
    makeFile("holiday.mp4");
    names();
    EXPECT_EQ(library.clips().first().game, QStringLiteral("Diğer"));
    settings.setLanguage(QStringLiteral("en"));
    libraryTime.settle();
    EXPECT_EQ(library.clips().first().game, QStringLiteral("Other"));
    settings.setLanguage(QStringLiteral("tr"));
}

TEST_F(ClipLibraryTest, CountsTheClipsOfEachGameMostFirst)
{
    for (const char* name : {"B - 1.mp4", "C - 1.mp4", "A - 1.mp4", "C - 2.mp4", "a - 1.mp4", "Ä - 1.mp4"}) {
        makeFile(name);
    }
    EXPECT_TRUE(library.games().isEmpty());
    names();
    QStringList told;
    for (const auto& game : library.games()) {
        told.append(game.name + QString::number(game.count));
    }
    EXPECT_EQ(told.join(u' '), QStringLiteral("C2 A1 B1 a1 Ä1"));
}

TEST_F(ClipLibraryTest, RenamesTheFileAndItsSidecarAndShowsItAtOnce)
{
    makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.MP4");
    makeFile("Dota 2 - b.mp4", 10);
    ClipMeta().save(path("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.MP4"));
    names();
    const auto before = library.clips().first();
    const auto renamed = library.rename(before, QStringLiteral(" \n My title\t "));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->path, path("Dota 2 - My title.MP4"));
    EXPECT_EQ(renamed->title, QStringLiteral("My title"));
    EXPECT_EQ(renamed->autoTier, std::nullopt);
    EXPECT_EQ(renamed->date, before.date);
    EXPECT_TRUE(QFile::exists(renamed->path));
    EXPECT_FALSE(QFile::exists(before.path));
    EXPECT_TRUE(QFile::exists(ClipMeta::pathFor(renamed->path)));
    EXPECT_FALSE(QFile::exists(ClipMeta::pathFor(before.path)));
    EXPECT_EQ(listed().join(u'|'), QStringLiteral("Dota 2 - My title.MP4|Dota 2 - b.mp4"));
    libraryTime.settle();
    EXPECT_EQ(library.clips().first(), *renamed);
}

TEST_F(ClipLibraryTest, ARenamedClipDoesNotComeBackByAnOlderReading)
{
    makeFile("Game - a.mp4");
    names();
    QStringList seen;
    QObject::connect(&library, &ClipLibrary::clipsChanged, [&] { seen.append(listed().join(u' ')); });
    library.reload();
    libraryTime.runNext();
    // Now it is read, with the old name, and waits to be published.
    library.rename(library.clips().first(), QStringLiteral("b"));
    libraryTime.settle();
    EXPECT_EQ(seen, QStringList(QStringLiteral("Game - b.mp4")));
}

TEST_F(ClipLibraryTest, TheNewTitleIsMadeFitForAName)
{
    const auto renamed = library.rename(Clip(makeFile("Game - x.mp4")), QStringLiteral("a/b:c"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->title, QStringLiteral("a-b-c"));
    EXPECT_TRUE(QFile::exists(path("Game - a-b-c.mp4")));
}

TEST_F(ClipLibraryTest, AClipOfNoGameIsRenamedIntoTheWordForOther)
{
    const auto renamed = library.rename(Clip(makeFile("holiday.mp4")), QStringLiteral("sun %1"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->path, path("Diğer - sun %1.mp4"));
}

TEST_F(ClipLibraryTest, LeavesAClipAloneThatCannotGetTheTitle)
{
    const auto file = makeFile("Game - x.mp4");
    makeFile("Game - taken.mp4");
    names();
    const int before = changes;
    const auto tooLong = QString(240, u'ş');
    const auto withZero = QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b");
    for (const QString& title : {QString(), QStringLiteral(" \n\t "), QStringLiteral("x"), QStringLiteral("taken"),
                                 QStringLiteral(" taken "), tooLong, withZero}) {
        EXPECT_EQ(library.rename(Clip(file), title), std::nullopt) << title.toStdString();
    }
    libraryTime.settle();
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_EQ(QFileInfo(path("Game - taken.mp4")).size(), 4);
    EXPECT_EQ(changes, before);
}

TEST_F(ClipLibraryTest, KeepsAClipWithItsMarkersWhereTheirNameWouldBeTooLong)
{
    const auto file = makeFile("Game - x.mp4");
    const QString title(250 - QStringLiteral("Game - .mp4").size(), u'a');
    ClipMeta().save(file);
    EXPECT_EQ(library.rename(Clip(file), title), std::nullopt);
    EXPECT_TRUE(QFile::exists(file));
    ClipMeta::remove(file);
    EXPECT_TRUE(library.rename(Clip(file), title));
}

TEST_F(ClipLibraryTest, AClipThatIsGoneCannotBeRenamed)
{
    EXPECT_EQ(library.rename(clipOf("Game - x.mp4"), QStringLiteral("y")), std::nullopt);
    EXPECT_FALSE(QFile::exists(path("Game - y.mp4")));
}

TEST_F(ClipLibraryTest, TrashesInOneGoWithoutSidecarsAndReloadsBeforeItAnswers)
{
    const QStringList both{makeFile("a.mp4"), makeFile("b.mp4")};
    makeFile("c.mp4");
    ClipMeta().save(both.first());
    names();
    bool isDone = false;
    library.trash(both, [&] {
        isDone = true;
        EXPECT_EQ(library.clips().size(), 1);
    });
    EXPECT_EQ(trash.recycled, both);
    EXPECT_EQ(trash.calls, 1);
    EXPECT_FALSE(QFile::exists(ClipMeta::pathFor(both.first())));
    EXPECT_EQ(library.clips().size(), 3);
    std::thread(trash.answer).join();
    libraryTime.settle();
    EXPECT_FALSE(isDone) << "the answer has to travel to the main thread";
    QCoreApplication::sendPostedEvents();
    libraryTime.settle();
    EXPECT_TRUE(isDone);
}

TEST_F(ClipLibraryTest, TrashesOneClipWithItsSidecar)
{
    const auto file = makeFile("a.mp4");
    ClipMeta().save(file);
    names();
    library.trash(library.clips().first());
    EXPECT_EQ(trash.recycled, QStringList(file));
    EXPECT_FALSE(QFile::exists(ClipMeta::pathFor(file)));
    trash.answer();
    QCoreApplication::sendPostedEvents();
    libraryTime.settle();
    EXPECT_TRUE(library.clips().isEmpty());
}

TEST_F(ClipLibraryTest, NothingToTrashAnswersAtOnce)
{
    bool isDone = false;
    library.trash(QStringList(), [&] { isDone = true; });
    EXPECT_TRUE(isDone);
    EXPECT_EQ(trash.calls, 0);
    library.trash(QStringList());
}

} // namespace
} // namespace quelto
