// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/dota/DotaState.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

DotaState stateFrom(const QByteArray& body)
{
    const auto state = readDotaState(body);
    EXPECT_TRUE(state) << body.constData();
    return state.value_or(DotaState{});
}

TEST(DotaState, ReadsPost)
{
    const auto state = stateFrom(R"({
        "map": {"name": "start", "matchid": "7463520011", "game_state": "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS",
                "win_team": "radiant"},
        "player": {"steamid": "76561198000000001", "activity": "playing", "kills": 7, "deaths": 2, "assists": 11,
                   "team_name": "dire"},
        "hero": {"id": 22, "name": "npc_dota_hero_zuus", "alive": true, "health_percent": 43},
        "items": {"slot0": {"name": "item_tango"}, "slot1": {"name": "empty"}, "neutral0": {"name": "item_aegis"}}})");
    EXPECT_TRUE(state.hasMatch);
    EXPECT_EQ(state.matchId, QStringLiteral("7463520011"));
    EXPECT_EQ(state.gameState, QStringLiteral("DOTA_GAMERULES_STATE_GAME_IN_PROGRESS"));
    EXPECT_EQ(state.winTeam, QStringLiteral("radiant"));
    EXPECT_EQ(state.teamName, QStringLiteral("dire"));
    EXPECT_EQ(state.kills, 7);
    EXPECT_EQ(state.deaths, 2);
    EXPECT_EQ(state.assists, 11);
    EXPECT_EQ(state.heroName, QStringLiteral("npc_dota_hero_zuus"));
    EXPECT_EQ(state.isHeroAlive, true);
    EXPECT_EQ(state.healthPercent, 43);
    EXPECT_TRUE(state.hasAegis);
    EXPECT_FALSE(state.isWin());
}

TEST(DotaState, AbsentFieldsHaveDefaults)
{
    const auto state = stateFrom(R"({"map": {}, "player": {}})");
    EXPECT_TRUE(state.hasMatch);
    EXPECT_EQ(state.matchId, QString());
    EXPECT_EQ(state.winTeam, QStringLiteral("none"));
    EXPECT_EQ(state.kills + state.deaths + state.assists, 0);
    EXPECT_FALSE(state.isHeroAlive || state.healthPercent || state.hasAegis || state.isWin());
}

TEST(DotaState, HasNoMatchAtMenu)
{
    for (const auto* body : {R"({"provider": {"name": "Dota 2", "appid": 570}, "player": {}})", R"({"map": {}})", "{}",
                             R"({"map": null, "player": {}})", R"({"map": {}, "player": [1]})",
                             R"({"map": "x", "player": {"kills": 3}})"}) {
        EXPECT_FALSE(stateFrom(body).hasMatch) << body;
    }
}

TEST(DotaState, RejectsBodyThatIsNotAnObject)
{
    for (const auto* body : {"", "[]", "null", "3", "{", R"({"map": {}, "player": {}} x)", "\xff\xfe", "\"map\""}) {
        EXPECT_FALSE(readDotaState(body)) << body;
    }
}

TEST(DotaState, InvalidUtf8InOneNameCostsNothingElse)
{
    const auto state = stateFrom("{\"map\": {\"matchid\": \"7\", \"customgamename\": \"\xff\"}, "
                                 "\"player\": {\"name\": \"Ufu\xc4\", \"kills\": 3}}");
    EXPECT_TRUE(state.hasMatch);
    EXPECT_EQ(state.matchId, QStringLiteral("7"));
    EXPECT_EQ(state.kills, 3);
}

TEST(DotaState, RejectsDeepNesting)
{
    const auto nested = [](int depth) {
        return R"({"map": {}, "player": {}, "x": )" + QByteArray(depth, '[') + QByteArray(depth, ']') + "}";
    };
    EXPECT_TRUE(readDotaState(nested(63)));
    EXPECT_FALSE(readDotaState(nested(64)));
    EXPECT_FALSE(readDotaState(nested(1'000'000)));
}

