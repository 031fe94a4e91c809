// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// Explains the scores of moments. Closed at first.
Column {
    id: table

    spacing: Theme.spacing.stack

    ScoreTableButton {
        id: button

        text: L10n.T("Nasıl puanlıyor?")
    }

    Column {
        width: table.width
        visible: button.isOpen
        spacing: Theme.spacing.badge

        ScoreLine {
            label: L10n.T("Kill")
            points: L10n.T("+10  (solo kill +5 ekstra)")
        }

        ScoreLine {
            label: L10n.T("Asist")
            points: "+3"
        }

        ScoreLine {
            label: "Double / Triple / Quadra (Ultra) / Penta (Rampage)"
            points: "+8 / +30 / +60 / +120"
        }

        ScoreLine {
            label: L10n.T("Ace (kill aldıysan)")
            points: "+15"
        }

        ScoreLine {
            label: L10n.T("Kıl payı (%15 can altına düşüp kill alıp yaşamak)")
            points: "+20"
        }

        ScoreLine {
            label: L10n.T("Baron-Elder çalma / Ejderha çalma / Herald çalma")
            points: "+100 / +60 / +40"
        }

        ScoreLine {
            label: L10n.T("Baron / Ejderha / Kule / İnhibitör")
            points: "+25 / +15 / +4 / +6"
        }

        ScoreLine {
            label: L10n.T("İlk Kan")
            points: "+8"
        }

        ScoreLine {
            label: L10n.T("Dota: Aegis / Zafer")
            points: "+25 / +30"
        }

        ScoreLine {
            label: L10n.T("WoW boss: Mythic / Heroic / Normal / LFR")
            points: "+110 / +60 / +35 / +15"
        }

        ScoreLine {
            label: L10n.T("WoW Mythic+ bitirme")
            points: L10n.T("30 + seviye × 4")
        }

        ScoreLine {
            label: L10n.T("Dövüşte ölmek")
            points: "−8"
        }
    }
}
