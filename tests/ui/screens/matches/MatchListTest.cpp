// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/matches/MatchList.h"
#include "base/language/L10n.h"

#include "tests/library/clips/LibraryFixture.h"

#include <QSignalSpy>
#include <QTimeZone>

namespace quelto {
namespace {

using namespace std::chrono_literals;

const auto League = QStringLiteral("League of Legends");
const auto Dota = QStringLiteral("Dota 2");

class MatchListTest : public test::LibraryFixture {
protected:
    ~MatchListTest() override { L10n::use(QStringLiteral("tr")); }

    /// Runs the tasks of all queues until there are none.
    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            libraryTime.settle();
            time.settle();
        }
    }

    void start(const QString& game, const QString& hero, const QStringList& paths = {})
    {
        tracker.gameStarted(game, hero);
        for (const auto& path : paths) {
            tracker.clipSaved(path);
        }
        settle();
    }
    void end(const QString& game)
    {
        tracker.gameEnded(game);
        time.advance(10s);
        settle();
    }
    /// Its id.
    QString play(const QString& game, const QString& hero, const QStringList& paths)
    {
        start(game, hero, paths);
        end(game);
        return matchIdText(tracker.sessions().first().id);
    }

    void createList()
    {
        list = std::make_unique<MatchList>(MatchList::Dependencies{.tracker = tracker, .clips = clips});
        settle();
    }
    QVariant at(int row, MatchList::Role role) const { return list->data(list->index(row), role); }
    QString textAt(int row, MatchList::Role role) const { return at(row, role).toString(); }
    QStringList titles() const
    {
        QStringList texts;
        for (int row = 0; row < list->rowCount(); ++row) {
            texts.append(textAt(row, MatchList::TitleRole));
        }
        return texts;
    }
    /// The part of the subtitle after the date.
    QString countsAt(int row) const { return textAt(row, MatchList::SubtitleRole).section(QStringLiteral(" • "), 1); }

    test::ManualTime time;
    test::ManualQueue main{time};
    QDateTime clock{{2026, 3, 1}, {17, 15}, QTimeZone::utc()};
    MatchTracker tracker{MatchTracker::Dependencies{.library = library,
                                                    .main = main,
                                                    .work = main,
                                                    .store = MatchStore(folder.filePath(QStringLiteral("m.json"))),
                                                    .now = [this] { return clock; }}};
    MatchClips clips{{.tracker = tracker, .library = library, .main = main, .work = main}};
    std::unique_ptr<MatchList> list;
};

TEST_F(MatchListTest, IsNotEmptyBeforeTheMatchesAreLoaded)
{
    MatchList early({.tracker = tracker, .clips = clips});
    EXPECT_FALSE(early.isLoaded());
    EXPECT_FALSE(early.isEmpty());
    settle();
    EXPECT_TRUE(early.isLoaded());
    EXPECT_TRUE(early.isEmpty());
}

TEST_F(MatchListTest, DescribesAFinishedMatch)
{
    const test::TimeZone istanbul("Europe/Istanbul");
    const auto id = play(League, QStringLiteral("Ahri"),
                         {makeFile("L - [EFSANE 170] PENTAKILL (Ahri).mp4"), makeFile("L - [BASIT 15] Solo Kill.mp4"),
                          makeFile("L - [EFSANE 120] ACE (Ahri).mp4"), path("L - gone.mp4")});
    createList();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Ahri")));
    EXPECT_EQ(textAt(0, MatchList::SubtitleRole), QStringLiteral("1 Mart Paz 20:15 • 3 klip • 2 Efsane"));
    EXPECT_EQ(textAt(0, MatchList::IconRole), QStringLiteral("flag.checkered"));
    EXPECT_EQ(textAt(0, MatchList::MatchIdRole), id);
    EXPECT_FALSE(at(0, MatchList::IsLiveRole).toBool());
}

TEST_F(MatchListTest, WithoutAHeroAndEpicClipsTheTextsAreShort)
{
    play(Dota, QString(), {path("D - gone.mp4")});
    createList();
    EXPECT_EQ(titles(), QStringList(Dota));
    EXPECT_EQ(countsAt(0), QStringLiteral("0 klip"));
}

TEST_F(MatchListTest, RunningMatchComesFirstAndCannotBeOpened)
{
    play(League, QStringLiteral("Ahri"), {makeFile("L - a.mp4")});
    start(Dota, QStringLiteral("Axe"), {makeFile("D - a.mp4"), makeFile("D - [EFSANE 170] RAMPAGE (Axe).mp4")});
    createList();
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Dota 2 • Axe"), QStringLiteral("League of Legends • Ahri")}));
    EXPECT_EQ(textAt(0, MatchList::SubtitleRole), QStringLiteral("Maç sürüyor • 2 klip"));
    EXPECT_EQ(textAt(0, MatchList::IconRole), QStringLiteral("record.circle"));
    EXPECT_TRUE(at(0, MatchList::IsLiveRole).toBool());
    EXPECT_EQ(textAt(0, MatchList::MatchIdRole), QString());
}

TEST_F(MatchListTest, RunningMatchWithoutClipsDisappearsWhenItEnds)
{
    createList();
    start(Dota, QStringLiteral("Axe"));
    EXPECT_EQ(list->rowCount(), 1);
    EXPECT_FALSE(list->isEmpty());
    end(Dota);
    EXPECT_EQ(list->rowCount(), 0);
    EXPECT_TRUE(list->isEmpty());
}

