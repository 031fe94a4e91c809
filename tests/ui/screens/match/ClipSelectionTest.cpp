// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/match/ClipSelection.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

class ClipSelectionTest : public testing::Test {
protected:
    ClipSelectionTest() { selection.setClips({a, b, c}); }

    const QString a = QStringLiteral("/clips/z first.mp4");
    const QString b = QStringLiteral("/clips/second.mp4");
    const QString c = QStringLiteral("/clips/a third.mp4");
    ClipSelection selection;
};

TEST_F(ClipSelectionTest, TogglesSingleClips)
{
    EXPECT_EQ(selection.count(), 0);
    selection.toggle(b);
    EXPECT_TRUE(selection.contains(b));
    EXPECT_EQ(selection.count(), 1);
    selection.toggle(a);
    selection.toggle(b);
    EXPECT_EQ(selection.selected(), QStringList(a));
}

TEST_F(ClipSelectionTest, ListsClipsInTheOrderOfThePage)
{
    selection.toggle(c);
    selection.toggle(a);
    EXPECT_EQ(selection.selected(), (QStringList{a, c}));
}

TEST_F(ClipSelectionTest, IgnoresClipsOfOtherPages)
{
    selection.toggle(QStringLiteral("/clips/other.mp4"));
    EXPECT_EQ(selection.count(), 0);
}

TEST_F(ClipSelectionTest, ToggleAllSelectsTheRestBeforeItSelectsNone)
{
    selection.toggle(b);
    EXPECT_FALSE(selection.isAll());
    selection.toggleAll();
    EXPECT_TRUE(selection.isAll());
    EXPECT_EQ(selection.selected(), (QStringList{a, b, c}));
    selection.toggleAll();
    EXPECT_EQ(selection.count(), 0);
}

TEST_F(ClipSelectionTest, SelectAllNeverSelectsNone)
{
    selection.selectAll();
    selection.selectAll();
    EXPECT_TRUE(selection.isAll());
    selection.clear();
    EXPECT_EQ(selection.count(), 0);
}

TEST_F(ClipSelectionTest, ForgetsClipsThatAreGone)
{
    selection.selectAll();
    selection.setClips({a, c});
    EXPECT_EQ(selection.selected(), (QStringList{a, c}));
    EXPECT_TRUE(selection.isAll());
    selection.setClips({a, b, c});
    EXPECT_FALSE(selection.contains(b)) << "a clip that comes back is a new one";
    EXPECT_FALSE(selection.isAll());
}

TEST_F(ClipSelectionTest, FollowsARename)
{
    const auto renamed = QStringLiteral("/clips/new name.mp4");
    selection.toggle(b);
    selection.rename(b, renamed);
    selection.setClips({a, renamed, c});
    EXPECT_EQ(selection.selected(), QStringList(renamed));
    selection.rename(a, QStringLiteral("/clips/unselected.mp4"));
    EXPECT_EQ(selection.count(), 1);
    selection.rename(QStringLiteral("/clips/unknown.mp4"), QStringLiteral("/clips/unknown too.mp4"));
    EXPECT_EQ(selection.count(), 1);
}

TEST_F(ClipSelectionTest, AllOfNoClipsAreSelected)
{
    selection.setClips({});
    EXPECT_TRUE(selection.isAll());
    selection.toggleAll();
    EXPECT_EQ(selection.count(), 0);
}

} // namespace
} // namespace quelto
