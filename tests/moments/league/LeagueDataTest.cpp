// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LeagueData.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

namespace quelto {
namespace {

LeagueData read(const QByteArray& fields)
{
    const auto data = readLeagueData(R"({"gameData":{"gameTime":10},)" + fields + '}');
    EXPECT_TRUE(data) << fields.toStdString();
    return data.value_or(LeagueData());
}

LeagueEvent readEvent(const QByteArray& fields)
{
    const auto data = read(R"("events":{"Events":[{"EventID":1,)" + fields + "}]}");
    EXPECT_EQ(data.events.size(), 1) << fields.toStdString();
    return data.events.value(0);
}

TEST(LeagueData, ReadsClientData)
{
    const auto data = readLeagueData(R"({
        "activePlayer": {"abilities": {"Q": {"abilityLevel": 3}}, "championStats": {"abilityPower": 12.5,
            "currentHealth": 640.25, "maxHealth": 1280.5}, "level": 9, "riotId": "Çınar#TR1",
            "riotIdGameName": "Çınar", "riotIdTagLine": "TR1", "summonerName": "Çınar#TR1"},
        "allPlayers": [{"championName": "Ahri", "isBot": false, "items": [], "riotId": "Çınar#TR1",
            "riotIdGameName": "Çınar", "riotIdTagLine": "TR1", "summonerName": "Çınar#TR1", "team": "ORDER"},
            {"championName": "Annie", "isBot": true, "summonerName": "Annie Bot", "team": "CHAOS"}],
        "events": {"Events": [{"EventID": 0, "EventName": "GameStart", "EventTime": 0.0325},
            {"Assisters": ["Ufuk", "Annie Bot"], "EventID": 7, "EventName": "DragonKill", "EventTime": 401.5,
             "DragonType": "Elder", "KillerName": "Çınar", "Stolen": "True"},
            {"EventID": 8, "EventName": "Multikill", "EventTime": 402, "KillerName": "Çınar", "KillStreak": 2},
            {"EventID": 9, "EventName": "Ace", "EventTime": 402, "Acer": "Çınar", "AcingTeam": "ORDER"},
            {"EventID": 10, "EventName": "FirstBlood", "EventTime": 402, "Recipient": "Çınar"},
            {"Assisters": [], "EventID": 11, "EventName": "ChampionKill", "EventTime": 403,
             "KillerName": "Minion_T200L2S15N0092", "VictimName": "Çınar"}]},
        "gameData": {"gameMode": "CLASSIC", "gameTime": 404.123, "mapName": "Map11", "mapNumber": 11}})");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->gameTime, 404.123);
    const LeagueNames names{QStringLiteral("Çınar#TR1"), QStringLiteral("Çınar"), QStringLiteral("Çınar#TR1")};
    EXPECT_EQ(data->activePlayer, names);
    EXPECT_EQ(data->currentHealth, 640.25);
    EXPECT_EQ(data->maxHealth, 1280.5);

    ASSERT_EQ(data->players.size(), 2);
    EXPECT_EQ(data->players[0].names, names);
    EXPECT_EQ(data->players[0].team, QStringLiteral("ORDER"));
    EXPECT_EQ(data->players[0].champion, QStringLiteral("Ahri"));
    EXPECT_EQ(data->players[1].names, (LeagueNames{QString(), QString(), QStringLiteral("Annie Bot")}));

