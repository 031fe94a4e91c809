// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileName.h"
#include "library/naming/ClipMeta.h"
#include "tests/library/clips/LibraryFixture.h"

#include <unistd.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class ClipLibraryTest : public test::LibraryFixture {
protected:
    ClipLibraryTest()
    {
        QObject::connect(&library, &ClipLibrary::clipsChanged, [this] { ++changes; });
    }

    /// The file names of the current list, without a reload.
    QStringList listed() const
    {
        QStringList names;
        std::ranges::transform(library.clips(), std::back_inserter(names),
                               [](const Clip& clip) { return QFileInfo(clip.path).fileName(); });
        return names;
    }

    QString reloadedNames()
    {
        library.reload();
        libraryTime.settle();
        return listed().join(u' ');
    }

    Clip clipOf(const char* name) const { return Clip(path(name)); }

    int changes = 0;
};

TEST_F(ClipLibraryTest, CreatesAMissingFolderAndListsNothing)
{
    EXPECT_FALSE(library.isLoaded());
    libraryTime.settle();
    EXPECT_TRUE(library.isLoaded());
    EXPECT_TRUE(library.clips().isEmpty());
    EXPECT_TRUE(QDir(settings.saveFolder()).exists());
    EXPECT_EQ(changes, 1) << "the first list is reported even if it is empty";
}

TEST_F(ClipLibraryTest, ScansTheFolderOnConstruction)
{
    makeFile("a.mp4");
    libraryTime.settle();
    EXPECT_EQ(listed(), QStringList(QStringLiteral("a.mp4")));
}

TEST_F(ClipLibraryTest, ListsNewestFirst)
{
    makeFile("old.mp4", 100);
    makeFile("new.mp4", 1);
    makeFile("older.mp4", 1000);
    EXPECT_EQ(reloadedNames(), QStringLiteral("new.mp4 old.mp4 older.mp4"));
}

TEST_F(ClipLibraryTest, ListedClipEqualsAClipMadeFromItsPath)
{
    makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.mp4", 50);
    reloadedNames();
    ASSERT_EQ(library.clips().size(), 1);
    EXPECT_EQ(library.clips().first(), Clip(library.clips().first().path));
    EXPECT_EQ(library.clips().first().path, path("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.mp4"));
}

TEST_F(ClipLibraryTest, ReloadUpdatesAChangedFileOfTheSameName)
{
    const auto file = makeFile("Dota 2 - a.mp4", 50);
    makeFile("Dota 2 - b.mp4", 100);
    EXPECT_EQ(reloadedNames(), QStringLiteral("Dota 2 - a.mp4 Dota 2 - b.mp4"));
    ASSERT_TRUE(QFile::resize(file, 10));
    makeFile("Dota 2 - b.mp4", 200);
    makeFile("Dota 2 - c.mp4", 300);
    reloadedNames();
    for (const auto& clip : library.clips()) {
        EXPECT_EQ(clip, Clip(clip.path)) << clip.path.toStdString();
    }
    makeFile("Dota 2 - a.mp4", 500);
    EXPECT_EQ(reloadedNames(), QStringLiteral("Dota 2 - b.mp4 Dota 2 - c.mp4 Dota 2 - a.mp4"));
    EXPECT_EQ(library.clips().last(), Clip(file));
}

TEST_F(ClipLibraryTest, UnchangedFolderEmitsNoSignal)
{
    makeFile("a.mp4");
    reloadedNames();
    const int before = changes;
    reloadedNames();
    EXPECT_EQ(changes, before);
    makeFile("b.mp4");
    reloadedNames();
    EXPECT_EQ(changes, before + 1);
}

TEST_F(ClipLibraryTest, ScansOnTheWorkQueue)
{
    libraryTime.settle();
    makeFile("a.mp4");
    library.reload();
    EXPECT_TRUE(library.clips().isEmpty());
    libraryTime.settle();
    EXPECT_EQ(library.clips().size(), 1);
}

