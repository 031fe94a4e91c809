// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Offers a newer version.
T.AbstractButton {
    id: row

    required property string version
    readonly property int symbolSide: 16

    text: L10n.T("Güncelleme var: {0}", [version])
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.control
    verticalPadding: 9
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: text
    Accessible.ignored: !visible
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    contentItem: Row {
        spacing: Theme.spacing.row

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.down.circle.fill"
            side: row.symbolSide
            color: Theme.good
        }

        UpdateText {
            width: row.availableWidth - row.symbolSide - Theme.spacing.row
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            color: Theme.text
            font.pixelSize: Theme.fontSize.label
            font.weight: Font.Bold
        }
    }

    background: Rectangle {
        radius: Theme.radius.card
        color: row.hovered || row.down ? Theme.cardHover : Theme.card
        border.width: 1
        border.color: Qt.alpha(Theme.good, 0.4)

        FocusRing {
            active: row.visualFocus
            cornerRadius: Theme.radius.card
        }
    }
}
