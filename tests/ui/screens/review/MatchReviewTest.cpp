// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/MatchReview.h"

#include "tests/library/matches/MatchClipsFixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace quelto {
namespace {

class MatchReviewTest : public test::MatchClipsFixture {
protected:
    std::unique_ptr<MatchReview> reviewOf(const QUuid& id)
    {
        auto opened = std::make_unique<MatchReview>(
            MatchReview::Dependencies{.tracker = tracker, .clips = clips, .navigation = navigation});
        QObject::connect(opened.get(), &MatchReview::clipShown, [this](const QString& path) { shown.append(path); });
        opened->setMatchId(matchIdText(id));
        settle();
        shown.clear();
        return opened;
    }

    QStringList markedTitles() const
    {
        QStringList titles;
        for (int row = 0; row < review->rowCount(); ++row) {
            const auto index = review->index(row);
            if (review->data(index, MatchReview::IsMarkedRole).toBool()) {
                titles.append(review->data(index, MatchReview::TitleRole).toString());
            }
        }
        return titles;
    }

    Navigation navigation{main};
    const QString oldest = makeFile("L - 2026-03-01 20.15.07 [EFSANE 95] Ace.mp4", 30);
    const QString middle = makeFile("L - b.mp4", 20);
    const QString newest = makeFile("L - c.mp4", 10);
    const QUuid match = playMatch({newest, oldest, middle});
    /// What the player was asked to show.
    QStringList shown;
    std::unique_ptr<MatchReview> review = reviewOf(match);
};

TEST_F(MatchReviewTest, ShowsTheMatchFromItsOldestClip)
{
    const QAbstractItemModelTester tester(review.get());
    EXPECT_EQ(review->count(), 3);
    EXPECT_EQ(review->currentIndex(), 0);
    EXPECT_EQ(review->currentPath(), oldest);
    EXPECT_EQ(review->followingPath(), middle);
    EXPECT_EQ(review->title(), QStringLiteral("Ace"));
    EXPECT_EQ(review->tier(), QStringLiteral("EFSANE"));
    EXPECT_EQ(review->score().toInt(), 95);
    review->go(1);
    EXPECT_EQ(review->tier(), QString());
    EXPECT_FALSE(review->score().isValid());
}

TEST_F(MatchReviewTest, AnswersAreCountedAndListed)
{
    EXPECT_EQ(review->keptCount(), 3);
    review->remove();
    review->keep();
    review->remove();
    EXPECT_EQ(shown, QStringList({middle, newest})) << "the last clip stays and is not opened again";
    EXPECT_EQ(review->currentIndex(), 2);
    EXPECT_TRUE(review->isMarked());
    EXPECT_EQ(review->keptCount(), 1);
    EXPECT_EQ(review->markedCount(), 2);
    EXPECT_EQ(markedTitles(), QStringList({QStringLiteral("Ace"), QStringLiteral("c")}));
    review->go(0);
    review->keep();
    EXPECT_EQ(review->markedCount(), 1);
}

TEST_F(MatchReviewTest, PlayerShowsTheClipBeforeTheFollowingOneChanges)
{
    QStringList order;
    QObject::connect(review.get(), &MatchReview::clipShown, [&] { order.append(QStringLiteral("shown")); });
    QObject::connect(review.get(), &MatchReview::changed, [&] { order.append(QStringLiteral("changed")); });
    review->go(1);
    EXPECT_EQ(order, QStringList({QStringLiteral("shown"), QStringLiteral("changed")}));
}

TEST_F(MatchReviewTest, TakesOnlyItsOwnKeys)
{
    EXPECT_TRUE(review->answerByKey(QStringLiteral("x"), 0));
    EXPECT_FALSE(review->answerByKey(QStringLiteral("a"), 0));
    EXPECT_TRUE(review->answerByKey(QStringLiteral("K"), 0));
    EXPECT_EQ(review->currentIndex(), 2);
    EXPECT_EQ(review->markedCount(), 1);
}

TEST_F(MatchReviewTest, FinishTrashesTheMarkedClipsAndShowsTheMatch)
{
    review->remove();
    review->go(2);
    review->remove();
    EXPECT_EQ(trash.calls, 0);
    shown.clear();
    review->finish();
    EXPECT_EQ(trash.calls, 1);
    EXPECT_EQ(trash.recycled, QStringList({oldest, newest}));
    EXPECT_EQ(navigation.page(), (Page{.kind = Pages::Kind::Match, .match = match}));
    settle();
    EXPECT_EQ(shown, QStringList()) << "the player is stopped";
    EXPECT_EQ(pathsOf(match), QStringList(middle));
}

TEST_F(MatchReviewTest, FinishWithoutMarksDeletesNothing)
{
    const QSignalSpy changed(&tracker, &MatchTracker::sessionsChanged);
    review->finish();
    EXPECT_EQ(trash.calls, 0);
    EXPECT_EQ(changed.size(), 0) << "the match is not stored again";
    EXPECT_EQ(navigation.page(), (Page{.kind = Pages::Kind::Match, .match = match}));
}

TEST_F(MatchReviewTest, LeavingDeletesNothing)
{
    review->remove();
    review->leave();
    EXPECT_EQ(trash.calls, 0);
    EXPECT_EQ(navigation.page(), (Page{.kind = Pages::Kind::Match, .match = match}));
    EXPECT_EQ(reviewOf(match)->markedCount(), 0);
}

TEST_F(MatchReviewTest, VanishedClipLeavesTheReview)
{
    review->remove();
    QFile::remove(oldest);
    clips.refresh();
    settle();
    EXPECT_EQ(review->count(), 2);
    EXPECT_EQ(review->currentPath(), middle);
    EXPECT_EQ(review->markedCount(), 0);
    EXPECT_TRUE(shown.endsWith(middle)) << "it is shown already, and does not start again";
    shown.clear();
    QFile::remove(middle);
    clips.refresh();
    settle();
    EXPECT_EQ(shown, QStringList(newest));
    QFile::remove(newest);
    clips.refresh();
    settle();
    EXPECT_EQ(review->count(), 0);
    review->remove();
    review->finish();
    EXPECT_EQ(trash.calls, 0);
    EXPECT_TRUE(tracker.session(match)) << "the recap stays";
}

TEST_F(MatchReviewTest, UnknownMatchHasNoClips)
{
    const auto unknown = reviewOf(QUuid::createUuid());
    EXPECT_TRUE(unknown->isLoaded());
    EXPECT_EQ(unknown->count(), 0);
    EXPECT_EQ(unknown->title(), QString());
    unknown->go(0);
    unknown->keep();
    unknown->finish();
    EXPECT_EQ(trash.calls, 0);
}

TEST_F(MatchReviewTest, MatchThatIsDeletedMeanwhileHasNoClips)
{
    tracker.deleteSession(match, MatchTracker::WithClips::no);
    EXPECT_EQ(review->count(), 0);
}

TEST_F(MatchReviewTest, OpensBeforeTheMatchesAreLoaded)
{
    MatchTracker next({.library = library,
                       .main = main,
                       .work = matchWork,
                       .store = MatchStore(folder.filePath(QStringLiteral("m.json")))});
    MatchClips nextClips({.tracker = next, .library = library, .main = main, .work = lookUpWork});
    MatchReview early({.tracker = next, .clips = nextClips, .navigation = navigation});
    QObject::connect(&early, &MatchReview::clipShown, [this](const QString& path) { shown.append(path); });
    early.setMatchId(matchIdText(match));
    EXPECT_FALSE(early.isLoaded());
    EXPECT_EQ(early.count(), 0);
    settle();
    EXPECT_TRUE(early.isLoaded());
    EXPECT_EQ(shown, QStringList(oldest));
}

} // namespace
} // namespace quelto
