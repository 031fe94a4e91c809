// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// Tells that a newer version waits.
T.AbstractButton {
    id: row

    required property string version

    text: L10n.T("Güncelleme var: {0}", [version])
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 9
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: text
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    contentItem: Row {
        spacing: 8

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.down.circle.fill"
            side: 16
            color: Theme.good
        }

        Text {
            width: row.availableWidth - 24
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            color: Theme.text
            font.pixelSize: 12
            font.weight: Font.Bold
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
        }
    }

    background: Rectangle {
        radius: 8
        color: row.hovered || row.down ? Theme.cardHover : Theme.card
        border.width: 1
        border.color: Qt.alpha(Theme.good, 0.4)

        FocusRing {
            active: row.visualFocus
            radius: 11
        }
    }
}
