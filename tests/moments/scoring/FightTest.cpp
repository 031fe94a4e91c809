// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/scoring/Fight.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct FightRow {
    const char* name;
    Fight fight;
    int score;
    QString label;
};

class FightScore : public testing::TestWithParam<FightRow> { };

TEST_P(FightScore, PointsAndHeadlineMatchTable)
{
    EXPECT_EQ(GetParam().fight.score(), GetParam().score);
    EXPECT_EQ(GetParam().fight.label(), GetParam().label);
}

const auto Tower = QStringLiteral("Kule");
const auto Baron = QStringLiteral("Baron");

INSTANTIATE_TEST_SUITE_P(
    Cases, FightScore,
    testing::Values(
        FightRow{"SoloKill", {.kills = 1, .soloKills = 1}, 15, QStringLiteral("Solo Kill")},
        FightRow{"AssistedKill", {.kills = 1}, 10, QStringLiteral("Kill")},
        FightRow{"ThreeKills", {.kills = 3}, 30, QStringLiteral("3 Kill")},
        FightRow{"DoubleKill", {.kills = 2, .maxMulti = 2}, 28, QStringLiteral("Double Kill")},
        FightRow{"TripleKillWithAssists", {.kills = 3, .assists = 2, .maxMulti = 3}, 66, QStringLiteral("Triple Kill")},
        FightRow{"QuadraKill", {.kills = 4, .maxMulti = 4}, 100, QStringLiteral("Quadra Kill")},
        FightRow{"Pentakill", {.kills = 5, .maxMulti = 5}, 170, QStringLiteral("PENTAKILL")},
        FightRow{"PentakillAboveFiveScoresLikeFive", {.kills = 7, .maxMulti = 7}, 190, QStringLiteral("PENTAKILL")},
        FightRow{
            "UltraKill", {.style = FightStyle::dota, .kills = 4, .maxMulti = 4}, 100, QStringLiteral("Ultra Kill")},
        FightRow{"Rampage", {.style = FightStyle::dota, .kills = 5, .maxMulti = 5}, 170, QStringLiteral("RAMPAGE")},
        FightRow{"StreakAboveFiveScoresLikeFive",
                 {.style = FightStyle::dota, .kills = 7, .maxMulti = 7},
                 190,
                 QStringLiteral("RAMPAGE")},
        FightRow{"MultikillWithMissedKills", {.kills = 1, .maxMulti = 3}, 60, QStringLiteral("Triple Kill")},
        FightRow{"MoreKillsThanMultikill", {.kills = 5, .maxMulti = 2}, 58, QStringLiteral("Double Kill")},
        FightRow{"BaronSteal", {.steals = {Baron}}, 100, QStringLiteral("Baron Çalma!")},
        FightRow{"UnlistedSteal", {.steals = {QStringLiteral("Roshan")}}, 40, QStringLiteral("Roshan Çalma!")},
        FightRow{"OnlyFirstStealIsInHeadline",
                 {.kills = 5, .maxMulti = 5, .steals = {QStringLiteral("Ejderha"), Baron}},
                 330,
                 QStringLiteral("Ejderha Çalma!")},
        FightRow{"OneTower", {.objectives = {Tower}}, 4, QStringLiteral("Kule")},
        FightRow{"ThreeTowers", {.objectives = {Tower, Tower, Tower}}, 12, QStringLiteral("3x Kule")},
        FightRow{
            "FirstTower", {.firstTower = true, .objectives = {Tower, Tower, Tower}}, 12, QStringLiteral("İlk Kule")},
        FightRow{
            "FirstTowerAfterBaron", {.firstTower = true, .objectives = {Baron, Tower}}, 29, QStringLiteral("Baron")},
        FightRow{"UnlistedObjective", {.objectives = {QStringLiteral("Voidgrub")}}, 0, QStringLiteral("Voidgrub")},
        FightRow{"AssistsOnly", {.assists = 2}, 6, QStringLiteral("2 Asist")},
        FightRow{"AceWithoutKill", {.ace = true}, 5, QStringLiteral("0 Asist + Ace")},
        FightRow{"AceAndFirstBlood",
                 {.kills = 1, .soloKills = 1, .ace = true, .firstBlood = true},
                 38,
                 QStringLiteral("Solo Kill + Ace + İlk Kan")},
        FightRow{"Clutch",
                 {.kills = 4, .assists = 1, .maxMulti = 4, .minHealth = 0.1},
                 123,
                 QStringLiteral("Kıl Payı Quadra Kill")},
        FightRow{"ClutchAtHealthLimit", {.kills = 1, .minHealth = 0.15}, 30, QStringLiteral("Kıl Payı Kill")},
        FightRow{"NoClutchAboveHealthLimit", {.kills = 1, .minHealth = 0.16}, 10, QStringLiteral("Kill")},
        FightRow{"NoClutchAfterDeath", {.kills = 3, .deaths = 1, .minHealth = 0.01}, 22, QStringLiteral("3 Kill")},
        FightRow{"KillAndDeath", {.kills = 1, .deaths = 1}, 2, QStringLiteral("Kill")},
        FightRow{"ScoreIsNeverNegative", {.kills = 1, .deaths = 2}, 0, QStringLiteral("Kill")},
        FightRow{"NegativeKillsCountAsZero", {.kills = -3, .assists = 1}, 3, QStringLiteral("1 Asist")},
        FightRow{"CustomLabel",
                 {.style = FightStyle::wow, .bonus = 50, .customLabel = QStringLiteral("Boss")},
                 50,
                 QStringLiteral("Boss")},
        FightRow{"CustomLabelWithKills",
                 {.style = FightStyle::wow, .kills = 2, .bonus = 50, .customLabel = QStringLiteral("Boss")},
                 70,
                 QStringLiteral("Boss + 2 Kill")}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(FightSeal, GivesNoMomentBelowLowestTier)
{
    EXPECT_EQ(sealed({.objectives = {Tower}}, {.game = QStringLiteral("Dota 2"), .now = 7}), std::nullopt);
    EXPECT_TRUE(sealed({.objectives = {Tower, Tower}}, {.game = QStringLiteral("Dota 2"), .now = 7}));
}

int clipSeconds(double startTime, double lastTime, double now)
{
    return sealed({.startTime = startTime, .lastTime = lastTime, .kills = 1}, {.now = now})->seconds;
}

TEST(FightSeal, ClipCoversLeadInFightAndLeadOut)
{
    EXPECT_EQ(clipSeconds(100, 100, 100), 15);
    EXPECT_EQ(clipSeconds(100, 110, 110), 20);
    EXPECT_EQ(clipSeconds(100, 110, 117), 25);
    EXPECT_EQ(clipSeconds(100, 103.5, 110.5), 19) << "18.5 rounds away from zero";
    EXPECT_EQ(clipSeconds(100, 180, 182), 90);
    EXPECT_EQ(clipSeconds(100, 900, 907), 90);
}

TEST(FightSeal, UsesClipLengthFromWatcher)
{
    EXPECT_EQ(sealed({.kills = 1}, {.now = 5, .seconds = 45})->seconds, 45);
}

TEST(FightSeal, MarkersCountBackFromSealTime)
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

TEST(Fight, KeepsNewestThousandMarkers)
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
