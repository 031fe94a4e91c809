// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/LogLine.h"

#include <gtest/gtest.h>

namespace quelto {

namespace {

QByteArray partyKill(const QByteArray& source, const QByteArray& destination)
{
    return R"(8/3 22:09:58.548  PARTY_KILL,Player-1403-0A6F33C2,"Çağla-Kazzak",)" + source +
        R"(,0x0,Player-1305-0B0C5D6E,"Ørjan-Ravencrest",)" + destination + ",0x0\r";
}

TEST(LogLine, SplitsAtCommasOutsideQuotes)
{
    const auto fields = logFields(u"A,\"b, \"\"c\",, d ,e \t\r");
    EXPECT_EQ(fields,
              (QStringList{QStringLiteral("A"), QStringLiteral("b, c"), QString(), QStringLiteral(" d "),
                           QStringLiteral("e")}));
    EXPECT_EQ(logFields(u""), QStringList{QString()});
    EXPECT_EQ(logFields(u"a,"), (QStringList{QStringLiteral("a"), QString()}));
    EXPECT_EQ(logFields(u"a,\"b,c"), (QStringList{QStringLiteral("a"), QStringLiteral("b,c")}));
}

TEST(LogLine, IgnoresFormatOfTimeStamp)
{
    for (const QByteArray stamp :
         {"8/3 22:09:58.548", "1/27/2024 00:06:58.168", "8/28/2025 14:31:12.50110", "8/28/2025 14:31:12.501-4", ""}) {
        EXPECT_EQ(logEvent(stamp + R"(  ENCOUNTER_END,2820,"Gnarlroot",15,20,1,185523)" + '\r'),
                  LogEvent(BossKill{QStringLiteral("Gnarlroot"), 15}))
            << stamp.toStdString();
    }
}

TEST(LogLine, LineWithoutTwoSpacesHasNoEvent)
{
    EXPECT_EQ(logEvent(R"(8/3 22:09:58.548 ENCOUNTER_END,2820,"Gnarlroot",15,20,1)"), std::nullopt);
    EXPECT_EQ(logEvent(R"(ENCOUNTER_END,2820,"Gnarlroot",15,20,1)"), std::nullopt);
    EXPECT_EQ(logEvent(""), std::nullopt);
}

TEST(LogLine, EventNameInOtherFieldIsIgnored)
{
    EXPECT_EQ(logEvent(R"(8/3 22:09:58.548  EMOTE,0,nil,0x0,0x0,0,"ENCOUNTER_END,1,2,16,20,1",1)"), std::nullopt);
    EXPECT_EQ(logEvent(R"(8/3 22:09:58.548  ENCOUNTER_END2,2820,"Gnarlroot",15,20,1)"), std::nullopt);
    EXPECT_EQ(logEvent(R"(8/3 22:09:58.548   ENCOUNTER_END,2820,"Gnarlroot",15,20,1)"), std::nullopt);
}

struct FlagsRow {
    const char* name;
    QByteArray source;
    QByteArray destination;
    bool isKill;
};

TEST(LogLine, OnlyOwnKillsOfEnemyPlayersCount)
{
    const FlagsRow rows[]{
        {"the player and an enemy player", "0x511", "0x548", true},
        {"more flags than needed", "0x10511", "0x40548", true},
        {"no prefix", "511", "548", true},
        {"capital letters", "0xFFFFFFFF", "0xFFFFFFFF", true},
        {"two prefixes", "0x0x511", "0x548", true},
        {"a member of the group", "0x512", "0x548", false},
        {"the player's pet", "0x1111", "0x548", false},
        {"a creature", "0x511", "0xa48", false},
        {"a friendly player", "0x511", "0x518", false},
        {"no flags", "0x511", "", false},
        {"the prefix only", "0x511", "0x", false},
        {"not a number", "0x511", "0xG48", false},
        {"more than 32 bits", "0x511", "0x100000548", false},
        {"a space", "0x511", " 0x548", false},
        {"a sign", "0x511", "-0x548", false},
        {"digits of another script", "0x511", "0x٥٤٨", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(logEvent(partyKill(row.source, row.destination)),
                  row.isKill ? std::optional<LogEvent>(PlayerKill{}) : std::nullopt)
            << row.name;
    }
}

TEST(LogLine, KillsAndDeathsNeedNineFields)
{
    EXPECT_EQ(logEvent("8/3 1:2:3.4  PARTY_KILL,a,b,0x511,0,c,d,0x548"), std::nullopt);
    EXPECT_EQ(logEvent("8/3 1:2:3.4  PARTY_KILL,a,b,0x511,0,c,d,0x548,0"), LogEvent(PlayerKill{}));
    EXPECT_EQ(logEvent("8/3 1:2:3.4  UNIT_DIED,0,nil,0x8,0x8,c,d,0x511"), std::nullopt);
    EXPECT_EQ(logEvent("8/3 1:2:3.4  UNIT_DIED,0,nil,0x8,0x8,c,d,0x511,0"), LogEvent(PlayerDeath{}));
    EXPECT_EQ(logEvent("8/3 1:2:3.4  UNIT_DIED,0,nil,0x8,0x8,c,d,0x512,0"), std::nullopt);
    EXPECT_EQ(logEvent("8/3 1:2:3.4  UNIT_DIED,0,nil,0x8,0x8,c,d,junk,0"), std::nullopt);
}

struct EventRow {
    const char* name;
    QByteArray text;
    std::optional<LogEvent> event;
};

TEST(LogLine, ReadsBossKills)
{
    const auto boss = [](const QString& name, std::optional<int> difficulty) {
        return LogEvent(BossKill{name, difficulty});
    };
    const EventRow rows[]{
        {"six fields", R"(ENCOUNTER_END,2398,"Shriekwing",16,20,1)", boss(QStringLiteral("Shriekwing"), 16)},
        {"seven fields", R"(ENCOUNTER_END,2398,"Shriekwing",16,20,1,185523)", boss(QStringLiteral("Shriekwing"), 16)},
        {"five fields", R"(ENCOUNTER_END,2398,"Shriekwing",16,1)", std::nullopt},
        {"a wipe", R"(ENCOUNTER_END,2398,"Shriekwing",16,20,0,185523)", std::nullopt},
        {"a flag other than 0 and 1", R"(ENCOUNTER_END,2398,"Shriekwing",16,20,11)", std::nullopt},
        {"a space before the success flag", R"(ENCOUNTER_END,2398,"Shriekwing",16,20, 1,185523)", std::nullopt},
        {"a comma in the name", R"(ENCOUNTER_END,2708,"Nymue, Weaver of the Cycle",14,20,1,5)",
         boss(QStringLiteral("Nymue, Weaver of the Cycle"), 14)},
        {"another script", R"(ENCOUNTER_END,2677,"피락, 불타는 자",17,25,1,5)",
         boss(QStringLiteral("피락, 불타는 자"), 17)},
        {"no difficulty", R"(ENCOUNTER_END,2677,"A",,25,1,5)", boss(QStringLiteral("A"), std::nullopt)},
        {"a difficulty that overflows", R"(ENCOUNTER_END,2677,"A",99999999999999999999,25,1,5)",
         boss(QStringLiteral("A"), std::nullopt)},
        {"a difficulty that is not a number", R"(ENCOUNTER_END,2677,"A",16x,25,1,5)",
         boss(QStringLiteral("A"), std::nullopt)},
        {"a quoted event name", R"("ENCOUNTER_END",2677,"A",16,25,1,5)", boss(QStringLiteral("A"), 16)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(logEvent("8/3 22:09:58.548  " + row.text + '\r'), row.event) << row.name;
    }
}

TEST(LogLine, ReadsKeystoneRuns)
{
    const EventRow rows[]{
        {"four fields", "CHALLENGE_MODE_END,2660,1,15", LogEvent(KeystoneRun{15})},
        {"more fields", "CHALLENGE_MODE_END,2660,1,2,1512330,325.25,2831.5", LogEvent(KeystoneRun{2})},
        {"three fields", "CHALLENGE_MODE_END,2660,1", std::nullopt},
        {"an abandoned run", "CHALLENGE_MODE_END,2660,0,0,0,0.0,0.0", std::nullopt},
        {"no level", "CHALLENGE_MODE_END,2660,1,,5", std::nullopt},
        {"a level that is not an integer", "CHALLENGE_MODE_END,2660,1,1.5,5", std::nullopt},
        {"the highest level", "CHALLENGE_MODE_END,2660,1,1000,5", LogEvent(KeystoneRun{1000})},
        {"above the highest level", "CHALLENGE_MODE_END,2660,1,1001,5", std::nullopt},
        {"a negative level", "CHALLENGE_MODE_END,2660,1,-1,5", std::nullopt},
        {"a level that overflows", "CHALLENGE_MODE_END,2660,1,4294967297,5", std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(logEvent("8/3 22:09:58.548  " + row.text + '\r'), row.event) << row.name;
    }
}

TEST(LogLine, ReplacesInvalidUtf8)
{
    const auto event = logEvent("\xff\xfe 1:2:3  ENCOUNTER_END,1,\"A\xc3\x28\xe2\x82Z\",16,20,1,5\r");
    ASSERT_TRUE(event);
    const auto& boss = std::get<BossKill>(*event);
    EXPECT_TRUE(boss.name.startsWith(u'A') && boss.name.endsWith(u'Z'));
    EXPECT_TRUE(boss.name.contains(QChar::ReplacementCharacter));
    EXPECT_TRUE(boss.name.contains(u'('));
    EXPECT_EQ(boss.difficulty, 16);
}

} // namespace
} // namespace quelto
