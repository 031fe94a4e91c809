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

/// A player whose client posts; state is what the next post tells.
struct Client {
    DotaState state{.hasMatch = true,
                    .gameState = InProgress,
                    .matchId = QStringLiteral("1"),
                    .teamName = QStringLiteral("radiant")};
    DotaMatch match;

    QStringList post(double now) { return eventText(match.posted(state, now)); }
    QStringList tick(double now) { return eventText(match.tick(now)); }
    /// In the match, with the counters counted from; nothing has been scored.
    void join(double now = 100)
    {
        post(now);
        EXPECT_EQ(post(now), QStringList());
    }
    void win() { state.winTeam = state.teamName; }
};

struct Scored {
    const char* name;
    /// Happens between the post at 100 and that at 101.
    std::function<void(DotaState&)> change;
    /// At the tick at 109, or with the post.
    const char* moment;
};

class DotaChange : public testing::TestWithParam<Scored> { };

TEST_P(DotaChange, IsWorth)
{
    Client client;
    client.join();
    GetParam().change(client.state);
    auto news = client.post(101) + client.tick(108.9);
    news += client.tick(109);
    const auto wanted = QString::fromUtf8(GetParam().moment);
    EXPECT_EQ(news.join(u'\n'), wanted);
}

void win(DotaState& state)
{
    state.winTeam = state.teamName;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DotaChange,
    testing::Values(
        Scored{"Nothing", [](DotaState&) {}, ""},
        Scored{"OneKill", [](DotaState& state) { state.kills = 1; }, "BASIT 10 16s Kill [kill@8]"},
        Scored{"TwoKillsInOnePost", [](DotaState& state) { state.kills = 2; },
               "BASIT 28 16s Double Kill [kill@8 multikill_2@8]"},
        Scored{"ThreeKillsInOnePost", [](DotaState& state) { state.kills = 3; },
               "ORTA 60 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8]"},
        Scored{"FourKillsInOnePost", [](DotaState& state) { state.kills = 4; },
               "EFSANE 100 16s Ultra Kill [kill@8 multikill_2@8 multikill_3@8 multikill_4@8]"},
        Scored{"FiveKillsInOnePost", [](DotaState& state) { state.kills = 5; },
               "EFSANE 170 16s RAMPAGE [kill@8 multikill_2@8 multikill_3@8 multikill_4@8 multikill_5@8]"},
        Scored{"SixKillsPayForFiveAtATime", [](DotaState& state) { state.kills = 6; },
               "EFSANE 180 16s RAMPAGE [kill@8 multikill_2@8 multikill_3@8 multikill_4@8 multikill_5@8 multikill_6@8]"},
        Scored{"ADeathAndAnAssist",
               [](DotaState& state) {
                   state.deaths = 1;
                   state.assists = 1;
               },
               ""},
        Scored{"AKillWithADeath",
               [](DotaState& state) {
                   state.kills = 1;
                   state.deaths = 1;
               },
               ""},
        Scored{"ThreeAssists", [](DotaState& state) { state.assists = 3; }, "BASIT 9 16s 3 Asist []"},
        Scored{"TwoAssists", [](DotaState& state) { state.assists = 2; }, ""},
        Scored{"SeveralDeathsAreOneMarker",
               [](DotaState& state) {
                   state.kills = 3;
                   state.deaths = 3;
               },
               "ORTA 36 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8 my_death@8]"},
        Scored{"TheAegis", [](DotaState& state) { state.hasAegis = true; }, "BASIT 25 16s Aegis [objective_Aegis@8]"},
        Scored{"AWinWithoutKills", win, "ORTA 30 15s Zafer [victory@2]"},
        Scored{"ALoss", [](DotaState& state) { state.winTeam = QStringLiteral("dire"); }, ""},
        Scored{"NobodyHasWon", [](DotaState& state) { state.winTeam = QStringLiteral("none"); }, ""},
        Scored{"AWinOfNobody",
               [](DotaState& state) {
                   state.teamName = QStringLiteral("none");
                   state.winTeam = QStringLiteral("none");
               },
               ""},
        Scored{"AllAtOnceInTheOrderTold",
               [](DotaState& state) {
                   state.kills = 1;
                   state.deaths = 1;
                   state.assists = 1;
                   state.hasAegis = true;
                   win(state);
               },
               "ORTA 60 15s Kill [kill@2 my_death@2 objective_Aegis@2 victory@2]"},
        Scored{"AKillWithTheLastOfTheHealth",
               [](DotaState& state) {
                   state.kills = 1;
                   state.healthPercent = 15;
               },
               "ORTA 30 16s Kıl Payı Kill [kill@8]"},
        Scored{"AKillWithALittleMore",
               [](DotaState& state) {
                   state.kills = 1;
                   state.healthPercent = 16;
               },
               "BASIT 10 16s Kill [kill@8]"},
        Scored{"AHeroAtZeroIsNotSampled",
               [](DotaState& state) {
                   state.kills = 1;
                   state.healthPercent = 0;
               },
               "BASIT 10 16s Kill [kill@8]"},
        Scored{"ADeadHeroIsNotSampled",
               [](DotaState& state) {
                   state.kills = 1;
                   state.isHeroAlive = false;
                   state.healthPercent = 5;
               },
               "BASIT 10 16s Kill [kill@8]"},
        Scored{"ALivingHeroIsSampled",
               [](DotaState& state) {
                   state.kills = 1;
                   state.isHeroAlive = true;
                   state.healthPercent = 5;
               },
               "ORTA 30 16s Kıl Payı Kill [kill@8]"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(DotaMatch, CountsFromTheFirstPost)
{
    Client client;
    client.state.kills = 3;
    client.state.hasAegis = true;
    client.win();
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    EXPECT_EQ(client.post(101), QStringList());
    EXPECT_EQ(client.tick(120), QStringList());
}

TEST(DotaMatch, CountsNothingBeforeTheGameStarts)
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
        // These were counted from, so they are nothing new either.
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

TEST(DotaMatch, ChainsKillsThatAreEighteenSecondsApart)
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

TEST(DotaMatch, BeginsAChainAnewBeyondEighteenSeconds)
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

TEST(DotaMatch, RunsAChainOnOverTheEndOfAFight)
{
    // The chain knows what came before; the fight pays for its own largest step.
    Client client;
    client.join();
    client.state.kills = 3;
    client.post(101);
    EXPECT_EQ(client.tick(109), texts({"ORTA 60 16s Triple Kill [kill@8 multikill_2@8 multikill_3@8]"}));
    client.state.kills = 4;
    client.post(115);
    EXPECT_EQ(client.tick(123), texts({"EFSANE 100 16s Ultra Kill [multikill_4@8]"}));
    // An assist opens a fight without a multikill, however long the chain is.
    client.state.assists = 3;
    client.post(125);
    EXPECT_EQ(client.tick(133), texts({"BASIT 9 16s 3 Asist []"}));
}

TEST(DotaMatch, JoinsChangesIntoOneFight)
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

TEST(DotaMatch, LetsAChangeAfterTwelveSecondsBeginItsOwnFight)
{
    // Ticks come late where the machine slept.
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

TEST(DotaMatch, SamplesHealthWithoutAChangeWhileAFightIsOpen)
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

TEST(DotaMatch, PaysForTheAegisOnceUntilItIsLost)
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

TEST(DotaMatch, PaysForAWinOnceAndAtOnce)
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

TEST(DotaMatch, TakesACounterThatGoesDownForANewStart)
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

TEST(DotaMatch, ShowsTheHeroOnceItIsKnownAndNamesItInHeadlines)
{
    Client client;
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    client.state.heroName = QStringLiteral("npc_dota_hero_zuus");
    EXPECT_EQ(client.post(101), texts({"in game as Zeus"}));
    client.state.kills = 1;
    EXPECT_EQ(client.post(102), QStringList());
    EXPECT_EQ(client.tick(110), texts({"BASIT 10 16s Kill (Zeus) [kill@8]"}));
}

TEST(DotaMatch, EndsOnceAtTheEndOfTheGameAndStaysInGame)
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

TEST(DotaMatch, TellsTheEndFirstOfAMatchThatIsSeenOnlyThen)
{
    Client client;
    client.state.gameState = PostGame;
    EXPECT_EQ(client.post(100), texts({"ended", "in game", "detected"}));
}

TEST(DotaMatch, EndsAtTheMenu)
{
    Client client;
    client.state.heroName = QStringLiteral("npc_dota_hero_axe");
    client.join();
    client.state.hasMatch = false;
    EXPECT_EQ(client.post(101), texts({"not in game", "ended"}));
    EXPECT_EQ(client.post(102), QStringList());
}

TEST(DotaMatch, KeepsItsCountersAtTheMenu)
{
    // A player who leaves for the menu and comes back to the same match goes on where the counters were; an open fight
    // waits for its end as ever, with no hero left to name.
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

TEST(DotaMatch, TellsTheEndButNotTheBeginningWhereAMatchFollowsUponAnother)
{
    // The game never said that the player left, so the next match is not detected.
    Client client;
    client.join();
    client.state.kills = 3;
    client.post(101);
    client.state.matchId = QStringLiteral("2");
    EXPECT_EQ(client.post(102), texts({"ended"}));
    // The fight went with the match, and counting starts anew.
    EXPECT_EQ(client.tick(120), QStringList());
    client.state.kills = 4;
    client.post(121);
    EXPECT_EQ(client.tick(129), texts({"BASIT 10 16s Kill [kill@8]"}));
}

TEST(DotaMatch, BreaksAChainBetweenMatches)
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

TEST(DotaMatch, DoesNotEndWhenAMatchThatIsLoadingGetsItsId)
{
    Client client;
    client.state.matchId = QStringLiteral("0");
    client.state.gameState = QStringLiteral("DOTA_GAMERULES_STATE_WAIT_FOR_PLAYERS_TO_LOAD");
    EXPECT_EQ(client.post(100), texts({"in game", "detected"}));
    client.state.matchId = QStringLiteral("7463520011");
    EXPECT_EQ(client.post(101), QStringList());
    // From a match to the loading of another is an end.
    client.state.matchId = QStringLiteral("0");
    EXPECT_EQ(client.post(102), texts({"ended"}));
    client.state.matchId = QStringLiteral("7463520012");
    EXPECT_EQ(client.post(103), QStringList());
}

TEST(DotaMatch, TellsNoEndBetweenMatchesWithTheMenuBetween)
{
    Client client;
    client.join();
    client.state.hasMatch = false;
    client.post(101);
    client.state.hasMatch = true;
    client.state.matchId = QStringLiteral("2");
    EXPECT_EQ(client.post(102), texts({"in game", "detected"}));
}

TEST(DotaMatch, EndsInSilenceOfMoreThanThirtyFiveSeconds)
{
    Client client;
    client.join(100);
    EXPECT_EQ(client.tick(135), QStringList());
    EXPECT_EQ(client.tick(135.1), texts({"not in game", "ended"}));
    EXPECT_EQ(client.tick(136), QStringList());
    EXPECT_FALSE(client.match.needsTick());
    // Whoever comes back after that is counted from anew.
    client.state.kills = 5;
    EXPECT_EQ(client.post(200), texts({"in game", "detected"}));
    EXPECT_EQ(client.tick(210), QStringList());
}

TEST(DotaMatch, IsKeptUpByPostsThatChangeNothing)
{
    Client client;
    client.join(100);
    client.post(130);
    EXPECT_EQ(client.tick(165), QStringList());
    EXPECT_EQ(client.tick(165.5), texts({"not in game", "ended"}));
}

TEST(DotaMatch, SealsAFightBeforeItEndsInSilence)
{
    Client client;
    client.join();
    client.state.kills = 1;
    client.post(101);
    EXPECT_EQ(client.tick(150), texts({"BASIT 10 57s Kill [kill@49]", "not in game", "ended"}));
}

TEST(DotaMatch, DropsTheOpenFightWhenItIsReset)
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

TEST(DotaMatch, StaysBoundedForCountersGoneWild)
{
    // Up and down with every post, for longer than any match, and never quiet.
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
    const auto news = client.match.tick(now + 8);
    ASSERT_EQ(news.size(), 1);
    EXPECT_LE(std::get<Moment>(news.first()).events.size(), 1000);
    EXPECT_GT(std::get<Moment>(news.first()).score, 0);
}

TEST(DotaMatch, NeedsNoTickBeforeThereIsAGame)
{
    DotaMatch match;
    EXPECT_FALSE(match.needsTick());
    match.posted(DotaState{}, 100);
    EXPECT_FALSE(match.needsTick());
}

} // namespace
} // namespace quelto
