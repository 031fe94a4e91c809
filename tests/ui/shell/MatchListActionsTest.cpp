// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/MatchListFixture.h"

namespace quelto {
namespace {

using MatchListActionsTest = test::MatchListFixture;

TEST_F(MatchListActionsTest, ClickOpensTheMatch)
{
    playMany(2);
    showPage();
    clickOn(row(QStringLiteral("Hero 0")));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Match);
    EXPECT_EQ(navigation->matchId(), idOf(QStringLiteral("Hero 0")));
}

TEST_F(MatchListActionsTest, ReturnsToTheRowOfTheMatchThatWasOpen)
{
    playMany(40);
    showPage();
    navigation->showMatch(idOf(QStringLiteral("Hero 10")));
    update();
    showPage();
    ASSERT_NE(row(QStringLiteral("Hero 10")), nullptr);
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 10")));
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 10"));
    EXPECT_FALSE(isMarked(QStringLiteral("Hero 10")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 10"));
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 10")));
    navigation->showLibrary();
    showPage();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39")) << "the match was not open last";
}

TEST_F(MatchListActionsTest, ReturnsToTheNextRowIfTheMatchIsDeleted)
{
    playMany(40);
    showPage();
    const auto id = idOf(QStringLiteral("Hero 10"));
    navigation->showMatch(id);
    update();
    matches->deleteSession(QUuid(id), MatchTracker::WithClips::no);
    update();
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 9"));
    ASSERT_NE(row(QStringLiteral("Hero 9")), nullptr);
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 9")));
}

TEST_F(MatchListActionsTest, KeysMoveBetweenRowsAndReturnOpens)
{
    playMany(40);
    showPage();
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    EXPECT_FALSE(isMarked(QStringLiteral("Hero 39")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39")) << "the first key shows which row has the focus";
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 39")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 38"));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    press(Qt::Key_End);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 0")));
    press(Qt::Key_PageUp);
    EXPECT_FALSE(focusedHero().isEmpty());
    EXPECT_NE(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isWholeRowVisible(focusedHero()));
    press(Qt::Key_PageDown);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    press(Qt::Key_Home);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 39"));
    EXPECT_TRUE(isWholeRowVisible(QStringLiteral("Hero 39")));
    press(Qt::Key_Return);
    EXPECT_EQ(navigation->matchId(), idOf(QStringLiteral("Hero 39")));
}

TEST_F(MatchListActionsTest, PagesDownThroughAllRows)
{
    playMany(40);
    showPage();
    press(Qt::Key_Down);
    QStringList reached;
    for (int i = 0; i < 40 && focusedHero() != QStringLiteral("Hero 0"); ++i) {
        press(Qt::Key_PageDown);
        ASSERT_TRUE(isWholeRowVisible(focusedHero())) << focusedHero().toStdString();
        reached.append(focusedHero());
    }
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_GT(reached.size(), 3);
    EXPECT_LT(reached.size(), 15);
}

TEST_F(MatchListActionsTest, ListIsOneTabStopWithItsTrashButton)
{
    playMany(3);
    showPage();
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 2")));
    press(Qt::Key_Down);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 1"));
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 1")));
    press(Qt::Key_Tab);
    for (const auto* each : rows()) {
        EXPECT_FALSE(each->hasActiveFocus());
    }
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window->activeFocusItem(), trashButton(QStringLiteral("Hero 1")));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window->activeFocusItem(), row(QStringLiteral("Hero 1")));
}

TEST_F(MatchListActionsTest, DeleteKeyDeletesTheRecapOnlyAndFocusesTheNextRow)
{
    playMany(3);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    ASSERT_TRUE(asksToDelete());
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    update();
    EXPECT_FALSE(asksToDelete());
    EXPECT_EQ(
        titles(),
        QStringList({QStringLiteral("League of Legends • Hero 2"), QStringLiteral("League of Legends • Hero 0")}));
    EXPECT_TRUE(trash.recycled.isEmpty());
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
    EXPECT_TRUE(isMarked(QStringLiteral("Hero 0")));
}

TEST_F(MatchListActionsTest, TrashButtonDeletesTheRecapWithItsClips)
{
    playMany(2);
    showPage();
    clickOn(trashButton(QStringLiteral("Hero 1")));
    ASSERT_TRUE(asksToDelete());
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches) << "the row is not opened";
    clickOn(textItem(QStringLiteral("Özeti ve kliplerini sil")));
    update();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Hero 0")));
    EXPECT_EQ(trash.recycled, QStringList(clipPath(QStringLiteral("League of Legends - Hero 1.mp4"))));
}

TEST_F(MatchListActionsTest, CancelKeepsTheRecapAndTheFocus)
{
    playMany(2);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    press(Qt::Key_Return);
    EXPECT_FALSE(asksToDelete());
    press(Qt::Key_Delete);
    press(Qt::Key_Escape);
    update();
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(focusedHero(), QStringLiteral("Hero 1"));
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
}

TEST_F(MatchListActionsTest, MenuDeletesTheRecapUnderThePointer)
{
    playMany(2);
    showPage();
    clickOn(row(QStringLiteral("Hero 0")), Qt::RightButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Özeti Sil")); }));
    picture(QStringLiteral("matches-menu"));
    clickOn(textItem(QStringLiteral("Özeti Sil")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return asksToDelete(); }));
    clickOn(textItem(QStringLiteral("Sadece özeti sil (klipler kalır)")));
    update();
    EXPECT_EQ(titles(), QStringList(QStringLiteral("League of Legends • Hero 1")));
}

TEST_F(MatchListActionsTest, MenuKeyOpensTheMenuOfTheRowWithTheFocus)
{
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
        playMany(1);
        showPage();
        press(Qt::Key_Down);
        press(key, modifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Özeti Sil")); }));
        press(Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Özeti Sil")); }));
        EXPECT_EQ(focusedHero(), QStringLiteral("Hero 0"));
        EXPECT_EQ(navigation->pageKind(), Pages::Kind::Matches);
    }
}

TEST_F(MatchListActionsTest, DeletingTheLastRecapShowsTheEmptyState)
{
    playMany(1);
    showPage();
    press(Qt::Key_Down);
    press(Qt::Key_Delete);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    update();
    EXPECT_TRUE(shows(QStringLiteral("Henüz maç özeti yok")));
    press(Qt::Key_Escape);
    EXPECT_EQ(navigation->pageKind(), Pages::Kind::Library) << "the page still has the keyboard";
}

} // namespace
} // namespace quelto
