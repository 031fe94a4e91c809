// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Clips of moments in games: which games and tiers, what each game's watcher reports, and how moments are scored.
SectionCard {
    id: card

    title: L10n.T("Oto Klip")
    symbol: "sparkles"

    ToggleRow {
        id: mainSwitch

        title: L10n.T("Otomatik klip al")
        subtitle: L10n.T("Maç sırasında dövüşleri takip eder, puanlar ve seçtiğiniz seviyedeki anları kendisi kaydeder. Oyunların resmi veri kaynaklarını okur, oyuna dokunmaz.")
        isOn: AppSettings.autoClipEnabled
        onFlipped: isOn => AppSettings.autoClipEnabled = isOn
    }

    OptionalGroup {
        width: card.contentWidth
        isShown: AppSettings.autoClipEnabled
        fallback: mainSwitch.control

        GameRows {
            width: card.contentWidth
        }

        TierRows {
            width: card.contentWidth
        }

        ScoreTable {
            width: card.contentWidth
        }
    }
}
