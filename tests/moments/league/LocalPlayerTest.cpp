// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

LocalPlayer playerIn(const LeagueData& data)
{
    LocalPlayer player;
    player.update(data);
    return player;
}

LocalPlayer playerNamed(const QString& name)
{
    return playerIn({.activePlayer = {name, QString(), QString()}});
}

LeaguePlayer listed(const QString& name, const QString& champion)
{
    return {.names = {QString(), name, QString()}, .team = std::nullopt, .champion = champion};
}

/// Ufuk plays Ahri beside the given players.
LocalPlayer ahriBeside(const QList<LeaguePlayer>& others)
{
    const auto name = QStringLiteral("Ufuk");
    return playerIn({.activePlayer = {name, QString(), QString()},
                     .players = others + QList{listed(name, QStringLiteral("Ahri"))}});
}

TEST(LocalPlayer, MatchesNoNameBeforeItIsKnown)
{
    const auto player = playerIn({.activePlayer = {QString(), QStringLiteral("  "), QStringLiteral("#TR1")}});
    for (const auto& name : {QString(), QStringLiteral("  "), QStringLiteral("#"), QStringLiteral("Ufuk")}) {
        EXPECT_FALSE(player.matches(name)) << name.toStdString();
    }
}

TEST(LocalPlayer, IgnoresCaseAndSurroundingWhiteSpace)
{
    const auto player = playerNamed(QStringLiteral(" Annie BOT\t"));
    EXPECT_TRUE(player.matches(QStringLiteral("annie bot")));
    EXPECT_TRUE(player.matches(QStringLiteral("  ANNIE bot ")));
    EXPECT_FALSE(player.matches(QStringLiteral("anniebot")));
    EXPECT_TRUE(playerNamed(QStringLiteral("ÇAĞRI")).matches(QStringLiteral("çağrı").toUpper()));
}

TEST(LocalPlayer, KnownBareNameMatchesAnyTag)
{
    const auto player = playerNamed(QStringLiteral("Ufuk"));
    EXPECT_TRUE(player.matches(QStringLiteral("ufuk#tr1")));
    EXPECT_TRUE(player.matches(QStringLiteral("Ufuk#a#b")));
    EXPECT_FALSE(player.matches(QStringLiteral("Ufuk 2#TR1")));
}

TEST(LocalPlayer, KnownTaggedNameMatchesWithoutTagButNotWithAnother)
{
    const auto player = playerNamed(QStringLiteral("Ufuk#TR1"));
    EXPECT_TRUE(player.matches(QStringLiteral("ufuk#tr1")));
    EXPECT_TRUE(player.matches(QStringLiteral("Ufuk")));
    EXPECT_FALSE(player.matches(QStringLiteral("Ufuk#EUW")));
    EXPECT_FALSE(player.matches(QStringLiteral("Ufuk 2")));
}

TEST(LocalPlayer, IsFoundInListByNameWithoutTag)
{
    const auto player = playerIn({.activePlayer = {QStringLiteral("Ufuk#TR1"), QString(), QString()},
                                  .players = {listed(QStringLiteral("Derin"), QStringLiteral("Annie")),
                                              {.names = {QString(), QString(), QStringLiteral("Ufuk")},
                                               .team = QStringLiteral("ORDER"),
                                               .champion = QStringLiteral("Ahri")}}});
    EXPECT_EQ(player.champion(), QStringLiteral("Ahri"));
    EXPECT_EQ(player.team(), QStringLiteral("ORDER"));
}

TEST(LocalPlayer, OwnTagComesBeforeSameNameWithAnotherTag)
{
    const auto player = playerIn({.activePlayer = {QStringLiteral("Ufuk#TR1"), QString(), QString()},
                                  .players = {{.names = {QStringLiteral("Ufuk#EUW"), QStringLiteral("Ufuk"), QString()},
                                               .team = std::nullopt,
                                               .champion = QStringLiteral("Annie")},
                                              {.names = {QStringLiteral("Ufuk#TR1"), QStringLiteral("Ufuk"), QString()},
                                               .team = std::nullopt,
                                               .champion = QStringLiteral("Ahri")}}});
    EXPECT_EQ(player.champion(), QStringLiteral("Ahri"));
}

TEST(LocalPlayer, ChampionCountsAsNameWhileNobodyElseHasIt)
{
    const auto player = ahriBeside({listed(QStringLiteral("Derin"), QStringLiteral("Annie"))});
    EXPECT_TRUE(player.matches(QStringLiteral(" ahri")));
    EXPECT_FALSE(player.matches(QStringLiteral("Annie")));
    // A name with a tag is a player's name, not a champion's.
    EXPECT_FALSE(player.matches(QStringLiteral("Ahri#TR1")));

    EXPECT_FALSE(ahriBeside({listed(QStringLiteral("Derin"), QStringLiteral("AHRI"))}).matches(QStringLiteral("Ahri")));
}

TEST(LocalPlayer, ChampionIsNoNameWhileAnotherPlayerIsCalledLikeIt)
{
    for (const auto& name : {QStringLiteral("ahri"), QStringLiteral("Ahri#EUW")}) {
        const auto player = ahriBeside({listed(name, QStringLiteral("Annie"))});
        EXPECT_FALSE(player.matches(QStringLiteral("Ahri"))) << name.toStdString();
    }
}

TEST(LocalPlayer, ChampionOfEarlierListIsForgotten)
{
    const auto name = QStringLiteral("Ufuk");
    LocalPlayer player;
    player.update({.players = {}});
    LeagueData data{.activePlayer = {name, QString(), QString()}, .players = {listed(name, QStringLiteral("Ahri"))}};
    player.update(data);
    EXPECT_TRUE(player.matches(QStringLiteral("Ahri")));
    data.players = {listed(name, QStringLiteral("Jinx"))};
    player.update(data);
    EXPECT_FALSE(player.matches(QStringLiteral("Ahri")));
    EXPECT_TRUE(player.matches(QStringLiteral("Jinx")));
    data.players.clear();
    player.update(data);
    EXPECT_FALSE(player.matches(QStringLiteral("Jinx")));
    EXPECT_TRUE(player.matches(name));
}

TEST(LocalPlayer, BoundsNumberOfNames)
{
    LocalPlayer player;
    for (int i = 0; i < 1000; ++i) {
        player.update({.activePlayer = {QStringLiteral("0"), QString(), QString()},
                       .players = {{.names = {QStringLiteral("0"), QString::number(i), QString()},
                                    .team = std::nullopt,
                                    .champion = QString()}}});
    }
    EXPECT_TRUE(player.matches(QStringLiteral("0")));
    EXPECT_FALSE(player.matches(QStringLiteral("999")));
}

} // namespace
} // namespace quelto
