// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/match/MatchRecap.h"

#include "base/language/L10n.h"

#include "tests/library/matches/MatchClipsFixture.h"

#include <QSignalSpy>

namespace quelto {
namespace {

class MatchRecapTest : public test::MatchClipsFixture {
protected:
    /// Clips whose names have the reverse of the order in which they were played.
    void play(int count)
    {
        QStringList paths;
        for (int i = 0; i < count; ++i) {
            const auto name =
                QStringLiteral("League of Legends - Nr %1.mp4").arg(count - 1 - i, 3, 10, QLatin1Char('0'));
            paths.append(makeFile(name.toUtf8().constData(), (count - i) * 60));
        }
        match = playMatch(paths);
        recap.setMatchId(matchIdText(match));
        recap.setCardTextHeight(60);
        recap.setWidth(1000);
        recap.setViewHeight(700);
        settle();
    }
    QString pathOf(int number) const
    {
        return path(
            QStringLiteral("League of Legends - Nr %1.mp4").arg(number, 3, 10, QLatin1Char('0')).toUtf8().constData());
    }
    /// The titles of the cards that exist, in their order; with a star if they are shown as selected.
    QStringList cards()
    {
        QMap<int, QString> titles;
        auto& visible = *recap.cards();
        for (int row = 0; row < visible.rowCount(); ++row) {
            const auto at = visible.index(row);
            if (const auto position = visible.data(at, VisibleCards::PositionRole).toInt(); position >= 0) {
                const auto isSelected = visible.data(at, VisibleCards::SelectedRole).toBool();
                titles[position] = visible.data(at, VisibleCards::TitleRole).toString() +
                    (isSelected ? QStringLiteral("*") : QString());
            }
        }
        return titles.values();
    }
    static QStringList list(const char* words) { return QString::fromUtf8(words).split(u','); }

