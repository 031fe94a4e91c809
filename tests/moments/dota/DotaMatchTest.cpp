// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaMatch.h"

#include "tests/moments/dota/EventText.h"

#include <gtest/gtest.h>

#include <functional>

namespace quelto {
namespace {

const QString InProgress = QStringLiteral("DOTA_GAMERULES_STATE_GAME_IN_PROGRESS");
const QString PostGame = QStringLiteral("DOTA_GAMERULES_STATE_POST_GAME");

QStringList texts(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const auto* text : list) {
        result.append(QString::fromUtf8(text));
    }
    return result;
}

/// A game client. Tests change the state that the next post sends.
struct Client {
    DotaState state{.hasMatch = true,
                    .gameState = InProgress,
                    .matchId = QStringLiteral("1"),
                    .teamName = QStringLiteral("radiant")};
    DotaMatch match;

    QStringList post(double now) { return eventTexts(match.posted(state, now)); }
    QStringList tick(double now) { return eventTexts(match.tick(now)); }
    /// Joins the match, which sets the starting values of the counters.
    void join(double now = 100)
    {
        post(now);
        EXPECT_EQ(post(now), QStringList());
    }
    void win() { state.winTeam = state.teamName; }
};

struct ChangeRow {
    const char* name;
    /// The change between the posts at 100 and 101.
    std::function<void(DotaState&)> change;
    /// The expected moment, from the post at 101 or the tick at 109.
    const char* moment;
};

class DotaChange : public testing::TestWithParam<ChangeRow> { };

TEST_P(DotaChange, MomentMatchesTable)
{
    Client client;
    client.join();
    GetParam().change(client.state);
    auto events = client.post(101) + client.tick(108.9);
    events += client.tick(109);
    EXPECT_EQ(events.join(u'\n'), QString::fromUtf8(GetParam().moment));
}

void win(DotaState& state)
{
    state.winTeam = state.teamName;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DotaChange,
    testing::Values(
        ChangeRow{"Nothing", [](DotaState&) {}, ""},
        ChangeRow{"OneKill", [](DotaState& state) { state.kills = 1; }, "BASIT 10 16s Kill [kill@8]"},
        ChangeRow{"TwoKillsInOnePost", [](DotaState& state) { state.kills = 2; },
                  "BASIT 28 16s Double Kill [kill@8 multikill_2@8]"},
        ChangeRow{"ThreeKillsInOnePost", [](DotaState& state) { state.kills = 3; },
                  "ORTA 60 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8]"},
        ChangeRow{"FourKillsInOnePost", [](DotaState& state) { state.kills = 4; },
                  "EFSANE 100 16s Ultra Kill [kill@8 multikill_2@8 multikill_3@8 multikill_4@8]"},
        ChangeRow{"FiveKillsInOnePost", [](DotaState& state) { state.kills = 5; },
                  "EFSANE 170 16s RAMPAGE [kill@8 multikill_2@8 multikill_3@8 multikill_4@8 multikill_5@8]"},
        ChangeRow{
            "SixKillsScoreLikeFive", [](DotaState& state) { state.kills = 6; },
            "EFSANE 180 16s RAMPAGE [kill@8 multikill_2@8 multikill_3@8 multikill_4@8 multikill_5@8 multikill_6@8]"},
        ChangeRow{"DeathAndAssist",
                  [](DotaState& state) {
                      state.deaths = 1;
                      state.assists = 1;
                  },
                  ""},
        ChangeRow{"KillWithDeath",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.deaths = 1;
                  },
                  ""},
        ChangeRow{"ThreeAssists", [](DotaState& state) { state.assists = 3; }, "BASIT 9 16s 3 Asist []"},
        ChangeRow{"TwoAssists", [](DotaState& state) { state.assists = 2; }, ""},
        ChangeRow{"SeveralDeathsGiveOneMarker",
                  [](DotaState& state) {
                      state.kills = 3;
                      state.deaths = 3;
                  },
                  "ORTA 36 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8 my_death@8]"},
        ChangeRow{"Aegis", [](DotaState& state) { state.hasAegis = true; }, "BASIT 25 16s Aegis [objective_Aegis@8]"},
        ChangeRow{"WinWithoutKills", win, "ORTA 30 15s Zafer [victory@2]"},
        ChangeRow{"Loss", [](DotaState& state) { state.winTeam = QStringLiteral("dire"); }, ""},
        ChangeRow{"NoWinner", [](DotaState& state) { state.winTeam = QStringLiteral("none"); }, ""},
        ChangeRow{"TeamNoneDoesNotWin",
                  [](DotaState& state) {
                      state.teamName = QStringLiteral("none");
                      state.winTeam = QStringLiteral("none");
                  },
                  ""},
        ChangeRow{"AllMarkersInOrder",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.deaths = 1;
                      state.assists = 1;
                      state.hasAegis = true;
                      win(state);
                  },
                  "ORTA 60 15s Kill [kill@2 my_death@2 objective_Aegis@2 victory@2]"},
        ChangeRow{"KillAtHealthLimit",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.healthPercent = 15;
                  },
                  "ORTA 30 16s Kıl Payı Kill [kill@8]"},
        ChangeRow{"KillAboveHealthLimit",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.healthPercent = 16;
                  },
                  "BASIT 10 16s Kill [kill@8]"},
        ChangeRow{"ZeroHealthIsNotSampled",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.healthPercent = 0;
                  },
                  "BASIT 10 16s Kill [kill@8]"},
        ChangeRow{"DeadHeroIsNotSampled",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.isHeroAlive = false;
                      state.healthPercent = 5;
                  },
                  "BASIT 10 16s Kill [kill@8]"},
        ChangeRow{"LivingHeroIsSampled",
                  [](DotaState& state) {
                      state.kills = 1;
                      state.isHeroAlive = true;
                      state.healthPercent = 5;
                  },
                  "ORTA 30 16s Kıl Payı Kill [kill@8]"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DotaMatch, FirstPostSetsStartingValues)
{
    Client client;
    client.state.kills = 3;
    client.state.hasAegis = true;
    client.win();
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    EXPECT_EQ(client.post(101), QStringList());
    EXPECT_EQ(client.tick(120), QStringList());
}

