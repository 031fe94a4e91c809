// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/Navigation.h"

#include "base/language/L10n.h"

#include "tests/base/tasks/ManualQueue.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using namespace std::chrono_literals;

class NavigationTest : public testing::Test {
protected:
    test::ManualTime time;
    test::ManualQueue queue{time};
    Navigation navigation{queue};
};

TEST_F(NavigationTest, ToastIsShownForTwoAndAHalfSeconds)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(2499ms);
    EXPECT_EQ(navigation.toast(), QStringLiteral("A"));
    time.advance(1ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, NewToastIsShownForTheFullTime)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(1s);
    navigation.showToast(QStringLiteral("B"));
    time.advance(2499ms);
    EXPECT_EQ(navigation.toast(), QStringLiteral("B"));
    time.advance(1ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, RepeatedToastDoesNotExtendItsTime)
{
    navigation.showToast(QStringLiteral("A"));
    time.advance(2s);
    navigation.showToast(QStringLiteral("A"));
    time.advance(500ms);
    EXPECT_EQ(navigation.toast(), QString());
}

TEST_F(NavigationTest, PageOfAMatchHasItsId)
{
    const auto id = QStringLiteral("8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F");
    navigation.openClip(QStringLiteral("/clips/a.mp4"));
    navigation.showReview(id);
    EXPECT_FALSE(navigation.hasSelected());
    EXPECT_EQ(navigation.page(), (Page{.kind = Pages::Kind::Review, .match = QUuid(id)}));
    EXPECT_EQ(navigation.matchId(), id);
    navigation.showMatch(id);
    EXPECT_EQ(navigation.pageKind(), Pages::Kind::Match);
    EXPECT_EQ(navigation.matchId(), id);
    navigation.showMatches();
    EXPECT_EQ(navigation.matchId(), QString());
}

TEST_F(NavigationTest, LeavesOnlyThePagesOfTheMatch)
{
    const auto id = QUuid::createUuid();
    for (const auto kind : {Pages::Kind::Match, Pages::Kind::Review}) {
        navigation.setPage({.kind = kind, .match = id});
        navigation.leaveMatch(QUuid::createUuid());
        EXPECT_EQ(navigation.pageKind(), kind);
        navigation.leaveMatch(id);
        EXPECT_EQ(navigation.page(), Page{.kind = Pages::Kind::Matches});
    }
}

TEST_F(NavigationTest, OpenClipKeepsThePage)
{
    navigation.showGame(QStringLiteral("Dota 2"));
    navigation.openClip(QStringLiteral("/clips/Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE (Axe).mp4"));
    EXPECT_EQ(navigation.selectedTitle(), QStringLiteral("RAMPAGE (Axe)"));
    EXPECT_EQ(navigation.game(), QStringLiteral("Dota 2"));
    navigation.closeClip();
    EXPECT_FALSE(navigation.hasSelected());
    EXPECT_EQ(navigation.page(), Page{.game = QStringLiteral("Dota 2")});
}

TEST_F(NavigationTest, ShowingAPageClosesTheClip)
{
    const std::array<std::pair<void (*)(Navigation&), Page>, 4> ways{{
        {[](Navigation& each) { each.showLibrary(); }, Page{}},
        {[](Navigation& each) { each.showGame(QString()); }, Page{.game = QString()}},
        {[](Navigation& each) { each.showMatches(); }, Page{.kind = Pages::Kind::Matches}},
        {[](Navigation& each) { each.showSettings(); }, Page{.kind = Pages::Kind::Settings}},
    }};
    for (const auto& [go, page] : ways) {
        navigation.openClip(QStringLiteral("/clips/Dota 2 - a.mp4"));
        go(navigation);
        EXPECT_FALSE(navigation.hasSelected());
        EXPECT_EQ(navigation.page(), page);
    }
}

TEST_F(NavigationTest, EmptyGameNameIsNotAllGames)
{
    navigation.showGame(QString());
    EXPECT_TRUE(navigation.hasGame());
    EXPECT_NE(navigation.page(), Page{});
}

TEST_F(NavigationTest, PageOfClipsWithoutAGameHasATranslatedTitleButTheSameValue)
{
    L10n::use(QStringLiteral("tr"));
    navigation.showOther();
    const auto page = navigation.page();
    EXPECT_TRUE(navigation.hasGame() && navigation.isOther());
    EXPECT_EQ(navigation.game(), QStringLiteral("Diğer"));
    L10n::use(QStringLiteral("en"));
    EXPECT_EQ(navigation.game(), QStringLiteral("Other"));
    navigation.showOther();
    EXPECT_EQ(navigation.page(), page);
    EXPECT_EQ(pageText(page), QStringLiteral("library (no game)"));
    navigation.showGame(QStringLiteral("Other"));
    EXPECT_NE(navigation.page(), page) << "a game may have that name";
    EXPECT_FALSE(navigation.isOther());
    L10n::use(QStringLiteral("tr"));
}

TEST_F(NavigationTest, FormatsPagesAsText)
{
    EXPECT_EQ(pageText({}), QStringLiteral("library"));
    EXPECT_EQ(pageText({.game = QStringLiteral("Dota 2")}), QStringLiteral("library Dota 2"));
    EXPECT_EQ(pageText({.kind = Pages::Kind::Matches}), QStringLiteral("matches"));
    EXPECT_EQ(
        pageText({.kind = Pages::Kind::Review, .match = QUuid(QStringLiteral("8f14e45f-ceea-467f-9575-1b2a3c4d5e6f"))}),
        QStringLiteral("review 8F14E45F-CEEA-467F-9575-1B2A3C4D5E6F"));
}

} // namespace
} // namespace quelto
