// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/GameStatus.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using InstallState = DotaConfig::InstallState;

QString textOf(const auto& facts)
{
    return statusOf(facts).text;
}

TEST(GameStatusTest, LeagueNamesTheChampionOfTheMatch)
{
    EXPECT_EQ(textOf(LeagueFacts{}), QStringLiteral("Maç bekleniyor…"));
    EXPECT_EQ(textOf(LeagueFacts{.champion = QStringLiteral("Ahri")}), QStringLiteral("Maç bekleniyor…"));
    EXPECT_EQ(textOf(LeagueFacts{.isInGame = true}), QStringLiteral("Maçta"));
    EXPECT_EQ(textOf(LeagueFacts{.isInGame = true, .champion = QStringLiteral("Ahri")}),
              QStringLiteral("Maçta • Ahri"));
}

TEST(GameStatusTest, DotaReportsTheFirstThatApplies)
{
    DotaFacts facts{.isInGame = true,
                    .hero = QStringLiteral("Zeus"),
                    .listenerError = QStringLiteral("in use"),
                    .installState = InstallState::NotFound};
    EXPECT_EQ(textOf(facts), QStringLiteral("Maçta • Zeus"));
    facts.hero.clear();
    EXPECT_EQ(textOf(facts), QStringLiteral("Maçta"));
    facts.isInGame = false;
    EXPECT_EQ(textOf(facts), QStringLiteral("Bağlantı noktası açılamadı: in use"));
    facts.listenerError.clear();
    EXPECT_EQ(textOf(facts), QStringLiteral("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)"));
    facts.installState = InstallState::NotInstalled;
    EXPECT_EQ(textOf(facts), QStringLiteral("Entegrasyon kurulu değil"));
    facts.installState = InstallState::Installed;
    EXPECT_EQ(textOf(facts), QStringLiteral("Hazır • Steam'de başlatma seçeneklerine -gamestateintegration ekleyin"));
}

TEST(GameStatusTest, WowReportsTheFirstThatApplies)
{
    EXPECT_EQ(textOf(WowFacts{.isLogFound = false, .isActive = true}), QStringLiteral("World of Warcraft bulunamadı"));
    EXPECT_EQ(textOf(WowFacts{.isLogFound = true, .isActive = true}), QStringLiteral("Savaş kaydı okunuyor"));
    EXPECT_EQ(textOf(WowFacts{.isLogFound = true}),
              QStringLiteral("Oyunda sohbete /combatlog yazın (her girişte bir kez)"));
}

TEST(GameStatusTest, AHintSaysWhatToDoAboutABusyPortAndAMissingGame)
{
    EXPECT_TRUE(statusOf(DotaFacts{.listenerError = QStringLiteral("in use")}).hint.startsWith(u"37231 "));
    EXPECT_TRUE(statusOf(WowFacts{}).hint.contains(QStringLiteral("Lutris")));
    EXPECT_EQ(statusOf(WowFacts{.isLogFound = true}).hint, QString());
    EXPECT_EQ(statusOf(DotaFacts{}).hint, QString());
    EXPECT_EQ(statusOf(LeagueFacts{}).hint, QString());
}

} // namespace
} // namespace quelto