TEST(DotaMatch, IgnoresChangesBeforeGameStarts)
{
    for (const auto* phase : {"DOTA_GAMERULES_STATE_INIT", "DOTA_GAMERULES_STATE_WAIT_FOR_PLAYERS_TO_LOAD",
                              "DOTA_GAMERULES_STATE_HERO_SELECTION", "DOTA_GAMERULES_STATE_STRATEGY_TIME",
                              "DOTA_GAMERULES_STATE_DISCONNECT", "DOTA_GAMERULES_STATE_GAME_IN_PROGRES", ""}) {
        Client client;
        client.join();
        client.state.gameState = QString::fromUtf8(phase);
        client.state.kills = 5;
        client.win();
        EXPECT_EQ(client.post(101), QStringList());
        EXPECT_EQ(client.tick(120), QStringList());
        // Those values are the starting values now, so they do not count later either.
        client.state.gameState = InProgress;
        EXPECT_EQ(client.post(121), QStringList());
        EXPECT_EQ(client.tick(130), QStringList());
    }
}

TEST(DotaMatch, CountsInEveryLivePhase)
{
    for (const auto* phase : {"DOTA_GAMERULES_STATE_PRE_GAME", "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS"}) {
        Client client;
        client.state.gameState = QString::fromUtf8(phase);
        client.join();
        client.state.kills = 1;
        client.post(101);
        EXPECT_EQ(client.tick(109), texts({"BASIT 10 16s Kill [kill@8]"})) << phase;
    }
    Client client;
    client.join();
    client.state.gameState = PostGame;
    client.win();
    EXPECT_EQ(client.post(101), texts({"ended", "ORTA 30 15s Zafer [victory@2]"}));
}

TEST(DotaMatch, KillsEighteenSecondsApartChain)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    client.tick(109);
    client.state.kills = 2;
    client.post(119);
    EXPECT_EQ(client.tick(127), texts({"BASIT 28 16s Double Kill [multikill_2@8]"}));
}

TEST(DotaMatch, KillsFurtherApartStartNewChain)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    client.tick(109);
    client.state.kills = 2;
    client.post(119.1);
    EXPECT_EQ(client.tick(127.1), texts({"BASIT 10 16s Kill [kill@8]"}));
}

TEST(DotaMatch, ChainContinuesAfterFight)
{
    // The chain continues from the previous fight; each fight scores its own largest multikill.
    Client client;
    client.join();
    client.state.kills = 3;
    client.post(101);
    EXPECT_EQ(client.tick(109), texts({"ORTA 60 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8]"}));
    client.state.kills = 4;
    client.post(115);
    EXPECT_EQ(client.tick(123), texts({"EFSANE 100 16s Ultra Kill [multikill_4@8]"}));
    // An assist starts a fight without a multikill, even during a chain.
    client.state.assists = 3;
    client.post(125);
    EXPECT_EQ(client.tick(133), texts({"BASIT 9 16s 3 Asist []"}));
}

TEST(DotaMatch, CombinesChangesIntoOneFight)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    EXPECT_EQ(client.tick(108), QStringList());
    client.state.kills = 2;
    client.post(108.5);
    client.state.assists = 1;
    client.post(116);
    EXPECT_EQ(client.tick(123.9), QStringList());
    EXPECT_EQ(client.tick(124), texts({"ORTA 31 31s Double Kill [kill@23 multikill_2@15.5]"}));
}

