// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WowFights.h"

#include <gtest/gtest.h>

#include <limits>

namespace quelto {
namespace {

constexpr double Start = 5000;

QStringList markers(const Moment& moment)
{
    QStringList names;
    for (const auto& event : moment.events) {
        names.append(event.name + u' ' + QString::number(event.secondsBeforeEnd));
    }
    return names;
}

BossKill boss(std::optional<int> difficulty)
{
    return {QStringLiteral("Name"), difficulty};
}

TEST(WowFights, FightEndsAfterSixSecondsWithoutEvents)
{
    WowFights fights;
    EXPECT_TRUE(fights.take(PlayerKill{}, Start).isEmpty());
    EXPECT_TRUE(fights.tick(Start).isEmpty());
    EXPECT_TRUE(fights.tick(Start + 5.9).isEmpty());
    const auto moments = fights.tick(Start + 6);
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].game, QStringLiteral("World of Warcraft"));
    EXPECT_EQ(moments[0].tier, ClipTier::basic);
    EXPECT_EQ(moments[0].score, 10);
    EXPECT_EQ(moments[0].label, QStringLiteral("Kill"));
    EXPECT_EQ(moments[0].seconds, 15);
    EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("kill 6")});
    EXPECT_TRUE(fights.tick(Start + 12).isEmpty());
}

TEST(WowFights, TickWithoutFightGivesNothing)
{
    WowFights fights;
    EXPECT_TRUE(fights.tick(0).isEmpty());
    EXPECT_TRUE(fights.tick(1e9).isEmpty());
}

TEST(WowFights, KillsTenSecondsApartChain)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    fights.take(PlayerKill{}, Start + 10);
    const auto moment = fights.tick(Start + 16).value(0);
    EXPECT_EQ(moment.label, QStringLiteral("Double Kill"));
    EXPECT_EQ(moment.score, 28);
    EXPECT_EQ(moment.seconds, 24);
    EXPECT_EQ(markers(moment), (QStringList{QStringLiteral("kill 16"), QStringLiteral("multikill_2 6")}));
}

TEST(WowFights, KillsFurtherApartDoNotChain)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    const auto first = fights.take(PlayerKill{}, Start + 10.1);
    ASSERT_EQ(first.size(), 1);
    EXPECT_EQ(first[0].label, QStringLiteral("Kill"));
    const auto second = fights.tick(Start + 17).value(0);
    EXPECT_EQ(second.label, QStringLiteral("Kill"));
    EXPECT_EQ(second.score, 10);
}

TEST(WowFights, ChainContinuesAfterFightAndMultikillDoesNot)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    fights.take(PlayerKill{}, Start + 1);
    EXPECT_EQ(fights.tick(Start + 7).size(), 1);
    fights.take(PlayerKill{}, Start + 8);
    const auto third = fights.tick(Start + 14).value(0);
    EXPECT_EQ(third.label, QStringLiteral("Triple Kill"));
    EXPECT_EQ(third.score, 60);
    EXPECT_EQ(markers(third), QStringList{QStringLiteral("multikill_3 6")});
    fights.take(PlayerKill{}, Start + 30);
    EXPECT_EQ(fights.tick(Start + 36).value(0).label, QStringLiteral("Kill"));
}

TEST(WowFights, KillSevenSecondsLaterStartsNewFight)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    EXPECT_EQ(fights.tick(Start + 6).size(), 1);
    EXPECT_TRUE(fights.take(PlayerKill{}, Start + 7).isEmpty());
    const auto moment = fights.tick(Start + 13).value(0);
    EXPECT_EQ(moment.events.size(), 1);
    EXPECT_EQ(moment.seconds, 15);
}

TEST(WowFights, LateEventSealsOldFightBeforeStartingNewOne)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    EXPECT_TRUE(fights.take(PlayerKill{}, Start + 10).isEmpty());
    const auto sealed = fights.take(PlayerKill{}, Start + 25);
    ASSERT_EQ(sealed.size(), 1);
    EXPECT_EQ(sealed[0].label, QStringLiteral("Double Kill"));
    EXPECT_EQ(sealed[0].seconds, 33);
    EXPECT_EQ(markers(fights.tick(Start + 31).value(0)), QStringList{QStringLiteral("kill 6")});
}

TEST(WowFights, DeathStartsNoFight)
{
    WowFights fights;
    EXPECT_TRUE(fights.take(PlayerDeath{}, Start).isEmpty());
    EXPECT_TRUE(fights.tick(Start + 6).isEmpty());
    fights.take(PlayerKill{}, Start + 7);
    EXPECT_EQ(fights.tick(Start + 13).value(0).score, 10);
}

TEST(WowFights, DeathExtendsFightAndSubtractsPoints)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    fights.take(PlayerKill{}, Start + 1);
    fights.take(PlayerDeath{}, Start + 5);
    EXPECT_TRUE(fights.tick(Start + 10).isEmpty());
    const auto moment = fights.tick(Start + 11).value(0);
    EXPECT_EQ(moment.score, 20);
    EXPECT_EQ(moment.seconds, 19);
    EXPECT_EQ(markers(moment),
              (QStringList{QStringLiteral("kill 11"), QStringLiteral("multikill_2 10"), QStringLiteral("my_death 6")}));
}

