// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/wow/WowFights.h"

#include <gtest/gtest.h>

#include <limits>

namespace quelto {
namespace {

constexpr double T0 = 5000;

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

TEST(WowFights, AFightIsOverAfterSixQuietSeconds)
{
    WowFights fights;
    EXPECT_TRUE(fights.take(PlayerKill{}, T0).isEmpty());
    EXPECT_TRUE(fights.tick(T0).isEmpty());
    EXPECT_TRUE(fights.tick(T0 + 5.9).isEmpty());
    const auto moments = fights.tick(T0 + 6);
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].game, QStringLiteral("World of Warcraft"));
    EXPECT_EQ(moments[0].tier, ClipTier::basic);
    EXPECT_EQ(moments[0].score, 10);
    EXPECT_EQ(moments[0].label, QStringLiteral("Kill"));
    EXPECT_EQ(moments[0].seconds, 15);
    EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("kill 6")});
    EXPECT_TRUE(fights.tick(T0 + 12).isEmpty());
}

TEST(WowFights, WithoutAFightThereIsNothingToTell)
{
    WowFights fights;
    EXPECT_TRUE(fights.tick(0).isEmpty());
    EXPECT_TRUE(fights.tick(1e9).isEmpty());
}

TEST(WowFights, KillsTenSecondsApartChain)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    fights.take(PlayerKill{}, T0 + 10);
    const auto moment = fights.tick(T0 + 16).value(0);
    EXPECT_EQ(moment.label, QStringLiteral("Double Kill"));
    EXPECT_EQ(moment.score, 28);
    EXPECT_EQ(moment.seconds, 24);
    EXPECT_EQ(markers(moment), (QStringList{QStringLiteral("kill 16"), QStringLiteral("multikill_2 6")}));
}

TEST(WowFights, KillsFurtherApartDoNotChain)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    const auto first = fights.take(PlayerKill{}, T0 + 10.1);
    ASSERT_EQ(first.size(), 1);
    EXPECT_EQ(first[0].label, QStringLiteral("Kill"));
    const auto second = fights.tick(T0 + 17).value(0);
    EXPECT_EQ(second.label, QStringLiteral("Kill"));
    EXPECT_EQ(second.score, 10);
}

TEST(WowFights, AChainSurvivesItsFightButAMultikillDoesNot)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    fights.take(PlayerKill{}, T0 + 1);
    EXPECT_EQ(fights.tick(T0 + 7).size(), 1);
    fights.take(PlayerKill{}, T0 + 8);
    const auto third = fights.tick(T0 + 14).value(0);
    EXPECT_EQ(third.label, QStringLiteral("Triple Kill"));
    EXPECT_EQ(third.score, 60);
    EXPECT_EQ(markers(third), QStringList{QStringLiteral("multikill_3 6")});
    fights.take(PlayerKill{}, T0 + 30);
    EXPECT_EQ(fights.tick(T0 + 36).value(0).label, QStringLiteral("Kill"));
}

TEST(WowFights, AKillSevenSecondsLaterIsAFightOfItsOwn)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    EXPECT_EQ(fights.tick(T0 + 6).size(), 1);
    EXPECT_TRUE(fights.take(PlayerKill{}, T0 + 7).isEmpty());
    const auto moment = fights.tick(T0 + 13).value(0);
    EXPECT_EQ(moment.events.size(), 1);
    EXPECT_EQ(moment.seconds, 15);
}

TEST(WowFights, AfterADelayedTickOldFightsEndBeforeNewOnesBegin)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    EXPECT_TRUE(fights.take(PlayerKill{}, T0 + 10).isEmpty());
    const auto sealed = fights.take(PlayerKill{}, T0 + 25);
    ASSERT_EQ(sealed.size(), 1);
    EXPECT_EQ(sealed[0].label, QStringLiteral("Double Kill"));
    EXPECT_EQ(sealed[0].seconds, 33);
    EXPECT_EQ(markers(fights.tick(T0 + 31).value(0)), QStringList{QStringLiteral("kill 6")});
}

TEST(WowFights, ADeathStartsNoFight)
{
    WowFights fights;
    EXPECT_TRUE(fights.take(PlayerDeath{}, T0).isEmpty());
    EXPECT_TRUE(fights.tick(T0 + 6).isEmpty());
    fights.take(PlayerKill{}, T0 + 7);
    EXPECT_EQ(fights.tick(T0 + 13).value(0).score, 10);
}