TEST(DotaMatch, ChangeAfterTwelveSecondsStartsNewFight)
{
    // There are no ticks between the posts, as after a stall of the machine.
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    client.state.kills = 2;
    EXPECT_EQ(client.post(113), QStringList());
    client.state.kills = 3;
    EXPECT_EQ(client.post(125.1), texts({"BASIT 28 32s Double Kill [kill@24.1 multikill_2@12.1]"}));
    EXPECT_EQ(client.tick(133.1), texts({"ORTA 60 16s Triple Kill [multikill_3@8]"}));
}

TEST(DotaMatch, SamplesHealthOfEveryPostDuringFight)
{
    Client client;
    client.join();
    client.state.healthPercent = 3;
    client.post(100.5);
    client.state.healthPercent = 90;
    client.state.kills = 1;
    client.post(101);
    client.state.healthPercent = 12;
    client.post(102);
    client.state.healthPercent = 80;
    client.post(103);
    EXPECT_EQ(client.tick(109), texts({"ORTA 30 16s Kıl Payı Kill [kill@8]"}));
}

TEST(DotaMatch, AegisCountsOnceUntilLost)
{
    Client client;
    client.join();
    client.state.hasAegis = true;
    client.post(101);
    client.post(102);
    EXPECT_EQ(client.tick(109), texts({"BASIT 25 16s Aegis [objective_Aegis@8]"}));
    client.post(120);
    EXPECT_EQ(client.tick(130), QStringList());
    client.state.hasAegis = false;
    client.post(131);
    client.state.hasAegis = true;
    client.post(132);
    EXPECT_EQ(client.tick(140), texts({"BASIT 25 16s Aegis [objective_Aegis@8]"}));
}

TEST(DotaMatch, WinCountsOnceAndSealsAtOnce)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    client.win();
    EXPECT_EQ(client.post(103), texts({"ORTA 40 15s Kill [kill@4 victory@2]"}));
    EXPECT_EQ(client.post(104), QStringList());
    EXPECT_EQ(client.tick(120), QStringList());
}

TEST(DotaMatch, DecreasedCounterIsNewStartingValue)
{
    Client client;
    client.state.kills = 9;
    client.join();
    client.state.kills = 0;
    EXPECT_EQ(client.post(101), QStringList());
    client.state.kills = 1;
    client.post(102);
    EXPECT_EQ(client.tick(110), texts({"BASIT 10 16s Kill [kill@8]"}));
}

TEST(DotaMatch, ReportsHeroWhenKnownAndAddsItToHeadlines)
{
    Client client;
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    client.state.heroName = QStringLiteral("npc_dota_hero_zuus");
    EXPECT_EQ(client.post(101), texts({"in game as Zeus"}));
    client.state.kills = 1;
    EXPECT_EQ(client.post(102), QStringList());
    EXPECT_EQ(client.tick(110), texts({"BASIT 10 16s Kill (Zeus) [kill@8]"}));
}

TEST(DotaMatch, ReportsGameEndOnceAndStaysInGame)
{
    Client client;
    client.join();
    client.state.gameState = PostGame;
    EXPECT_EQ(client.post(101), texts({"ended"}));
    EXPECT_EQ(client.post(102), QStringList());
    client.state.gameState = InProgress;
    EXPECT_EQ(client.post(103), QStringList());
    client.state.gameState = PostGame;
    EXPECT_EQ(client.post(104), QStringList());
}

TEST(DotaMatch, FirstPostAfterGameReportsEndFirst)
{
    Client client;
    client.state.gameState = PostGame;
    EXPECT_EQ(client.post(100), texts({"ended", "in game", "detected"}));
}

TEST(DotaMatch, EndsAtMenu)
{
    Client client;
    client.state.heroName = QStringLiteral("npc_dota_hero_axe");
    client.join();
    client.state.hasMatch = false;
    EXPECT_EQ(client.post(101), texts({"not in game", "ended"}));
    EXPECT_EQ(client.post(102), QStringList());
}

TEST(DotaMatch, KeepsCountersAtMenu)
{
    // After a return from the menu to the same match, the counters continue. A fight that is open at the menu ends
    // normally, without a hero in its headline.
    Client client;
    client.state.heroName = QStringLiteral("npc_dota_hero_axe");
    client.join();
    client.state.kills = 1;
    client.post(101);
    client.state.hasMatch = false;
    client.post(102);
    EXPECT_TRUE(client.match.needsTick());
    EXPECT_EQ(client.tick(109), texts({"BASIT 10 16s Kill [kill@8]"}));
    client.state.hasMatch = true;
    client.state.kills = 2;
    EXPECT_EQ(client.post(130), texts({"in game as Axe", "detected"}));
    EXPECT_EQ(client.tick(138), texts({"BASIT 10 16s Kill (Axe) [kill@8]"}));
}

