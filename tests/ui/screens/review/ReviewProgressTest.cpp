// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/ReviewProgress.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using Answer = ReviewProgress::Answer;

QList<Clip> clipsOf(const QString& names)
{
    QList<Clip> clips;
    for (const auto name : names) {
        clips.append(Clip(QStringLiteral("/clips/L - %1.mp4").arg(name), std::nullopt));
    }
    return clips;
}

ReviewProgress reviewOf(const QString& names)
{
    ReviewProgress progress;
    progress.setClips(clipsOf(names));
    return progress;
}

/// The names of the clips to delete.
QString markedIn(const ReviewProgress& progress)
{
    QString names;
    for (const auto& path : progress.marked()) {
        names += path.at(path.size() - 5);
    }
    return names;
}

TEST(ReviewProgress, StartsAtTheFirstClipAndKeepsAll)
{
    const auto progress = reviewOf(QStringLiteral("abc"));
    EXPECT_EQ(progress.index(), 0);
    EXPECT_EQ(progress.currentPath(), QStringLiteral("/clips/L - a.mp4"));
    EXPECT_EQ(progress.followingPath(), QStringLiteral("/clips/L - b.mp4"));
    EXPECT_EQ(markedIn(progress), QString());
}

TEST(ReviewProgress, AnswerMovesToTheNextClip)
{
    auto progress = reviewOf(QStringLiteral("abc"));
    EXPECT_TRUE(progress.mark(Answer::remove));
    EXPECT_EQ(progress.index(), 1);
    EXPECT_TRUE(progress.mark(Answer::keep));
    EXPECT_EQ(progress.index(), 2);
    EXPECT_EQ(markedIn(progress), QStringLiteral("a"));
}

TEST(ReviewProgress, AnswerForTheLastClipStaysThere)
{
    auto progress = reviewOf(QStringLiteral("ab"));
    progress.go(1);
    EXPECT_EQ(progress.followingPath(), QString());
    EXPECT_FALSE(progress.mark(Answer::remove));
    EXPECT_EQ(progress.index(), 1);
    EXPECT_TRUE(progress.isMarked(1));
    EXPECT_FALSE(progress.mark(Answer::keep));
    EXPECT_EQ(markedIn(progress), QString());
}

TEST(ReviewProgress, KeepTakesBackAnEarlierMark)
{
    auto progress = reviewOf(QStringLiteral("abc"));
    progress.mark(Answer::remove);
    progress.go(0);
    progress.mark(Answer::keep);
    EXPECT_EQ(markedIn(progress), QString());
    EXPECT_EQ(progress.index(), 1);
}

TEST(ReviewProgress, EveryAnswerOfAHeldKeyCounts)
{
    auto progress = reviewOf(QStringLiteral("abcdefgh"));
    for (int i = 0; i < 20; ++i) {
        progress.mark(Answer::remove);
    }
    EXPECT_EQ(markedIn(progress), QStringLiteral("abcdefgh"));
    EXPECT_EQ(progress.index(), 7);
}

TEST(ReviewProgress, GoesToExistingClipsOnly)
{
    auto progress = reviewOf(QStringLiteral("abc"));
    EXPECT_TRUE(progress.go(2));
    EXPECT_FALSE(progress.go(3));
    EXPECT_FALSE(progress.go(-1));
    EXPECT_EQ(progress.index(), 2);
}

TEST(ReviewProgress, NothingHappensWithoutClips)
{
    ReviewProgress progress;
    EXPECT_FALSE(progress.mark(Answer::remove));
    EXPECT_FALSE(progress.go(0));
    EXPECT_EQ(progress.index(), 0);
    EXPECT_EQ(progress.currentPath(), QString());
    EXPECT_EQ(progress.followingPath(), QString());
    EXPECT_TRUE(progress.marked().isEmpty());
}

struct Change {
    const char* name;
    const char* after;
    qsizetype shown;
    char shownClip;
};

class ChangedClips : public testing::TestWithParam<Change> { };

TEST_P(ChangedClips, KeepTheShownClipOrShowTheNextOne)
{
    auto progress = reviewOf(QStringLiteral("abcd"));
    progress.go(2);
    progress.setClips(clipsOf(QLatin1String(GetParam().after)));
    EXPECT_EQ(progress.index(), GetParam().shown);
    EXPECT_EQ(progress.currentPath(), QStringLiteral("/clips/L - %1.mp4").arg(QLatin1Char(GetParam().shownClip)));
}

INSTANTIATE_TEST_SUITE_P(
    ReviewProgress, ChangedClips,
    testing::Values(Change{"EarlierClipVanishes", "bcd", 1, 'c'}, Change{"LaterClipVanishes", "abc", 2, 'c'},
                    Change{"ShownClipVanishes", "abd", 2, 'd'}, Change{"ShownAndLaterClipsVanish", "ab", 1, 'b'},
                    Change{"ShownAndEarlierClipsVanish", "d", 0, 'd'}, Change{"EarlierClipReturns", "a0bcd", 3, 'c'},
                    Change{"OneIsLeft", "a", 0, 'a'}),
    [](const auto& test) { return test.param.name; });

TEST(ReviewProgress, MarkOfAVanishedClipReturnsWithIt)
{
    auto progress = reviewOf(QStringLiteral("abc"));
    progress.mark(Answer::remove);
    progress.mark(Answer::remove);
    progress.setClips({});
    EXPECT_EQ(progress.index(), 0);
    EXPECT_TRUE(progress.marked().isEmpty());
    progress.setClips(clipsOf(QStringLiteral("bc")));
    EXPECT_EQ(progress.currentPath(), QStringLiteral("/clips/L - c.mp4")) << "as before they vanished";
    EXPECT_EQ(markedIn(progress), QStringLiteral("b"));
    progress.setClips(clipsOf(QStringLiteral("abc")));
    EXPECT_EQ(markedIn(progress), QStringLiteral("ab"));
}

} // namespace
} // namespace quelto