    QUuid match;
    MatchRecap recap{{.tracker = tracker, .clips = clips}};
};

TEST_F(MatchRecapTest, ShowsTheClipsInTheOrderTheyWerePlayed)
{
    play(3);
    EXPECT_EQ(cards(), list("Nr 002,Nr 001,Nr 000"));
    EXPECT_TRUE(recap.isFound());
    EXPECT_FALSE(recap.isMissing());
    EXPECT_EQ(recap.name(), QStringLiteral("League of Legends • Ahri"));
    EXPECT_EQ(recap.matchId(), matchIdText(match));
}

TEST_F(MatchRecapTest, SubtitleHasTheDateAndTheNumberOfClips)
{
    play(3);
    const auto date = L10n::date(tracker.session(match)->start, QStringLiteral("EEEdMMMHmm"));
    EXPECT_EQ(recap.subtitle(), date + QStringLiteral(" • 3 klip"));
}

TEST_F(MatchRecapTest, CreatesCardsOnlyForWhatIsVisible)
{
    play(200);
    EXPECT_EQ(recap.count(), 200);
    EXPECT_LE(cards().size(), 15);
    EXPECT_LE(recap.cards()->rowCount(), 15);
    EXPECT_EQ(cards().first(), QStringLiteral("Nr 199"));
    recap.setViewTop(recap.contentHeight() - recap.viewHeight());
    EXPECT_EQ(cards().last(), QStringLiteral("Nr 000"));
    EXPECT_EQ(recap.days()->rowCount(), 0);
}

TEST_F(MatchRecapTest, TallClipsHaveWideCards)
{
    match = playMatch({makeFile("League of Legends - Ace (9x16).mp4")});
    recap.setMatchId(matchIdText(match));
    recap.setWidth(1000);
    recap.setViewHeight(700);
    const auto& visible = *recap.cards();
    EXPECT_DOUBLE_EQ(visible.data(visible.index(0), VisibleCards::RatioRole).toDouble(), 16.0 / 9);
}

TEST_F(MatchRecapTest, ShowsWhichClipsAreSelected)
{
    play(3);
    const QSignalSpy changed(&recap, &MatchRecap::selectionChanged);
    recap.toggle(pathOf(1));
    EXPECT_EQ(cards(), list("Nr 002,Nr 001*,Nr 000"));
    EXPECT_EQ(recap.selectedCount(), 1);
    EXPECT_FALSE(recap.isAllSelected());
    recap.toggleAll();
    EXPECT_EQ(cards(), list("Nr 002*,Nr 001*,Nr 000*"));
    EXPECT_TRUE(recap.isAllSelected());
    recap.toggleAll();
    EXPECT_EQ(cards(), list("Nr 002,Nr 001,Nr 000"));
    recap.selectAll();
    recap.clearSelection();
    EXPECT_EQ(recap.selectedCount(), 0);
    EXPECT_EQ(changed.size(), 5);
}

TEST_F(MatchRecapTest, DeletesTheSelectedClipsAtOnce)
{
    play(3);
    recap.toggle(pathOf(0));
    recap.toggle(pathOf(2));
    recap.deleteSelected();
    EXPECT_EQ(recap.selectedCount(), 0);
    EXPECT_EQ(cards(), list("Nr 001"));
    EXPECT_TRUE(recap.subtitle().endsWith(QStringLiteral(" • 1 klip")));
    EXPECT_EQ(trash.recycled, (QStringList{pathOf(2), pathOf(0)}));
    recap.deleteSelected();
    EXPECT_EQ(trash.calls, 1) << "nothing is selected";
}

TEST_F(MatchRecapTest, DeletesOneClipAndKeepsTheSelection)
{
    play(3);
    recap.toggle(pathOf(0));
    recap.deleteClip(pathOf(1));
    EXPECT_EQ(cards(), list("Nr 002,Nr 000*"));
    EXPECT_EQ(trash.recycled, QStringList(pathOf(1)));
}

TEST_F(MatchRecapTest, RenamedClipStaysAndStaysSelected)
{
    play(3);
    library.reload();
    settle();
    recap.toggle(pathOf(1));
    recap.select(1);
    ASSERT_TRUE(library.rename(Clip(pathOf(1)), QStringLiteral("Best")));
    EXPECT_EQ(cards(), list("Nr 002,Best*,Nr 000")) << "at once, before the files are looked up";
    EXPECT_EQ(recap.currentPosition(), 1);
    settle();
    EXPECT_EQ(cards(), list("Nr 002,Best*,Nr 000"));
    EXPECT_EQ(recap.selectedCount(), 1);
}

TEST_F(MatchRecapTest, ClipThatIsDeletedElsewhereIsNoLongerSelected)
{
    play(3);
    library.reload();
    settle();
    recap.toggle(pathOf(1));
    recap.toggle(pathOf(2));
    library.trash(Clip(pathOf(1)));
    trash.answer();
    settle();
    EXPECT_EQ(cards(), list("Nr 002*,Nr 000"));
    EXPECT_EQ(recap.selectedCount(), 1);
}

TEST_F(MatchRecapTest, RestoredClipIsBackAndNotSelected)
{
    play(3);
    recap.toggle(pathOf(1));
    recap.deleteSelected();
    trash.answer();
    settle();
    ASSERT_EQ(cards(), list("Nr 002,Nr 000"));
    makeFile("League of Legends - Nr 001.mp4", 120);
    clips.refresh();
    settle();
    EXPECT_EQ(cards(), list("Nr 002,Nr 001,Nr 000"));
}

TEST_F(MatchRecapTest, AllClipsGoneLeavesAnEmptyRecap)
{
    play(2);
    recap.selectAll();
    recap.deleteSelected();
    EXPECT_TRUE(recap.isFound());
    EXPECT_EQ(recap.count(), 0);
    EXPECT_TRUE(recap.subtitle().endsWith(QStringLiteral(" • 0 klip")));
}

TEST_F(MatchRecapTest, UnknownMatchIsMissingOnlyOnceTheMatchesAreLoaded)
{
    MatchTracker later(MatchTracker::Dependencies{.library = library,
                                                  .main = main,
                                                  .work = matchWork,
                                                  .store = MatchStore(folder.filePath(QStringLiteral("other.json")))});
    MatchClips laterClips({.tracker = later, .library = library, .main = main, .work = lookUpWork});
    MatchRecap unknown({.tracker = later, .clips = laterClips});
    unknown.setMatchId(matchIdText(QUuid::createUuid()));
    EXPECT_FALSE(unknown.isMissing());
    EXPECT_FALSE(unknown.isFound());
    EXPECT_FALSE(unknown.isLoaded());
    settle();
    EXPECT_TRUE(unknown.isMissing());
    EXPECT_EQ(unknown.name(), QString());
    EXPECT_EQ(unknown.subtitle(), QString());
}

TEST_F(MatchRecapTest, DeletionBeforeTheMatchesAreLoadedClearsTheSelection)
{
    const auto clip = makeFile("Dota 2 - Ace.mp4");
    library.reload();
    settle();
    MatchTracker later(MatchTracker::Dependencies{.library = library,
                                                  .main = main,
                                                  .work = matchWork,
                                                  .store = MatchStore(folder.filePath(QStringLiteral("other.json")))});
    MatchClips laterClips({.tracker = later, .library = library, .main = main, .work = lookUpWork});
    later.gameStarted(game, QString());
    later.clipSaved(clip);
    later.gameEnded(game);
    time.advance(std::chrono::seconds(10));
    // The look-up that runs already, and the one that was requested since.
    for (int i = 0; i < 2; ++i) {
        lookUpTime.settle();
        time.settle();
    }
    ASSERT_FALSE(later.isLoaded());
    MatchRecap early({.tracker = later, .clips = laterClips});
    early.setMatchId(matchIdText(later.sessions().first().id));
    early.selectAll();
    ASSERT_EQ(early.selectedCount(), 1);
    early.deleteSelected();
    EXPECT_EQ(early.selectedCount(), 0);
    EXPECT_EQ(trash.recycled, QStringList(clip));
}

TEST_F(MatchRecapTest, MatchCanBeDeletedWithAndWithoutItsClips)
{
    play(2);
    recap.deleteMatch(false);
    EXPECT_TRUE(recap.isMissing());
    EXPECT_EQ(recap.count(), 0);
    EXPECT_EQ(trash.calls, 0);
    const auto other = playMatch({pathOf(0), pathOf(1)});
    MatchRecap second({.tracker = tracker, .clips = clips});
    second.setMatchId(matchIdText(other));
    settle();
    ASSERT_EQ(second.count(), 2);
    second.deleteMatch(true);
    EXPECT_TRUE(second.isMissing());
    EXPECT_EQ(trash.recycled.size(), 2);
}

TEST_F(MatchRecapTest, ChangesOfOtherMatchesKeepTheScrollPosition)
{
    play(100);
    QObject::connect(&recap, &MatchRecap::scrollRequested, &recap, [this](qreal top) { recap.setViewTop(top); });
    recap.setViewTop(1500);
    const auto before = cards();
    const QSignalSpy changed(&recap, &MatchRecap::clipsChanged);
    playMatch({makeFile("Dota 2 - Other.mp4")});
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(recap.viewTop(), 1500);
    EXPECT_EQ(cards(), before);
}

} // namespace
} // namespace quelto
