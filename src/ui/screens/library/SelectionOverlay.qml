// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// Over the thumbnail of a selectable card: whether it is selected. The dark plate keeps the mark legible on any picture.
Item {
    id: overlay

    property bool isSelected: false

    ThemedToolTip {
        text: L10n.T("Tıkla: seç • Çift tıkla: oynat")
    }

    Rectangle {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.spacing.overlay
        width: 26
        height: width
        radius: width / 2
        color: Qt.alpha(Theme.shadow, 0.6)

        // Shows through the check mark.
        Rectangle {
            anchors.centerIn: parent
            width: 14
            height: width
            radius: width / 2
            visible: overlay.isSelected
            color: Theme.onAccent
        }

        SymbolIcon {
            anchors.centerIn: parent
            symbol: overlay.isSelected ? "checkmark.circle.fill" : "circle"
            side: 22
            color: overlay.isSelected ? Theme.accent : Theme.onAccent
        }
    }
}