    ASSERT_EQ(data->events.size(), 6);
    EXPECT_EQ(data->events[0].name, QStringLiteral("GameStart"));
    EXPECT_EQ(data->events[0].time, 0.0325);
    const auto& dragon = data->events[1];
    EXPECT_EQ(dragon.id, 7);
    EXPECT_EQ(dragon.assisters, (QStringList{QStringLiteral("Ufuk"), QStringLiteral("Annie Bot")}));
    EXPECT_EQ(dragon.dragonType, QStringLiteral("Elder"));
    EXPECT_EQ(dragon.killer, QStringLiteral("Çınar"));
    EXPECT_TRUE(dragon.isStolen);
    EXPECT_EQ(data->events[2].killStreak, 2);
    EXPECT_EQ(data->events[3].acer, QStringLiteral("Çınar"));
    EXPECT_EQ(data->events[3].acingTeam, QStringLiteral("ORDER"));
    EXPECT_EQ(data->events[4].recipient, QStringLiteral("Çınar"));
    EXPECT_EQ(data->events[5].victim, QStringLiteral("Çınar"));
}

TEST(LeagueData, RejectsBodyWithoutGameTime)
{
    for (const auto* body :
         {"", "7", "[]", "{}", R"({"gameData":{}})", R"({"gameData":[{"gameTime":1}]})", R"({"gameTime":1})",
          R"({"gameData":{"gameTime":"1"}})", R"({"gameData":{"gameTime":null}})", R"({"gameData":{"gameTime":true}})",
          R"({"gameData":{"gameTime":1e300}})", R"({"gameData":{"gameTime":-1e300}})",
          R"({"gameData":{"gameTime":1})"}) {
        EXPECT_FALSE(readLeagueData(body)) << body;
    }
    EXPECT_EQ(readLeagueData(R"({"gameData":{"gameTime":0}})").value().gameTime, 0);
    EXPECT_EQ(readLeagueData(R"({"gameData":{"gameTime":-0.5}})").value().gameTime, -0.5);
}

TEST(LeagueData, SectionOfWrongTypeCountsAsAbsent)
{
    for (const auto* wrong : {"7", "1.5", "true", "null", R"("text")", "[]", R"(["a",1,{}])", "{}", R"({"a":1})"}) {
        for (const auto* key : {"activePlayer", "allPlayers", "events"}) {
            const auto data = read('"' + QByteArray(key) + "\":" + wrong);
            EXPECT_EQ(data.activePlayer, LeagueNames()) << key << wrong;
            EXPECT_EQ(data.currentHealth, std::nullopt) << key << wrong;
            EXPECT_TRUE(data.events.isEmpty()) << key << wrong;
        }
        const auto inEvents = read(R"("events":{"Events":)" + QByteArray(wrong) + '}');
        EXPECT_TRUE(inEvents.events.isEmpty()) << wrong;
        const auto inStats = read(R"("activePlayer":{"championStats":)" + QByteArray(wrong) + '}');
        EXPECT_EQ(inStats.maxHealth, std::nullopt) << wrong;
    }
}

TEST(LeagueData, EventFieldOfWrongTypeCountsAsAbsent)
{
    for (const auto* wrong : {"7.5", "true", "null", "[]", R"([null,1,{},[]])", "{}"}) {
        const auto value = QByteArray(wrong);
        const auto event =
            readEvent(R"("EventName":)" + value + R"(,"KillerName":)" + value + R"(,"VictimName":)" + value +
                      R"(,"Assisters":)" + value + R"(,"KillStreak":)" + value + R"(,"AcingTeam":)" + value +
                      R"(,"Acer":)" + value + R"(,"Recipient":)" + value + R"(,"DragonType":)" + value);
        EXPECT_EQ(event.name + event.killer + event.victim + event.acer + event.recipient + event.dragonType, QString())
            << wrong;
        EXPECT_TRUE(event.assisters.isEmpty()) << wrong;
        EXPECT_EQ(event.killStreak, std::nullopt) << wrong;
        EXPECT_EQ(event.acingTeam, std::nullopt) << wrong;
    }
    for (const auto* wrong : {R"("7")", "true", "null", "[]", "{}", "1e10"}) {
        EXPECT_EQ(readEvent(R"("EventTime":)" + QByteArray(wrong)).time, std::nullopt) << wrong;
    }
}

TEST(LeagueData, PlayerFieldOfWrongTypeCountsAsAbsent)
{
    const auto data = read(R"("allPlayers":[7,"x",null,[],{"riotId":1,"riotIdGameName":[],"summonerName":{},"team":2,
                              "championName":null},{"summonerName":"Ufuk"}])");
    ASSERT_EQ(data.players.size(), 2);
    EXPECT_EQ(data.players[0].names, LeagueNames());
    EXPECT_EQ(data.players[0].team, std::nullopt);
    EXPECT_EQ(data.players[0].champion, QString());
    EXPECT_EQ(data.players[1].names[2], QStringLiteral("Ufuk"));
}