TEST(DotaState, MatchIdIsTextOfAnyValue)
{
    const std::pair<const char*, const char*> ids[] = {
        {R"("0")", "0"},
        {R"("7463520011")", "7463520011"},
        {"7463520011", "7463520011"},
        {"9007199254740993", "9007199254740993"},
        {"0", "0"},
        {"1.5", "1.5"},
        {"true", "true"},
        {R"({"b": 1})", R"({"b":1})"},
        {"[1, 2]", "[1,2]"},
        {"null", ""},
    };
    for (const auto& [json, text] : ids) {
        EXPECT_EQ(stateFrom(QByteArray(R"({"player": {}, "map": {"matchid": )") + json + "}}").matchId,
                  QString::fromUtf8(text));
    }
}

TEST(DotaState, InvalidCounterCountsAsZero)
{
    const std::pair<const char*, int> counters[] = {
        {"0", 0},     {"1000", 1000}, {"1001", 0},   {"-1", 0},   {"2000000000", 0},
        {"1e300", 0}, {"3.5", 0},     {R"("3")", 0}, {"null", 0}, {"{}", 0},
    };
    for (const auto& [json, count] : counters) {
        EXPECT_EQ(stateFrom(QByteArray(R"({"map": {}, "player": {"kills": )") + json + "}}").kills, count) << json;
    }
}

TEST(DotaState, IgnoresPreviousValues)
{
    const auto state = stateFrom(R"({
        "map": {"matchid": "1"}, "player": {"kills": 2},
        "previously": {"map": {"matchid": "9", "win_team": "dire"}, "player": {"kills": 1, "team_name": "dire"},
                       "items": {"slot0": {"name": "item_aegis"}}, "hero": {"health_percent": 3}},
        "added": {"hero": {"name": "npc_dota_hero_axe"}, "items": {"slot0": {"name": "item_aegis"}}}})");
    EXPECT_EQ(state.matchId, QStringLiteral("1"));
    EXPECT_EQ(state.kills, 2);
    EXPECT_EQ(state.heroName, QString());
    EXPECT_FALSE(state.hasAegis || state.isWin() || state.healthPercent);
}

TEST(DotaState, SpectatorHasNoCounters)
{
    const auto state = stateFrom(R"({
        "map": {"matchid": "1", "win_team": "radiant"},
        "player": {"team2": {"player0": {"kills": 9, "team_name": "radiant"}}, "team3": {"player5": {"kills": 4}}},
        "hero": {"team2": {"player0": {"name": "npc_dota_hero_axe", "alive": true, "health_percent": 9}}, "team3": {}},
        "items": {"team2": {"player0": {"slot0": {"name": "item_aegis"}}}, "team3": {}}})");
    EXPECT_TRUE(state.hasMatch);
    EXPECT_EQ(state.kills, 0);
    EXPECT_EQ(state.heroName, QString());
    EXPECT_FALSE(state.hasAegis || state.isWin() || state.healthPercent);
}

TEST(DotaState, IsWinForOwnTeamOnly)
{
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"radiant", "radiant", true},
        {"radiant", "dire", false},
        {"radiant", "none", false},
        {"none", "none", false},
        {"", "", false},
        {"", "none", false},
    };
    for (const auto& [team, winner, isWin] : cases) {
        DotaState state;
        state.teamName = QString::fromUtf8(team);
        state.winTeam = QString::fromUtf8(winner);
        EXPECT_EQ(state.isWin(), isWin) << team << ' ' << winner;
    }
}

TEST(DotaState, OverlongHeroNameIsIgnored)
{
    EXPECT_EQ(stateFrom(R"({"map": {}, "player": {}, "hero": {"name": ")" + QByteArray(101, 'x') + R"("}})").heroName,
              QString());
}

} // namespace
} // namespace quelto
