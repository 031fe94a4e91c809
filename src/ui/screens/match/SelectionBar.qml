// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.MatchPage
import Quelto.Shared
import Quelto.Theme

// The heading of the clips, and the buttons for their selection. What does not fit in one row is below.
Item {
    id: bar

    required property MatchRecap match
    readonly property real gap: Theme.spacing.paragraph
    readonly property bool fits: heading.implicitWidth + toggle.implicitWidth + remove.implicitWidth + 2 * gap <= width

    signal deleteRequested

    implicitHeight: remove.y + remove.height

    Text {
        id: heading

        anchors.verticalCenter: toggle.verticalCenter
        text: L10n.T("Klipler")
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontSize.dialogTitle
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    AccentButton {
        id: toggle

        x: heading.width + bar.gap
        width: Math.min(implicitWidth, bar.width - x)
        enabled: bar.match.count > 0
        filled: false
        compact: true
        text: bar.match.isAllSelected ? L10n.T("Seçimi kaldır") : L10n.T("Tümünü seç")
        onClicked: bar.match.toggleAll()
    }

    AccentButton {
        id: remove

        x: bar.fits ? bar.width - width : 0
        y: bar.fits ? 0 : toggle.height + Theme.spacing.row
        width: Math.min(Math.ceil(implicitWidth), bar.width)
        enabled: bar.match.selectedCount > 0
        filled: false
        compact: true
        destructive: true
        symbol: "trash"
        text: L10n.T("Seçilenleri sil ({0})", [bar.match.selectedCount])
        onClicked: bar.deleteRequested()
    }
}