TEST_F(ClipLibraryTest, ReloadAnswersWithAScanThatStartedAfterIt)
{
    libraryTime.settle();
    QStringList log;
    library.reload([&] { log.append(QStringLiteral("first ") + QString::number(library.clips().size())); });
    // The scan for the first request is posted; whether it sees the file is undefined.
    makeFile("a.mp4");
    library.reload([&] { log.append(QStringLiteral("second ") + QString::number(library.clips().size())); });
    library.reload([&] { log.append(QStringLiteral("third ") + QString::number(library.clips().size())); });
    EXPECT_TRUE(log.isEmpty());
    libraryTime.settle();
    EXPECT_EQ(log.join(u','), QStringLiteral("first 1,second 1,third 1"));
}

TEST_F(ClipLibraryTest, RequestsDuringAScanShareTheNextOne)
{
    // Each scan posts one task to each queue.
    library.reload();
    for (int i = 0; i < 100; ++i) {
        library.reload();
    }
    EXPECT_EQ(libraryWork.posted(), 1);
    libraryTime.settle();
    EXPECT_EQ(libraryWork.posted(), 2);
}

TEST_F(ClipLibraryTest, ReloadFromACallbackIsAnswered)
{
    int answers = 0;
    library.reload([&] { library.reload([&] { ++answers; }); });
    libraryTime.settle();
    EXPECT_EQ(answers, 1);
}

TEST_F(ClipLibraryTest, DestructionDuringAScanDropsCallbacks)
{
    auto other = std::make_unique<ClipLibrary>(dependencies());
    bool isDone = false;
    other->reload([&] { isDone = true; });
    other->scheduleReload();
    other.reset();
    libraryTime.advance(1s);
    EXPECT_FALSE(isDone);
}

TEST_F(ClipLibraryTest, ScanMayOutliveTheLibraryAndTheMainQueue)
{
    libraryTime.settle();
    test::ManualTime workTime;
    test::ManualQueue work(workTime);
    auto otherMain = std::make_unique<test::ManualQueue>(libraryTime);
    const auto shared = dependencies();
    auto other = std::make_unique<ClipLibrary>(ClipLibrary::Dependencies{
        .settings = shared.settings, .trash = shared.trash, .main = *otherMain, .work = work});
    other.reset();
    // The late result is dropped.
    ASSERT_TRUE(QDir(settings.saveFolder()).removeRecursively());
    workTime.settle();
    EXPECT_TRUE(QDir(settings.saveFolder()).exists()) << "the scan ran";
    EXPECT_EQ(otherMain->posted(), 0);
}

TEST_F(ClipLibraryTest, CallbackMayDestroyTheLibrary)
{
    auto other = std::make_unique<ClipLibrary>(dependencies());
    other->reload([&] { other.reset(); });
    other->reload();
    libraryTime.settle();
    EXPECT_EQ(other, nullptr);
}

TEST_F(ClipLibraryTest, ScheduledReloadRunsOnceAfterTheLastRequest)
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

TEST_F(ClipLibraryTest, ListsVideoExtensionsInAnyCase)
{
    makeFile("a.MP4", 60);
    makeFile("b.mov", 120);
    makeFile("c.m4v", 180);
    makeFile("d.webm", 240);
    makeFile("mp4", 300);
    makeFile("e.mp4.part", 360);
    makeFile("f.", 420);
    EXPECT_EQ(reloadedNames(), QStringLiteral("a.MP4 b.mov c.m4v"));
}

TEST_F(ClipLibraryTest, SkipsHiddenFilesAndSubfolders)
{
    makeFile("clip.mp4");
    makeFile(".clip.mp4.json");
    makeFile(".hidden.mp4");
    ASSERT_TRUE(QDir(settings.saveFolder()).mkpath(QStringLiteral("folder.mp4")));
    makeFile("folder.mp4/inside.mp4");
    EXPECT_EQ(reloadedNames(), QStringLiteral("clip.mp4"));
}

TEST_F(ClipLibraryTest, ListsLinksToVideosButNotDanglingLinks)
{
    const auto target = makeFile("target.mp4", 5);
    ASSERT_TRUE(QFile::link(target, path("link.mp4")));
    ASSERT_TRUE(QFile::link(path("gone.mp4"), path("dangling.mp4")));
    ASSERT_TRUE(QFile::link(settings.saveFolder(), path("folder.mp4")));
    reloadedNames();
    ASSERT_EQ(library.clips().size(), 2);
    EXPECT_EQ(library.clips()[0].size, library.clips()[1].size);
    EXPECT_EQ(library.clips()[0].date, library.clips()[1].date);
}