TEST_F(MatchListTest, RunningMatchWithClipsBecomesTheNewestRecap)
{
    play(League, QString(), {makeFile("L - a.mp4")});
    createList();
    start(Dota, QString(), {makeFile("D - a.mp4")});
    end(Dota);
    EXPECT_EQ(titles(), QStringList({Dota, League}));
    EXPECT_FALSE(at(0, MatchList::IsLiveRole).toBool());
    EXPECT_EQ(countsAt(0), QStringLiteral("1 klip"));
}

TEST_F(MatchListTest, FollowsTheHeroAndTheClipsOfTheRunningMatch)
{
    createList();
    start(Dota, QString());
    tracker.heroChanged(QStringLiteral("Axe"));
    tracker.clipSaved(makeFile("D - a.mp4"));
    settle();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("Dota 2 • Axe")));
    EXPECT_EQ(textAt(0, MatchList::SubtitleRole), QStringLiteral("Maç sürüyor • 1 klip"));
}

TEST_F(MatchListTest, RenamedClipStaysInItsCount)
{
    const auto clip = makeFile("L - [EFSANE 170] PENTAKILL (Ahri).mp4");
    play(League, QString(), {clip});
    createList();
    library.reload();
    settle();
    QStringList counts;
    QObject::connect(list.get(), &MatchList::changed, [&] { counts.append(countsAt(0)); });
    ASSERT_TRUE(library.rename(library.clips().first(), QStringLiteral("best")));
    settle();
    EXPECT_EQ(countsAt(0), QStringLiteral("1 klip"));
    EXPECT_FALSE(counts.contains(QStringLiteral("0 klip")));
}

TEST_F(MatchListTest, TrashedAndRestoredClipsChangeTheCount)
{
    const auto clip = makeFile("L - a.mp4");
    play(League, QString(), {clip, makeFile("L - b.mp4")});
    createList();
    library.reload();
    settle();
    ASSERT_TRUE(QFile::remove(clip));
    library.reload();
    settle();
    EXPECT_EQ(countsAt(0), QStringLiteral("1 klip"));
    makeFile("L - a.mp4");
    library.reload();
    settle();
    EXPECT_EQ(countsAt(0), QStringLiteral("2 klip"));
}

TEST_F(MatchListTest, FindsChangesOutsideTheSaveFolderWhenItIsCreated)
{
    QFile elsewhere(folder.filePath(QStringLiteral("L - a.mp4")));
    ASSERT_TRUE(elsewhere.open(QIODevice::WriteOnly));
    play(League, QString(), {elsewhere.fileName()});
    ASSERT_TRUE(elsewhere.remove());
    createList();
    EXPECT_EQ(countsAt(0), QStringLiteral("0 klip"));
}

TEST_F(MatchListTest, NewMatchesKeepTheRowsOfTheOthers)
{
    play(League, QStringLiteral("Ahri"), {makeFile("L - a.mp4")});
    play(Dota, QStringLiteral("Axe"), {makeFile("D - a.mp4")});
    createList();
    const QPersistentModelIndex first = list->index(0);
    const QPersistentModelIndex second = list->index(1);
    const QSignalSpy resets(list.get(), &QAbstractItemModel::modelReset);
    start(League, QStringLiteral("Lux"));
    EXPECT_EQ(first.row(), 1);
    end(League);
    EXPECT_EQ(first.row(), 0);
    tracker.deleteSession(tracker.sessions().first().id, MatchTracker::WithClips::no);
    settle();
    EXPECT_FALSE(first.isValid());
    EXPECT_EQ(second.row(), 0);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(MatchListTest, UpdatesOnlyTheRowThatChanged)
{
    play(League, QStringLiteral("Ahri"), {makeFile("L - a.mp4")});
    play(Dota, QStringLiteral("Axe"), {makeFile("D - a.mp4")});
    createList();
    QList<int> changed;
    QObject::connect(list.get(), &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& index) { changed.append(index.row()); });
    ASSERT_TRUE(QFile::remove(path("L - a.mp4")));
    clips.refresh();
    settle();
    EXPECT_EQ(changed, QList<int>{1});
}

TEST_F(MatchListTest, DeletesARecapAndKeepsItsClips)
{
    const auto clip = makeFile("L - a.mp4");
    const auto id = play(League, QString(), {clip});
    createList();
    list->deleteRecap(id);
    settle();
    EXPECT_TRUE(list->isEmpty());
    EXPECT_TRUE(trash.recycled.isEmpty());
}

TEST_F(MatchListTest, DeletesARecapWithItsClips)
{
    const auto clip = makeFile("L - a.mp4");
    const auto kept = play(Dota, QString(), {makeFile("D - a.mp4")});
    const auto id = play(League, QString(), {clip, path("L - gone.mp4")});
    createList();
    list->deleteWithClips(id);
    settle();
    EXPECT_EQ(trash.recycled, QStringList(clip));
    EXPECT_EQ(list->rowCount(), 1);
    EXPECT_EQ(textAt(0, MatchList::MatchIdRole), kept);
}

} // namespace
} // namespace quelto