TEST(DotaMatch, NewMatchIdEndsMatchWithoutDetectingNext)
{
    // The player has not been at the menu, so the next match is not detected.
    Client client;
    client.join();
    client.state.kills = 3;
    client.post(101);
    client.state.matchId = QStringLiteral("2");
    EXPECT_EQ(client.post(102), texts({"ended"}));
    // The open fight is dropped, and counting starts again.
    EXPECT_EQ(client.tick(120), QStringList());
    client.state.kills = 4;
    client.post(121);
    EXPECT_EQ(client.tick(129), texts({"BASIT 10 16s Kill [kill@8]"}));
}

TEST(DotaMatch, ChainEndsWithMatch)
{
    Client client;
    client.join();
    client.state.kills = 4;
    client.post(101);
    client.state.matchId = QStringLiteral("2");
    client.post(102);
    client.state.kills = 5;
    client.post(103);
    EXPECT_EQ(client.tick(111), texts({"BASIT 10 16s Kill [kill@8]"}));
}

TEST(DotaMatch, LoadingMatchDoesNotEndWhenItGetsItsId)
{
    Client client;
    client.state.matchId = QStringLiteral("0");
    client.state.gameState = QStringLiteral("DOTA_GAMERULES_STATE_WAIT_FOR_PLAYERS_TO_LOAD");
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    client.state.matchId = QStringLiteral("7463520011");
    EXPECT_EQ(client.post(101), QStringList());
    // A change from a match to the loading id ends the match.
    client.state.matchId = QStringLiteral("0");
    EXPECT_EQ(client.post(102), texts({"ended"}));
    client.state.matchId = QStringLiteral("7463520012");
    EXPECT_EQ(client.post(103), QStringList());
}

TEST(DotaMatch, MenuBetweenMatchesGivesNoSecondEnd)
{
    Client client;
    client.join();
    client.state.hasMatch = false;
    client.post(101);
    client.state.hasMatch = true;
    client.state.matchId = QStringLiteral("2");
    EXPECT_EQ(client.post(102), texts({"in game", "detected"}));
}

TEST(DotaMatch, EndsAfterThirtyFiveSecondsWithoutPost)
{
    Client client;
    client.join(100);
    EXPECT_EQ(client.tick(135), QStringList());
    EXPECT_EQ(client.tick(135.1), texts({"not in game", "ended"}));
    EXPECT_EQ(client.tick(136), QStringList());
    EXPECT_FALSE(client.match.needsTick());
    // The next post sets new starting values.
    client.state.kills = 5;
    EXPECT_EQ(client.post(200), texts({"in game", "detected"}));
    EXPECT_EQ(client.tick(210), QStringList());
}

TEST(DotaMatch, UnchangedPostsKeepMatchOpen)
{
    Client client;
    client.join(100);
    client.post(130);
    EXPECT_EQ(client.tick(165), QStringList());
    EXPECT_EQ(client.tick(165.5), texts({"not in game", "ended"}));
}

TEST(DotaMatch, SealsFightBeforePostTimeout)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    EXPECT_EQ(client.tick(150), texts({"BASIT 10 57s Kill [kill@49]", "not in game", "ended"}));
}

TEST(DotaMatch, ResetDropsOpenFight)
{
    Client client;
    client.join();
    client.state.kills = 3;
    client.post(101);
    client.match.reset();
    EXPECT_FALSE(client.match.needsTick());
    EXPECT_EQ(client.tick(120), QStringList());
    client.state.kills = 5;
    EXPECT_EQ(client.post(121), texts({"in game", "detected"}));
    EXPECT_EQ(client.tick(130), QStringList());
}

TEST(DotaMatch, InvalidCountersStayBounded)
{
    // The counters go up and down with every post, without a quiet period.
    Client client;
    client.join();
    double now = 101;
    for (int i = 0; i < 2'000; ++i) {
        client.state.kills = i % 2 == 0 ? 1000 : 0;
        client.state.deaths = client.state.kills;
        client.state.assists = client.state.kills;
        client.state.hasAegis = i % 2 == 0;
        ASSERT_EQ(client.match.posted(client.state, now += 0.001).size(), 0);
    }
    const auto events = client.match.tick(now + 8);
    ASSERT_EQ(events.size(), 1);
    EXPECT_LE(std::get<Moment>(events.first()).events.size(), 1000);
    EXPECT_GT(std::get<Moment>(events.first()).score, 0);
}

TEST(DotaMatch, NeedsNoTickBeforeGame)
{
    DotaMatch match;
    EXPECT_FALSE(match.needsTick());
    match.posted(DotaState{}, 100);
    EXPECT_FALSE(match.needsTick());
}

} // namespace
} // namespace quelto
