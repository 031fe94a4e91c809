// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/settings/GameStatus.h"

#include "base/language/T.h"
#include "moments/dota/DotaWatcher.h"

namespace quelto {

namespace {

GameStatus inGame(const QString& character)
{
    return {.text = character.isEmpty() ? T("Maçta") : T("Maçta") + QStringLiteral(" • ") + character};
}

} // namespace

GameStatus statusOf(const LeagueFacts& facts)
{
    return facts.isInGame ? inGame(facts.champion) : GameStatus{.text = T("Maç bekleniyor…")};
}

GameStatus statusOf(const DotaFacts& facts)
{
    if (facts.isInGame) {
        return inGame(facts.hero);
    }
    if (!facts.listenerError.isEmpty()) {
        return {.text = T("Bağlantı noktası açılamadı: {0}", facts.listenerError),
                .hint = T("{0} numaralı bağlantı noktasını kullanan programı kapatın, sonra bu anahtarı kapatıp açın.",
                          DotaWatcher::ListeningPort)};
    }
    switch (facts.installState) {
    case DotaConfig::InstallState::NotFound:
        return {.text = T("Dota 2 bulunamadı (Steam kütüphanesi bağlı mı?)")};
    case DotaConfig::InstallState::NotInstalled:
        return {.text = T("Entegrasyon kurulu değil")};
    case DotaConfig::InstallState::Installed:
        break;
    }
    return {.text = T("Hazır • Steam'de başlatma seçeneklerine -gamestateintegration ekleyin")};
}

GameStatus statusOf(const WowFacts& facts)
{
    if (!facts.isLogFound) {
        return {.text = T("World of Warcraft bulunamadı"),
                .hint = T("Quelto oyunu Wine, Lutris, Steam, Bottles ve Faugus'ta arar. Oyunu bir kez açın.")};
    }
    return {.text = facts.isActive ? T("Savaş kaydı okunuyor")
                                   : T("Oyunda sohbete /combatlog yazın (her girişte bir kez)")};
}

} // namespace quelto
