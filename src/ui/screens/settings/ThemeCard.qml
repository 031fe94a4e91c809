// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// The colours of the program.
SectionCard {
    id: card

    title: L10n.T("Görünüm")
    symbol: "paintpalette.fill"

    SettingRow {
        id: row

        title: L10n.T("Renk teması")
        subtitle: L10n.T("Uygulamanın tüm renkleri; degradeli temalar arka plana renk geçişi ekler")
    }

    PaletteGrid {
        width: card.contentWidth
        Accessible.description: row.subtitle
        onPicked: palette => AppSettings.colorTheme = palette
    }
}
