// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

LocalPlayer playerNamed(const QString& name)
{
    LocalPlayer player;
    player.addNames({name, QString(), QString()});
    return player;
}

TEST(LocalPlayer, MatchesNoNameBeforeItIsKnown)
{
    LocalPlayer player;
    player.addNames({QString(), QStringLiteral("  "), QString()});
    EXPECT_FALSE(player.isKnown());
    for (const auto& name : {QString(), QStringLiteral("  "), QStringLiteral("#TR1"), QStringLiteral("Ufuk")}) {
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

TEST(LocalPlayer, KnownTaggedNameMatchesOnlyItself)
{
    const auto player = playerNamed(QStringLiteral("Ufuk#TR1"));
    EXPECT_TRUE(player.matches(QStringLiteral("ufuk#tr1")));
    EXPECT_FALSE(player.matches(QStringLiteral("Ufuk")));
    EXPECT_FALSE(player.matches(QStringLiteral("Ufuk#EUW")));
}

TEST(LocalPlayer, BoundsNumberOfNames)
{
    LocalPlayer player;
    for (int i = 0; i < 1000; ++i) {
        player.addNames({QString::number(i), QString(), QString()});
    }
    EXPECT_TRUE(player.matches(QStringLiteral("0")));
    EXPECT_FALSE(player.matches(QStringLiteral("999")));
}

} // namespace
} // namespace quelto
