// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// The title of the page, and the line below it.
Column {
    id: heading

    spacing: Theme.spacing.lines

    Text {
        width: heading.width
        text: L10n.T("Ayarlar")
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontSize.pageTitle
        font.weight: Font.ExtraBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: heading.width
        text: L10n.T("Değişiklikler otomatik kaydedilir; kayıt gerekirse kendiliğinden yeniden başlar.")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: Theme.fontSize.label
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