TEST(WowFights, ADeathExtendsAFightAndCosts)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    fights.take(PlayerKill{}, T0 + 1);
    fights.take(PlayerDeath{}, T0 + 5);
    EXPECT_TRUE(fights.tick(T0 + 10).isEmpty());
    const auto moment = fights.tick(T0 + 11).value(0);
    EXPECT_EQ(moment.score, 20);
    EXPECT_EQ(moment.seconds, 19);
    EXPECT_EQ(markers(moment),
              (QStringList{QStringLiteral("kill 11"), QStringLiteral("multikill_2 10"), QStringLiteral("my_death 6")}));
}

TEST(WowFights, AFightWorthTooLittleLeavesNoTrace)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    fights.take(PlayerDeath{}, T0 + 1);
    EXPECT_TRUE(fights.tick(T0 + 7).isEmpty());
}

struct BossRow {
    std::optional<int> difficulty;
    int points;
    ClipTier tier;
};

TEST(WowFights, ABossIsWorthItsDifficulty)
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
        const auto moments = fights.take(boss(row.difficulty), T0);
        ASSERT_EQ(moments.size(), 1);
        EXPECT_EQ(moments[0].score, row.points) << row.difficulty.value_or(-1);
        EXPECT_EQ(moments[0].tier, row.tier) << row.difficulty.value_or(-1);
        EXPECT_EQ(moments[0].label, QStringLiteral("Boss: Name"));
        EXPECT_EQ(moments[0].seconds, 60);
        EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("boss_kill 2")});
    }
    EXPECT_TRUE(fights.tick(T0 + 100).isEmpty());
}

struct KeystoneRow {
    int level;
    int points;
    ClipTier tier;
};

TEST(WowFights, AKeystoneIsWorthItsLevel)
{
    constexpr KeystoneRow Rows[]{
        {0, 30, ClipTier::medium}, {2, 38, ClipTier::medium},    {14, 86, ClipTier::medium},
        {15, 90, ClipTier::epic},  {1000, 4030, ClipTier::epic},
    };
    WowFights fights;
    for (const auto& row : Rows) {
        const auto moment = fights.take(KeystoneRun{row.level}, T0).value(0);
        EXPECT_EQ(moment.score, row.points);
        EXPECT_EQ(moment.tier, row.tier);
        EXPECT_EQ(moment.label, QStringLiteral("Mythic+ ") + QString::number(row.level));
        EXPECT_EQ(moment.seconds, 45);
        EXPECT_EQ(markers(moment), QStringList{QStringLiteral("dungeon_complete 2")});
    }
}

TEST(WowFights, ABossInAFightJoinsItInOneClip)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    const auto moments = fights.take(boss(14), T0 + 4);
    ASSERT_EQ(moments.size(), 1);
    EXPECT_EQ(moments[0].label, QStringLiteral("Boss: Name + 1 Kill"));
    EXPECT_EQ(moments[0].score, 45);
    EXPECT_EQ(moments[0].seconds, 60);
    EXPECT_EQ(markers(moments[0]), (QStringList{QStringLiteral("kill 6"), QStringLiteral("boss_kill 2")}));
    EXPECT_TRUE(fights.tick(T0 + 20).isEmpty());
}

TEST(WowFights, ABossLongAfterAFightEndsThatFightFirst)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    const auto moments = fights.take(boss(16), T0 + 11);
    ASSERT_EQ(moments.size(), 2);
    EXPECT_EQ(moments[0].label, QStringLiteral("Kill"));
    EXPECT_EQ(markers(moments[0]), QStringList{QStringLiteral("kill 11")});
    EXPECT_EQ(moments[1].label, QStringLiteral("Boss: Name"));
}

TEST(WowFights, ADiscardedFightIsNotToldButItsChainGoesOn)
{
    WowFights fights;
    fights.take(PlayerKill{}, T0);
    fights.discard();
    EXPECT_TRUE(fights.tick(T0 + 6).isEmpty());
    fights.take(PlayerKill{}, T0 + 8);
    EXPECT_EQ(fights.tick(T0 + 14).value(0).label, QStringLiteral("Double Kill"));
}

TEST(WowFights, NumbersNoPlayerReachesStayCountable)
{
    WowFights fights;
    for (int i = 0; i < 1'100'000; ++i) {
        fights.take(PlayerKill{}, T0);
    }
    const auto moment = fights.tick(T0 + 6).value(0);
    EXPECT_EQ(moment.score, 10'000'000 + 120);
    EXPECT_LE(moment.events.size(), 1000);
    EXPECT_EQ(moment.events.last().name, QStringLiteral("multikill_1000000"));
}

} // namespace
} // namespace quelto
