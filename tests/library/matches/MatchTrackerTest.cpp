// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/matches/MatchTracker.h"
#include "tests/base/tasks/ManualQueue.h"
#include "tests/library/clips/LibraryFixture.h"

namespace quelto {
namespace {

using namespace std::chrono_literals;

const auto League = QStringLiteral("League of Legends");
const auto Dota = QStringLiteral("Dota 2");

class MatchTrackerTest : public test::LibraryFixture {
protected:
    /// A tracker that has not read the store.
    std::unique_ptr<MatchTracker> makeUnloadedTracker()
    {
        auto newTracker = std::make_unique<MatchTracker>(MatchTracker::Dependencies{
            .library = library, .main = queue, .work = workQueue, .store = MatchStore(storePath), .now = [this] {
                return date();
            }});
        QObject::connect(newTracker.get(), &MatchTracker::matchOver,
                         [this](const MatchNotification& notification) { notifications.append(notification); });
        return newTracker;
    }

    std::unique_ptr<MatchTracker> makeTracker()
    {
        auto newTracker = makeUnloadedTracker();
        settle();
        return newTracker;
    }

    /// Runs the tasks of the work queue, then those of the main queue.
    void settle()
    {
        work.settle();
        time.settle();
    }

    QDateTime date() const { return QDateTime::fromMSecsSinceEpoch(1'790'000'000'000 + (time.now() - start) / 1ms); }

    /// Plays a match with that many clips to its end.
    MatchSession playMatch(int clips)
    {
        tracker->gameStarted(Dota, QStringLiteral("Zeus"));
        for (int i = 0; i < clips; ++i) {
            tracker->clipSaved(makeFile(QByteArray::number(++clipCount) + " - x.mp4"));
        }
        tracker->gameEnded(Dota);
        time.advance(10s);
        work.settle();
        return clips == 0 ? MatchSession() : tracker->sessions().first();
    }