TEST(WowFights, FightBelowLowestTierGivesNoMoment)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    fights.take(PlayerDeath{}, Start + 1);
    EXPECT_TRUE(fights.tick(Start + 7).isEmpty());
}

struct BossRow {
    std::optional<int> difficulty;
    int points;
    ClipTier tier;
};

TEST(WowFights, BossPointsDependOnDifficulty)
{
    constexpr BossRow Rows[]{
        {std::nullopt, 10, ClipTier::basic},
        {0, 10, ClipTier::basic},
        {6, 10, ClipTier::basic},
        {7, 15, ClipTier::basic},
        {8, 30, ClipTier::medium},
        {9, 10, ClipTier::basic},
        {13, 10, ClipTier::basic},
        {14, 35, ClipTier::medium},
        {15, 60, ClipTier::medium},
        {16, 110, ClipTier::epic},
        {17, 15, ClipTier::basic},
        {18, 10, ClipTier::basic},
        {22, 10, ClipTier::basic},
        {23, 30, ClipTier::medium},
        {24, 10, ClipTier::basic},
        {220, 10, ClipTier::basic},
        {-16, 10, ClipTier::basic},
        {std::numeric_limits<int>::min(), 10, ClipTier::basic},
        {std::numeric_limits<int>::max(), 10, ClipTier::basic},
    };
    WowFights fights;
    for (const auto& row : Rows) {
        const auto moments = fights.take(boss(row.difficulty), Start);
        ASSERT_EQ(moments.size(), 1);
        EXPECT_EQ(moments[0].score, row.points) << row.difficulty.value_or(-1);
        EXPECT_EQ(moments[0].tier, row.tier) << row.difficulty.value_or(-1);
        EXPECT_EQ(moments[0].label, QStringLiteral("Boss: Name"));
        EXPECT_EQ(moments[0].seconds, 60);
        EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("boss_kill 2")});
    }
    EXPECT_TRUE(fights.tick(Start + 100).isEmpty());
}

struct KeystoneRow {
    int level;
    int points;
    ClipTier tier;
};

TEST(WowFights, KeystonePointsDependOnLevel)
{
    constexpr KeystoneRow Rows[]{
        {0, 30, ClipTier::medium}, {2, 38, ClipTier::medium},    {14, 86, ClipTier::medium},
        {15, 90, ClipTier::epic},  {1000, 4030, ClipTier::epic},
    };
    WowFights fights;
    for (const auto& row : Rows) {
        const auto moment = fights.take(KeystoneRun{row.level}, Start).value(0);
        EXPECT_EQ(moment.score, row.points);
        EXPECT_EQ(moment.tier, row.tier);
        EXPECT_EQ(moment.label, QStringLiteral("Mythic+ ") + QString::number(row.level));
        EXPECT_EQ(moment.seconds, 45);
        EXPECT_EQ(markers(moment), QStringList{QStringLiteral("dungeon_complete 2")});
    }
}

TEST(WowFights, BossDuringFightSharesItsClip)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    const auto moments = fights.take(boss(14), Start + 4);
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].label, QStringLiteral("Boss: Name + 1 Kill"));
    EXPECT_EQ(moments[0].score, 45);
    EXPECT_EQ(moments[0].seconds, 60);
    EXPECT_EQ(markers(moments[0]), (QStringList{QStringLiteral("kill 6"), QStringLiteral("boss_kill 2")}));
    EXPECT_TRUE(fights.tick(Start + 20).isEmpty());
}

TEST(WowFights, BossLongAfterFightSealsThatFightFirst)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    const auto moments = fights.take(boss(16), Start + 11);
    ASSERT_EQ(moments.size(), 2);
    EXPECT_EQ(moments[0].label, QStringLiteral("Kill"));
    EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("kill 11")});
    EXPECT_EQ(moments[1].label, QStringLiteral("Boss: Name"));
}

TEST(WowFights, DiscardDropsFightButChainContinues)
{
    WowFights fights;
    fights.take(PlayerKill{}, Start);
    fights.discard();
    EXPECT_TRUE(fights.tick(Start + 6).isEmpty());
    fights.take(PlayerKill{}, Start + 8);
    EXPECT_EQ(fights.tick(Start + 14).value(0).label, QStringLiteral("Double Kill"));
}

TEST(WowFights, BoundsCountersAndMarkers)
{
    WowFights fights;
    for (int i = 0; i < 1'100'000; ++i) {
        fights.take(PlayerKill{}, Start);
    }
    const auto moment = fights.tick(Start + 6).value(0);
    EXPECT_EQ(moment.score, 10'000'000 + 120);
    EXPECT_LE(moment.events.size(), 1000);
    EXPECT_EQ(moment.events.last().name, QStringLiteral("multikill_1000000"));
}

} // namespace
} // namespace quelto