TEST(LeagueData, HealthMustBeNumber)
{
    const auto data = read(R"("activePlayer":{"championStats":{"currentHealth":"640","maxHealth":1280}})");
    EXPECT_EQ(data.currentHealth, std::nullopt);
    EXPECT_EQ(data.maxHealth, 1280);
}

TEST(LeagueData, SpectatorHasNoNames)
{
    const auto data = read(R"("activePlayer":{"error":"Spectator mode doesn't currently support this feature"})");
    EXPECT_EQ(data.activePlayer, LeagueNames());
}

TEST(LeagueData, SkipsOnlyEventsWithoutIntegerId)
{
    const auto data = read(R"("events":{"Events":[{"EventName":"A"},{"EventID":"1"},{"EventID":1.5},{"EventID":null},
                              {"EventID":1e99},7,null,{"EventID":-3},{"EventID":4.0},{"EventID":4}]})");
    QList<int> ids;
    for (const auto& event : data.events) {
        ids.append(event.id);
    }
    EXPECT_EQ(ids, (QList<int>{-3, 4, 4}));
}

TEST(LeagueData, StolenIsTrueAsStringOrBoolean)
{
    for (const auto* yes : {R"("True")", R"("true")", R"("TRUE")", "true"}) {
        EXPECT_TRUE(readEvent(R"("Stolen":)" + QByteArray(yes)).isStolen) << yes;
    }
    for (const auto* no : {R"("False")", R"("")", R"(" True")", R"("yes")", "false", "1", "null", "[]", "{}"}) {
        EXPECT_FALSE(readEvent(R"("Stolen":)" + QByteArray(no)).isStolen) << no;
    }
    EXPECT_FALSE(readEvent(R"("EventName":"BaronKill")").isStolen);
}

TEST(LeagueData, KillStreakOutOfRangeCountsAsAbsent)
{
    EXPECT_EQ(readEvent(R"("KillStreak":0)").killStreak, 0);
    EXPECT_EQ(readEvent(R"("KillStreak":1000)").killStreak, 1000);
    EXPECT_EQ(readEvent(R"("KillStreak":1001)").killStreak, std::nullopt);
    EXPECT_EQ(readEvent(R"("KillStreak":-1)").killStreak, std::nullopt);
    EXPECT_EQ(readEvent(R"("KillStreak":2147483647)").killStreak, std::nullopt);
}

TEST(LeagueData, OverlongTextCountsAsAbsent)
{
    const QByteArray fits(1024, 'a');
    EXPECT_EQ(readEvent(R"("KillerName":")" + fits + '"').killer.size(), 1024);
    EXPECT_EQ(readEvent(R"("KillerName":")" + fits + R"(a")").killer, QString());
}

TEST(LeagueData, ReadsOnlyLatestOfTooManyEvents)
{
    const auto events = [](int count) {
        QByteArrayList list;
        for (int id = 1; id <= count; ++id) {
            list.append(R"({"EventID":)" + QByteArray::number(id) + '}');
        }
        return read(R"("events":{"Events":[)" + list.join(',') + "]}").events;
    };
    EXPECT_EQ(events(10'000).value(0).id, 1);
    const auto latest = events(10'003);
    ASSERT_EQ(latest.size(), 10'000);
    EXPECT_EQ(latest.first().id, 4);
    EXPECT_EQ(latest.last().id, 10'003);
}

TEST(LeagueData, ReadsOnlyFirstOfTooManyPlayers)
{
    const auto players = [](int count) {
        return read(R"("allPlayers":[{"championName":"Ahri"})" + QByteArray(",{}").repeated(count - 1) + ']').players;
    };
    EXPECT_EQ(players(100).size(), 100);
    EXPECT_EQ(players(101).size(), 100);
    EXPECT_EQ(players(101).value(0).champion, QStringLiteral("Ahri"));
}

TEST(LeagueData, BoundsAssisters)
{
    const auto data = readLeagueData(R"({"gameData":{"gameTime":1},"events":{"Events":[{"EventID":1,"Assisters":[)" +
                                     QByteArray(R"("x",)").repeated(5000) + '"' + QByteArray(2000, 'y') + R"("]}]}})");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->events.first().assisters, QStringList(100, QStringLiteral("x")));
}

} // namespace
} // namespace quelto
