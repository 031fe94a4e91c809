// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/league/LocalPlayer.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

LocalPlayer knownAs(const QString& name)
{
    LocalPlayer player;
    player.learn({name, QString(), QString()});
    return player;
}

TEST(LocalPlayer, IsNobodyBeforeItIsKnown)
{
    LocalPlayer player;
    player.learn({QString(), QStringLiteral("  "), QString()});
    EXPECT_FALSE(player.isKnown());
    for (const auto& name : {QString(), QStringLiteral("  "), QStringLiteral("#TR1"), QStringLiteral("Ufuk")}) {
        EXPECT_FALSE(player.is(name)) << name.toStdString();
    }
}

TEST(LocalPlayer, IsKnownWhateverTheCaseAndTheBlanksAround)
{
    const auto player = knownAs(QStringLiteral(" Annie BOT\t"));
    EXPECT_TRUE(player.is(QStringLiteral("annie bot")));
    EXPECT_TRUE(player.is(QStringLiteral("  ANNIE bot ")));
    EXPECT_FALSE(player.is(QStringLiteral("anniebot")));
    EXPECT_TRUE(knownAs(QStringLiteral("ÇAĞRI")).is(QStringLiteral("çağrı").toUpper()));
}

TEST(LocalPlayer, ATaggedNameIsTheBareOnes)
{
    const auto player = knownAs(QStringLiteral("Ufuk"));
    EXPECT_TRUE(player.is(QStringLiteral("ufuk#tr1")));
    EXPECT_TRUE(player.is(QStringLiteral("Ufuk#a#b")));
    EXPECT_FALSE(player.is(QStringLiteral("Ufuk 2#TR1")));
}

TEST(LocalPlayer, AKnownTagMatchesOnlyItself)
{
    const auto player = knownAs(QStringLiteral("Ufuk#TR1"));
    EXPECT_TRUE(player.is(QStringLiteral("ufuk#tr1")));
    EXPECT_FALSE(player.is(QStringLiteral("Ufuk")));
    EXPECT_FALSE(player.is(QStringLiteral("Ufuk#EUW")));
}

TEST(LocalPlayer, LearnsNoMoreNamesThanAPlayerCanHave)
{
    LocalPlayer player;
    for (int i = 0; i < 1000; ++i) {
        player.learn({QString::number(i), QString(), QString()});
    }
    EXPECT_TRUE(player.is(QStringLiteral("0")));
    EXPECT_FALSE(player.is(QStringLiteral("999")));
}

} // namespace
} // namespace quelto
