// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/Fight.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Scored {
    const char* name;
    Fight fight;
    int score;
    QString label;
};

class FightTable : public testing::TestWithParam<Scored> { };

TEST_P(FightTable, HasItsPointsAndItsHeadline)
{
    EXPECT_EQ(GetParam().fight.score(), GetParam().score);
    EXPECT_EQ(GetParam().fight.label(), GetParam().label);
}

const auto Tower = QStringLiteral("Kule");
const auto Baron = QStringLiteral("Baron");

INSTANTIATE_TEST_SUITE_P(
    Cases, FightTable,
    testing::Values(
        Scored{"SoloKill", {.kills = 1, .soloKills = 1}, 15, QStringLiteral("Solo Kill")},
        Scored{"KillWithHelp", {.kills = 1}, 10, QStringLiteral("Kill")},
        Scored{"ThreeKills", {.kills = 3}, 30, QStringLiteral("3 Kill")},
        Scored{"DoubleKill", {.kills = 2, .maxMulti = 2}, 28, QStringLiteral("Double Kill")},
        Scored{"TripleKillWithAssists", {.kills = 3, .assists = 2, .maxMulti = 3}, 66, QStringLiteral("Triple Kill")},
        Scored{"QuadraKill", {.kills = 4, .maxMulti = 4}, 100, QStringLiteral("Quadra Kill")},
        Scored{"Pentakill", {.kills = 5, .maxMulti = 5}, 170, QStringLiteral("PENTAKILL")},
        Scored{"PentakillAboveFivePaysForFive", {.kills = 7, .maxMulti = 7}, 190, QStringLiteral("PENTAKILL")},
        Scored{"UltraKill", {.style = FightStyle::dota, .kills = 4, .maxMulti = 4}, 100, QStringLiteral("Ultra Kill")},
        Scored{"Rampage", {.style = FightStyle::dota, .kills = 5, .maxMulti = 5}, 170, QStringLiteral("RAMPAGE")},
        Scored{"StreakAboveFivePaysForFive",
               {.style = FightStyle::dota, .kills = 7, .maxMulti = 7},
               190,
               QStringLiteral("RAMPAGE")},
        Scored{"MultikillWhoseStepsWereMissed", {.kills = 1, .maxMulti = 3}, 60, QStringLiteral("Triple Kill")},
        Scored{"MoreKillsThanTheMultikill", {.kills = 5, .maxMulti = 2}, 58, QStringLiteral("Double Kill")},
        Scored{"BaronSteal", {.steals = {Baron}}, 100, QStringLiteral("Baron Çalma!")},
        Scored{"UnlistedSteal", {.steals = {QStringLiteral("Roshan")}}, 40, QStringLiteral("Roshan Çalma!")},
        Scored{"OnlyTheFirstStealIsNamed",
               {.kills = 5, .maxMulti = 5, .steals = {QStringLiteral("Ejderha"), Baron}},
               330,
               QStringLiteral("Ejderha Çalma!")},
        Scored{"OneTower", {.objectives = {Tower}}, 4, QStringLiteral("Kule")},
        Scored{"ThreeTowers", {.objectives = {Tower, Tower, Tower}}, 12, QStringLiteral("3x Kule")},
        Scored{"FirstTower", {.firstTower = true, .objectives = {Tower, Tower, Tower}}, 12, QStringLiteral("İlk Kule")},
        Scored{
            "FirstTowerBehindABaron", {.firstTower = true, .objectives = {Baron, Tower}}, 29, QStringLiteral("Baron")},
        Scored{"UnlistedObjective", {.objectives = {QStringLiteral("Voidgrub")}}, 0, QStringLiteral("Voidgrub")},
        Scored{"AssistsAlone", {.assists = 2}, 6, QStringLiteral("2 Asist")},
        Scored{"AceWithoutAKill", {.ace = true}, 5, QStringLiteral("0 Asist + Ace")},
        Scored{"AceAndFirstBlood",
               {.kills = 1, .soloKills = 1, .ace = true, .firstBlood = true},
               38,
               QStringLiteral("Solo Kill + Ace + İlk Kan")},
        Scored{"Clutch",
               {.kills = 4, .assists = 1, .maxMulti = 4, .minHealth = 0.1},
               123,
               QStringLiteral("Kıl Payı Quadra Kill")},
        Scored{"ClutchAtItsEdge", {.kills = 1, .minHealth = 0.15}, 30, QStringLiteral("Kıl Payı Kill")},
        Scored{"NoClutchAboveIt", {.kills = 1, .minHealth = 0.16}, 10, QStringLiteral("Kill")},
        Scored{"NoClutchAfterADeath", {.kills = 3, .deaths = 1, .minHealth = 0.01}, 22, QStringLiteral("3 Kill")},
        Scored{"AKillAndADeath", {.kills = 1, .deaths = 1}, 2, QStringLiteral("Kill")},
        Scored{"NeverNegative", {.kills = 1, .deaths = 2}, 0, QStringLiteral("Kill")},
        Scored{"NegativeKillsCountAsNone", {.kills = -3, .assists = 1}, 3, QStringLiteral("1 Asist")},
        Scored{"CustomLabel",
               {.style = FightStyle::wow, .bonus = 50, .customLabel = QStringLiteral("Boss")},
               50,
               QStringLiteral("Boss")},
        Scored{"CustomLabelWithKills",
               {.style = FightStyle::wow, .kills = 2, .bonus = 50, .customLabel = QStringLiteral("Boss")},
               70,
               QStringLiteral("Boss + 2 Kill")}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(FightSealing, LeavesNoTraceOfAFightThatWasWorthLittle)
{
    EXPECT_EQ(sealed({.objectives = {Tower}}, {.game = QStringLiteral("Dota 2"), .now = 7}), std::nullopt);
    EXPECT_TRUE(sealed({.objectives = {Tower, Tower}}, {.game = QStringLiteral("Dota 2"), .now = 7}));
}

int secondsOf(double start, double last, double now)
{
    return sealed({.startTime = start, .lastTime = last, .kills = 1}, {.now = now})->seconds;
}

TEST(FightSealing, MakesAClipOfLeadInSpanAndALittleMore)
{
    EXPECT_EQ(secondsOf(100, 100, 100), 15);
    EXPECT_EQ(secondsOf(100, 110, 110), 20);
    EXPECT_EQ(secondsOf(100, 110, 117), 25);
    EXPECT_EQ(secondsOf(100, 103.5, 110.5), 19) << "18.5 rounds away from zero";
    EXPECT_EQ(secondsOf(100, 180, 182), 90);
    EXPECT_EQ(secondsOf(100, 900, 907), 90);
}

TEST(FightSealing, TakesALengthThatTheWatcherKnows)
{
    EXPECT_EQ(sealed({.kills = 1}, {.now = 5, .seconds = 45})->seconds, 45);
}

TEST(FightSealing, CountsMarkersBackFromTheSealing)
{
    const auto moment = sealed(
        {.kills = 1, .events = {FightEvent{100, QStringLiteral("kill")}, FightEvent{120, QStringLiteral("ace")}}},
        {.game = QStringLiteral("League of Legends"), .now = 110, .character = QStringLiteral("Ahri")});
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->game, QStringLiteral("League of Legends"));
    EXPECT_EQ(moment->label, QStringLiteral("Kill (Ahri)"));
    ASSERT_EQ(moment->events.size(), 2);
    EXPECT_EQ(moment->events.at(0).secondsBeforeEnd, 10.0);
    EXPECT_EQ(moment->events.at(1).secondsBeforeEnd, 0.0);
    EXPECT_EQ(momentLine(*moment), QStringLiteral("Basit • Kill (Ahri) • 10 puan"));
}

TEST(Fight, KeepsOnlyTheNewestOfTooManyMarkers)
{
    Fight fight{.style = FightStyle::dota};
    for (int i = 0; i < 1500; ++i) {
        fight.addEvent(i, QStringLiteral("kill"));
    }
    EXPECT_EQ(fight.events.size(), 1000);
    EXPECT_EQ(fight.events.last().time, 1499);
}

} // namespace
} // namespace quelto