TEST_F(ClipLibraryTest, ListsUnusualFileNames)
{
    const QByteArray emoji("\U0001F3C6 Şampiyon - ß.mp4");
    const QByteArray longest = QByteArray(251, 'x') + ".mp4";
    makeFile("Dota 2 - two\nlines.mp4", 60);
    makeFile(emoji.constData(), 120);
    makeFile(longest.constData(), 180);
    makeFile("100% #1 ?.mp4", 240);
    makeFile(" - .mp4", 300);
    reloadedNames();
    ASSERT_EQ(library.clips().size(), 5);
    EXPECT_EQ(library.clips()[0].title, QStringLiteral("two\nlines"));
    EXPECT_EQ(library.clips()[1].game, QString::fromUtf8("\U0001F3C6 Şampiyon"));
    EXPECT_EQ(library.clips()[2].title.size(), 251);
    EXPECT_EQ(library.clips()[3].title, QStringLiteral("100% #1 ?"));
    EXPECT_EQ(library.clips()[4].game, QString());
    EXPECT_EQ(library.clips()[4].title, QString());
}

/// Qt can neither create nor remove files whose names are not valid UTF-8.
class FileOutsideUtf8 {
public:
    explicit FileOutsideUtf8(const QByteArray& path)
        : m_path(path)
    {
        auto* const file = std::fopen(m_path.constData(), "w");
        EXPECT_NE(file, nullptr);
        std::fputs("12345", file);
        std::fclose(file);
    }
    ~FileOutsideUtf8() { std::remove(m_path.constData()); }
    FileOutsideUtf8(const FileOutsideUtf8&) = delete;
    FileOutsideUtf8& operator=(const FileOutsideUtf8&) = delete;

    bool exists() const { return ::access(m_path.constData(), F_OK) == 0; }

private:
    QByteArray m_path;
};

TEST_F(ClipLibraryTest, ListsNamesThatAreNotValidUtf8)
{
    reloadedNames();
    const auto saveFolder = QFile::encodeName(settings.saveFolder());
    const FileOutsideUtf8 first(saveFolder + "/Kale - B\xfcy\xfck.mp4");
    const FileOutsideUtf8 second(saveFolder + "/Kale - B\xf6y\xf6k.mp4");
    reloadedNames();
    ASSERT_EQ(library.clips().size(), 2);
    for (const auto& clip : library.clips()) {
        EXPECT_EQ(clip.size, 5);
        EXPECT_EQ(clip.game, QStringLiteral("Kale"));
        EXPECT_EQ(clip.title, QStringLiteral("B\uFFFDy\uFFFDk"));
    }
    EXPECT_NE(library.clips()[0].path, library.clips()[1].path);
}

