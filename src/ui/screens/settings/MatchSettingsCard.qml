// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

// Explains what happens at the end of a match.
SectionCard {
    id: card

    title: L10n.T("Maç Özeti")
    symbol: "flag.checkered"

    CardParagraph {
        width: card.contentWidth
        text: L10n.T("Maç sırasında oto klipler tek tek bildirim göstermez; maç bitince hepsi tek bildirimde toplanır ve Maç Özetleri'nde seçip silebilirsin.")
    }

    CardParagraph {
        width: card.contentWidth
        text: L10n.T("Maç bitince bildirime tıklayıp klipleri incele: beğendiklerin kalır, diğerleri Çöp Kutusu'na gider.")
    }
}