    test::ManualTime time;
    HostTime start = time.now();
    test::ManualQueue queue{time};
    test::ManualTime work;
    test::ManualQueue workQueue{work};
    QString storePath = folder.filePath(QStringLiteral("matches.json"));
    QList<MatchNotification> notifications;
    std::unique_ptr<MatchTracker> tracker = makeTracker();
    int clipCount = 0;
};

TEST_F(MatchTrackerTest, MatchEndsTenSecondsAfterTheLastEndEvent)
{
    tracker->gameStarted(League, QStringLiteral("Ahri"));
    tracker->clipSaved(makeFile("a.mp4"));
    tracker->gameEnded(League);
    time.advance(5s);
    tracker->gameEnded(League);
    time.advance(9999ms);
    EXPECT_TRUE(tracker->inMatch());
    time.advance(1ms);
    EXPECT_FALSE(tracker->inMatch());
    ASSERT_EQ(tracker->sessions().size(), 1);
    EXPECT_EQ(tracker->sessions().first().start.msecsTo(*tracker->sessions().first().end), 15'000);
    time.advance(60s);
    EXPECT_EQ(notifications.size(), 1);
}

TEST_F(MatchTrackerTest, GameThatRestartsWithinTheDelayContinuesTheMatch)
{
    tracker->gameStarted(League, QStringLiteral("Ahri"));
    tracker->clipSaved(makeFile("a.mp4"));
    const auto before = *tracker->current();
    time.advance(60s);
    tracker->gameEnded(League);
    time.advance(9s);
    tracker->gameStarted(League, QStringLiteral("Annie"));
    time.advance(60s);
    EXPECT_EQ(tracker->current(), before);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(MatchTrackerTest, EndOfAnotherGameIsIgnored)
{
    tracker->gameStarted(League, {});
    tracker->gameEnded(Dota);
    time.advance(60s);
    EXPECT_TRUE(tracker->inMatch());
}

TEST_F(MatchTrackerTest, AnotherGameEndsTheMatchAtOnce)
{
    tracker->gameStarted(League, {});
    tracker->clipSaved(makeFile("a.mp4"));
    tracker->gameEnded(League);
    tracker->gameStarted(Dota, QStringLiteral("Zeus"));
    ASSERT_EQ(tracker->sessions().size(), 1);
    EXPECT_EQ(tracker->sessions().first().game, League);
    EXPECT_EQ(tracker->current()->game, Dota);
    time.advance(60s);
    EXPECT_TRUE(tracker->inMatch()) << "the pending end belongs to the other game";
    EXPECT_EQ(notifications.size(), 1);
}

TEST_F(MatchTrackerTest, MatchWithoutClipsIsNotStored)
{
    playMatch(0);
    EXPECT_FALSE(tracker->inMatch());
    EXPECT_TRUE(tracker->sessions().isEmpty());
    EXPECT_TRUE(notifications.isEmpty());
    EXPECT_FALSE(QFile::exists(storePath));
}

TEST_F(MatchTrackerTest, NewestMatchComesFirstAndIsStored)
{
    const auto first = playMatch(1);
    const auto second = playMatch(2);
    EXPECT_EQ(tracker->sessions(), (QList{second, first}));
    EXPECT_EQ(makeTracker()->sessions(), (QList{second, first}));
    EXPECT_NE(first.id, second.id);
}

TEST_F(MatchTrackerTest, LimitOfSixtyAppliesToTheFileOnly)
{
    const auto oldest = playMatch(1);
    for (int i = 0; i < 60; ++i) {
        playMatch(1);
    }
    EXPECT_EQ(tracker->sessions().size(), 61);
    EXPECT_TRUE(tracker->session(oldest.id));
    const auto restarted = makeTracker();
    EXPECT_EQ(restarted->sessions().size(), 60);
    EXPECT_FALSE(restarted->session(oldest.id));
    EXPECT_TRUE(QFile::exists(oldest.clips.first()));
}

TEST_F(MatchTrackerTest, SameClipIsListedOnce)
{
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(QStringLiteral("/a.mp4"));
    tracker->clipSaved(QStringLiteral("/a.mp4"));
    tracker->clipSaved(QStringLiteral("/b.mp4"));
    EXPECT_EQ(tracker->current()->clips.join(u' '), QStringLiteral("/a.mp4 /b.mp4"));
}

TEST_F(MatchTrackerTest, EventsWithoutAMatchAreIgnored)
{
    tracker->clipSaved(QStringLiteral("/a.mp4"));
    tracker->heroChanged(QStringLiteral("Zeus"));
    tracker->gameEnded(Dota);
    EXPECT_FALSE(tracker->inMatch());
}

TEST_F(MatchTrackerTest, HeroCanBeSetLaterButNotCleared)
{
    tracker->gameStarted(Dota, {});
    tracker->heroChanged(QStringLiteral("Zeus"));
    EXPECT_EQ(tracker->current()->hero, QStringLiteral("Zeus"));
    tracker->heroChanged({});
    EXPECT_EQ(tracker->current()->hero, QStringLiteral("Zeus"));
    tracker->heroChanged(QStringLiteral("Io"));
    EXPECT_EQ(tracker->current()->hero, QStringLiteral("Io"));
}

TEST_F(MatchTrackerTest, RepeatedStartSetsOnlyAnEmptyHero)
{
    tracker->gameStarted(Dota, {});
    tracker->gameStarted(Dota, QStringLiteral("Zeus"));
    EXPECT_EQ(tracker->current()->hero, QStringLiteral("Zeus"));
    tracker->gameStarted(Dota, QStringLiteral("Io"));
    EXPECT_EQ(tracker->current()->hero, QStringLiteral("Zeus"));
}

TEST_F(MatchTrackerTest, DeletingTheOnlyClipKeepsTheMatch)
{
    const auto match = playMatch(1);
    tracker->deleteClips(match.clips, match.id);
    EXPECT_EQ(trash.recycled, match.clips);
    ASSERT_EQ(tracker->sessions().size(), 1);
    EXPECT_TRUE(tracker->sessions().first().clips.isEmpty());
    EXPECT_TRUE(makeTracker()->sessions().first().clips.isEmpty());
}

TEST_F(MatchTrackerTest, TrashedClipComesBackToItsMatch)
{
    const auto match = playMatch(3);
    const auto trashed = match.clips.first(2);
    tracker->deleteClips(trashed, match.id);
    tracker->takeBack(trashed);
    EXPECT_EQ(tracker->sessions().first().clips, match.clips.last(1)) << "the files are still being moved";
    trash.answer();
    QCoreApplication::processEvents();
    libraryTime.settle();
    tracker->takeBack(trashed.first(1));
    EXPECT_EQ(tracker->sessions().first().clips, QStringList({match.clips.at(2), match.clips.at(0)}));
    tracker->takeBack(trashed.first(1));
    EXPECT_EQ(tracker->sessions().first().clips.size(), 2);
    work.settle();
    const auto restarted = makeTracker();
    EXPECT_EQ(restarted->sessions(), tracker->sessions());
    restarted->takeBack(trashed);
    EXPECT_EQ(restarted->sessions().first().clips.size(), 3);
}

TEST_F(MatchTrackerTest, RenamedClipStaysInItsMatch)
{
    const auto match = playMatch(2);
    tracker->gameStarted(League, QString());
    tracker->clipSaved(makeFile("League - y.mp4"));
    const auto stored = library.rename(Clip(match.clips.at(0)), QStringLiteral("best"));
    const auto running = library.rename(Clip(path("League - y.mp4")), QStringLiteral("better"));
    ASSERT_TRUE(stored && running);
    EXPECT_EQ(tracker->sessions().first().clips, QStringList({stored->path, match.clips.at(1)}));
    EXPECT_EQ(tracker->current()->clips, QStringList(running->path));
    work.settle();
    EXPECT_EQ(makeTracker()->sessions(), tracker->sessions());
}

TEST_F(MatchTrackerTest, ClipThatTakesTheNameOfADeletedOneIsListedOnce)
{
    const auto match = playMatch(3);
    const auto other = playMatch(1);
    const auto trashed = match.clips.at(0);
    tracker->deleteClips({trashed}, match.id);
    trash.answer();
    QCoreApplication::processEvents();
    QFile::remove(match.clips.at(1));
    ASSERT_TRUE(QFile::rename(match.clips.at(2), trashed));
    Q_EMIT library.clipRenamed(match.clips.at(2), trashed);
    tracker->takeBack({trashed});
    EXPECT_EQ(tracker->session(match.id)->clips, QStringList({match.clips.at(1), trashed}));
    ASSERT_TRUE(QFile::rename(trashed, match.clips.at(1)));
    Q_EMIT library.clipRenamed(trashed, match.clips.at(1));
    EXPECT_EQ(tracker->session(match.id)->clips, QStringList(match.clips.at(1)));
    EXPECT_EQ(tracker->session(other.id), other);
}

TEST_F(MatchTrackerTest, RenameBeforeLoadingTakesEffectAfterIt)
{
    const auto match = playMatch(1);
    tracker = makeUnloadedTracker();
    const auto renamed = library.rename(Clip(match.clips.first()), QStringLiteral("best"));
    ASSERT_TRUE(renamed);
    settle();
    EXPECT_EQ(tracker->sessions().first().clips, QStringList(renamed->path));
}

TEST_F(MatchTrackerTest, ClipsOfAnUnknownMatchAreTrashed)
{
    const auto match = playMatch(1);
    tracker->deleteClips(match.clips, QUuid::createUuid());
    EXPECT_EQ(trash.recycled, match.clips);
    EXPECT_EQ(tracker->sessions(), QList{match});
}

TEST_F(MatchTrackerTest, DeletingAMatchWithClipsTrashesExistingFiles)
{
    const auto match = playMatch(2);
    QFile::remove(match.clips.first());
    QList<QUuid> removed;
    QObject::connect(tracker.get(), &MatchTracker::sessionAboutToBeRemoved, [&](const QUuid& id) {
        removed.append(id);
        EXPECT_TRUE(tracker->session(id)) << "emitted before the removal";
    });
    tracker->deleteSession(match.id, MatchTracker::WithClips::yes);
    EXPECT_EQ(trash.recycled, QStringList(match.clips.last()));
    EXPECT_EQ(removed, QList{match.id});
    EXPECT_TRUE(tracker->sessions().isEmpty());
    EXPECT_TRUE(makeTracker()->sessions().isEmpty());
}

TEST_F(MatchTrackerTest, DeletingAMatchWithoutClipsKeepsTheFiles)
{
    const auto match = playMatch(1);
    tracker->deleteSession(match.id, MatchTracker::WithClips::no);
    EXPECT_EQ(trash.calls, 0);
    EXPECT_TRUE(QFile::exists(match.clips.first()));
    tracker->deleteSession(match.id, MatchTracker::WithClips::yes);
    EXPECT_EQ(trash.calls, 0) << "the match is already deleted";
}

TEST_F(MatchTrackerTest, RemovedMatchIsRemovedFromTheFile)
{
    const auto first = playMatch(1);
    const auto second = playMatch(1);
    tracker->removeSession(second.id);
    EXPECT_EQ(makeTracker()->sessions(), QList{first});
}

TEST_F(MatchTrackerTest, MatchKeepsPathsOfDeletedClipsButClipFilesOmitsThem)
{
    const auto match = playMatch(2);
    QFile::remove(match.clips.first());
    EXPECT_EQ(match.clipFiles(), QStringList(match.clips.last()));
    EXPECT_EQ(match.clips.size(), 2);
}

TEST_F(MatchTrackerTest, NotificationCountsClipsAndEpicOnes)
{
    tracker->gameStarted(League, QStringLiteral("Ahri"));
    tracker->clipSaved(makeFile("League of Legends - 2026-03-01 20.15.07 [EFSANE 170] PENTAKILL (Ahri).mp4"));
    tracker->clipSaved(makeFile("League of Legends - 2026-03-01 20.16.07 [BASIT 15] Solo Kill (Ahri).mp4"));
    tracker->clipSaved(QStringLiteral("/gone [EFSANE 90] x.mp4"));
    tracker->gameEnded(League);
    time.advance(10s);
    ASSERT_EQ(notifications.size(), 1);
    EXPECT_EQ(notifications.first().id, tracker->sessions().first().id);
    EXPECT_EQ(notifications.first().title, QStringLiteral("Maç bitti • League of Legends • Ahri"));
    EXPECT_EQ(notifications.first().line, QStringLiteral("2 klip • 1 Efsane • incelemek için tıkla"));
    EXPECT_EQ(notifications.first().body,
              QStringLiteral("2 klip • 1 Efsane • incelemek için tıkla — özeti görmek için tıkla"));
    EXPECT_EQ(notifications.first().tier, ClipTier::epic);
}

TEST_F(MatchTrackerTest, NotificationOmitsHeroAndEpicsIfThereAreNone)
{
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(makeFile("Dota 2 - 2026-03-01 20.15.07.mp4"));
    tracker->gameEnded(Dota);
    time.advance(10s);
    EXPECT_EQ(notifications.first().title, QStringLiteral("Maç bitti • Dota 2"));
    EXPECT_EQ(notifications.first().line, QStringLiteral("1 klip • incelemek için tıkla"));
    EXPECT_EQ(notifications.first().tier, ClipTier::medium);
}

TEST_F(MatchTrackerTest, StoreIsReadAndWrittenOnTheWorkQueueOnly)
{
    const auto stored = playMatch(1);
    tracker = makeUnloadedTracker();
    time.settle();
    EXPECT_FALSE(tracker->isLoaded());
    EXPECT_TRUE(tracker->sessions().isEmpty());
    settle();
    EXPECT_TRUE(tracker->isLoaded());
    EXPECT_EQ(tracker->sessions(), QList{stored});
    tracker->removeSession(stored.id);
    EXPECT_EQ(MatchStore(storePath).load().size(), 1);
    work.settle();
    EXPECT_TRUE(MatchStore(storePath).load().isEmpty());
}

TEST_F(MatchTrackerTest, MatchThatEndsBeforeLoadingComesBeforeTheStoredOnes)
{
    const auto stored = playMatch(1);
    tracker = makeUnloadedTracker();
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(makeFile("new.mp4"));
    tracker->gameStarted(League, {});
    ASSERT_EQ(tracker->sessions().size(), 1);
    EXPECT_EQ(notifications.size(), 2);
    const auto played = tracker->sessions().first();
    settle();
    EXPECT_EQ(tracker->sessions(), (QList{played, stored}));
    EXPECT_EQ(makeTracker()->sessions(), (QList{played, stored}));
    EXPECT_TRUE(tracker->inMatch());
}

TEST_F(MatchTrackerTest, StoreIsCompleteIfTheProgramEndsBeforeTheLoadedListArrives)
{
    const auto stored = playMatch(1);
    tracker = makeUnloadedTracker();
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(makeFile("new.mp4"));
    tracker->gameStarted(League, {});
    const auto played = tracker->sessions().first();
    tracker.reset();
    work.settle();
    time.settle();
    EXPECT_EQ(makeTracker()->sessions(), (QList{played, stored}));
}

TEST_F(MatchTrackerTest, DeletionsBeforeLoadingTakeEffectAfterIt)
{
    const auto first = playMatch(1);
    const auto second = playMatch(1);
    const auto third = playMatch(2);
    tracker = makeUnloadedTracker();
    tracker->deleteSession(first.id, MatchTracker::WithClips::yes);
    tracker->removeSession(second.id);
    tracker->deleteClips({third.clips.first()}, third.id);
    EXPECT_EQ(trash.recycled, QStringList(third.clips.first())) << "clips do not wait";
    settle();
    EXPECT_EQ(trash.recycled, (QStringList{third.clips.first(), first.clips.first()}));
    ASSERT_EQ(tracker->sessions().size(), 1);
    EXPECT_EQ(tracker->sessions().first().clips, QStringList(third.clips.last()));
    work.settle();
    EXPECT_EQ(makeTracker()->sessions(), tracker->sessions());
}

TEST_F(MatchTrackerTest, UnreadStoreIsNotOverwritten)
{
    const auto stored = playMatch(1);
    tracker = makeUnloadedTracker();
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(makeFile("new.mp4"));
    tracker->gameStarted(League, {});
    EXPECT_EQ(MatchStore(storePath).load(), QList{stored});
}

TEST_F(MatchTrackerTest, DestroyedTrackerEndsNoMatch)
{
    tracker->gameStarted(Dota, {});
    tracker->clipSaved(makeFile("a.mp4"));
    tracker->gameEnded(Dota);
    tracker.reset();
    time.advance(10s);
    EXPECT_FALSE(QFile::exists(storePath));
}

} // namespace
} // namespace quelto