TEST_F(ClipLibraryTest, RenamesAClipWhoseNameIsNotValidUtf8)
{
    reloadedNames();
    const auto saveFolder = QFile::encodeName(settings.saveFolder());
    const FileOutsideUtf8 clip(saveFolder + "/B\xfcy\xfck - x.mp4");
    const FileOutsideUtf8 sidecar(saveFolder + "/.B\xfcy\xfck - x.mp4.json");
    reloadedNames();
    const auto renamed = library.rename(library.clips().first(), QStringLiteral("Ace"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->path, path("B\uFFFDy\uFFFDk - Ace.mp4"));
    EXPECT_TRUE(QFile::exists(renamed->path));
    EXPECT_TRUE(QFile::exists(path(".B\uFFFDy\uFFFDk - Ace.mp4.json")));
    EXPECT_FALSE(clip.exists());
    EXPECT_FALSE(sidecar.exists());
}

TEST_F(ClipLibraryTest, TrashGetsTheExactNameThatIsNotValidUtf8)
{
    reloadedNames();
    const auto clipPath = QFile::encodeName(settings.saveFolder()) + "/B\xfcy\xfck.mp4";
    const FileOutsideUtf8 clip(clipPath);
    const FileOutsideUtf8 sidecar(QFile::encodeName(settings.saveFolder()) + "/.B\xfcy\xfck.mp4.json");
    reloadedNames();
    library.trash(library.clips().first());
    EXPECT_FALSE(sidecar.exists());
    ASSERT_EQ(trash.recycled.size(), 1);
    EXPECT_EQ(encodeFileName(trash.recycled.first()), clipPath);
}

TEST_F(ClipLibraryTest, ChangedSaveFolderIsScanned)
{
    makeFile("first.mp4");
    reloadedNames();
    settings.setSaveFolder(folder.filePath(QStringLiteral("elsewhere/deep")));
    libraryTime.settle();
    EXPECT_TRUE(library.clips().isEmpty());
    EXPECT_TRUE(QDir(folder.filePath(QStringLiteral("elsewhere/deep"))).exists());
}

TEST_F(ClipLibraryTest, SettingTheSameFolderDoesNotScanAgain)
{
    libraryTime.settle();
    const int before = libraryWork.posted();
    settings.setSaveFolder(settings.saveFolder());
    settings.setSaveFolder(settings.saveFolder() + u'/');
    EXPECT_EQ(libraryWork.posted(), before);
}

TEST_F(ClipLibraryTest, ScanOfThePreviousFolderIsDiscarded)
{
    makeFile("first.mp4");
    reloadedNames();
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

TEST_F(ClipLibraryTest, FolderThatCannotBeCreatedIsEmpty)
{
    makeFile("file.mp4");
    reloadedNames();
    settings.setSaveFolder(path("file.mp4") + QStringLiteral("/below"));
    EXPECT_EQ(reloadedNames(), QString());
    settings.setSaveFolder(QFileInfo(path("..")).absolutePath() + QStringLiteral("/file.mp4"));
    EXPECT_EQ(reloadedNames(), QString()) << "a file is not a folder";
}

TEST_F(ClipLibraryTest, WordForOtherFollowsTheLanguage)
{
    settings.setLanguage(QStringLiteral("tr"));
    makeFile("holiday.mp4");
    reloadedNames();
    EXPECT_EQ(library.clips().first().game, QStringLiteral("Diğer"));
    settings.setLanguage(QStringLiteral("en"));
    libraryTime.settle();
    EXPECT_EQ(library.clips().first().game, QStringLiteral("Other"));
    settings.setLanguage(QStringLiteral("tr"));
}

TEST_F(ClipLibraryTest, GamesAreSortedByCountThenName)
{
    for (const char* name : {"B - 1.mp4", "C - 1.mp4", "A - 1.mp4", "C - 2.mp4", "a - 1.mp4", "Ä - 1.mp4"}) {
        makeFile(name);
    }
    EXPECT_TRUE(library.games().isEmpty());
    reloadedNames();
    QStringList counts;
    for (const auto& game : library.games()) {
        counts.append(game.name + QString::number(game.count));
    }
    EXPECT_EQ(counts.join(u' '), QStringLiteral("C2 A1 B1 a1 Ä1"));
}

TEST_F(ClipLibraryTest, MarksTheNameOfClipsWithoutAGame)
{
    settings.setLanguage(QStringLiteral("tr"));
    makeFile("Diğer - named.mp4");
    makeFile("Dota 2 - a.mp4");
    makeFile("Dota 2 - b.mp4");
    reloadedNames();
    EXPECT_EQ(library.games(),
              (QList<GameCount>{{.name = QStringLiteral("Dota 2"), .count = 2},
                                {.name = QStringLiteral("Diğer"), .count = 1}}));
    makeFile("holiday.mp4");
    reloadedNames();
    EXPECT_EQ(library.games().first(), (GameCount{.name = QStringLiteral("Diğer"), .count = 2, .isOther = true}));
}

TEST_F(ClipLibraryTest, RenameMovesFileAndSidecarAndUpdatesTheListAtOnce)
{
    makeFile("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.MP4");
    makeFile("Dota 2 - b.mp4", 10);
    ClipMeta().save(path("Dota 2 - 2026-03-01 20.15.07 [EFSANE 95] RAMPAGE.MP4"));
    reloadedNames();
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

TEST_F(ClipLibraryTest, RenameOfTheListedClipItselfTellsItsOldName)
{
    const auto clip = makeFile("Dota 2 - a.mp4");
    reloadedNames();
    QStringList names;
    QObject::connect(&library, &ClipLibrary::clipRenamed, [&](const QString& from, const QString& to) {
        names = {from, to};
    });
    ASSERT_TRUE(library.rename(library.clips().first(), QStringLiteral("best")));
    EXPECT_EQ(names, QStringList({clip, path("Dota 2 - best.mp4")}));
}

TEST_F(ClipLibraryTest, ScanOlderThanARenameIsDiscarded)
{
    makeFile("Game - a.mp4");
    reloadedNames();
    QStringList seen;
    QObject::connect(&library, &ClipLibrary::clipsChanged, [&] { seen.append(listed().join(u' ')); });
    library.reload();
    libraryTime.runNext();
    // The scan is complete, with the old name, but not published.
    library.rename(library.clips().first(), QStringLiteral("b"));
    libraryTime.settle();
    EXPECT_EQ(seen, QStringList(QStringLiteral("Game - b.mp4")));
}

TEST_F(ClipLibraryTest, RenameReplacesSlashesAndColons)
{
    const auto renamed = library.rename(Clip(makeFile("Game - x.mp4")), QStringLiteral("a/b:c"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->title, QStringLiteral("a-b-c"));
    EXPECT_TRUE(QFile::exists(path("Game - a-b-c.mp4")));
}

TEST_F(ClipLibraryTest, RenameOfAClipWithoutGameAddsTheWordForOther)
{
    const auto renamed = library.rename(Clip(makeFile("holiday.mp4")), QStringLiteral("sun %1"));
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->path, path("Diğer - sun %1.mp4"));
}

TEST_F(ClipLibraryTest, RejectedTitleLeavesTheFileAlone)
{
    const auto file = makeFile("Game - x.mp4");
    makeFile("Game - taken.mp4");
    reloadedNames();
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

TEST_F(ClipLibraryTest, RenameFailsIfTheSidecarNameWouldBeTooLong)
{
    const auto file = makeFile("Game - x.mp4");
    const QString title(250 - QStringLiteral("Game - .mp4").size(), u'a');
    ClipMeta().save(file);
    EXPECT_EQ(library.rename(Clip(file), title), std::nullopt);
    EXPECT_TRUE(QFile::exists(file));
    ClipMeta::remove(file);
    EXPECT_TRUE(library.rename(Clip(file), title));
}

TEST_F(ClipLibraryTest, RenameOfADeletedClipFails)
{
    EXPECT_EQ(library.rename(clipOf("Game - x.mp4"), QStringLiteral("y")), std::nullopt);
    EXPECT_FALSE(QFile::exists(path("Game - y.mp4")));
}

TEST_F(ClipLibraryTest, TrashRecyclesInOneCallAndReloadsBeforeTheCallback)
{
    const QStringList both{makeFile("a.mp4"), makeFile("b.mp4")};
    makeFile("c.mp4");
    ClipMeta().save(both.first());
    reloadedNames();
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
    EXPECT_FALSE(isDone) << "the reply is queued to the main thread";
    QCoreApplication::sendPostedEvents();
    libraryTime.settle();
    EXPECT_TRUE(isDone);
}

TEST_F(ClipLibraryTest, TrashOfOneClipDeletesItsSidecar)
{
    const auto file = makeFile("a.mp4");
    ClipMeta().save(file);
    reloadedNames();
    library.trash(library.clips().first());
    EXPECT_EQ(trash.recycled, QStringList(file));
    EXPECT_FALSE(QFile::exists(ClipMeta::pathFor(file)));
    trash.answer();
    QCoreApplication::sendPostedEvents();
    libraryTime.settle();
    EXPECT_TRUE(library.clips().isEmpty());
}

TEST_F(ClipLibraryTest, TrashOfNoPathsAnswersAtOnce)
{
    bool isDone = false;
    library.trash(QStringList(), [&] { isDone = true; });
    EXPECT_TRUE(isDone);
    EXPECT_EQ(trash.calls, 0);
    library.trash(QStringList());
}

} // namespace
} // namespace quelto
