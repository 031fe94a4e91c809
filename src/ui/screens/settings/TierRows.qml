// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// The tiers of which moments become clips, best first.
Column {
    spacing: Theme.spacing.paragraph

    TierRow {
        tier: "EFSANE"
        label: L10n.T("Efsane")
        text: L10n.T("Penta/Rampage, Baron-Elder çalma, Mythic boss, kıl payı kurtulduğun multi-kill + ace gibi gerçekten efsane anlar. 90+ puan.")
        isOn: AppSettings.autoClipEpic
        onFlipped: isOn => AppSettings.autoClipEpic = isOn
    }

    TierRow {
        tier: "ORTA"
        label: L10n.T("Orta")
        text: L10n.T("Triple kill (3'te 3), ejderha çalma, Heroic boss, Mythic+ bitirme, çok kill aldığın takım savaşları. 30–89 puan.")
        isOn: AppSettings.autoClipMedium
        onFlipped: isOn => AppSettings.autoClipMedium = isOn
    }

    TierRow {
        tier: "BASIT"
        label: L10n.T("Basit")
        text: L10n.T("Tek kill, double kill, Aegis. Kule tek başına kliplenmez. Her kill'i almasın istiyorsan kapalı tut. 8–29 puan.")
        isOn: AppSettings.autoClipBasic
        onFlipped: isOn => AppSettings.autoClipBasic = isOn
    }
}
