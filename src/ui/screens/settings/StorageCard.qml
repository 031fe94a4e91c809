// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// Where clips are saved, and how large they may be to be shared.
SectionCard {
    id: card

    title: L10n.T("Depolama & Paylaşım")
    symbol: "externaldrive"

    SaveFolder {
        id: folder
    }

    SettingRow {
        title: L10n.T("Kayıt klasörü")
        subtitle: L10n.isolated(folder.shownPath)

        AccentButton {
            compact: true
            filled: false
            text: L10n.TOnDesktop("Finder'da Aç")
            Accessible.description: folder.shownPath
            onClicked: folder.open()
        }

        AccentButton {
            compact: true
            text: L10n.T("Değiştir…")
            Accessible.description: folder.shownPath
            onClicked: folder.chooseFolder(card)
        }
    }

    PillRow {
        title: L10n.T("Discord yükleme sınırı")
        subtitle: L10n.T("“Discord için küçült” bu boyutun altına sıkıştırır (Ücretsiz 10 MB, Nitro Basic 50 MB, Nitro 500 MB)")
        options: SettingsOptions.discordLimits()
        labelOf: megabytes => megabytes + " MB"
        selection: AppSettings.discordLimitMB
        onPicked: megabytes => AppSettings.discordLimitMB = megabytes
    }
}
