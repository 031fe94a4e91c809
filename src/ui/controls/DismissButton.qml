// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A small cross that removes the notice beside it. Its text is the tool tip and the name for screen readers.
T.AbstractButton {
    id: button

    implicitWidth: 18
    implicitHeight: 18
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            symbol: "xmark"
            side: 12
            color: button.hovered || button.down || button.visualFocus ? Theme.text : Theme.muted
        }
    }

    background: Rectangle {
        radius: Theme.radius.badge
        color: button.hovered || button.down ? Theme.cardHover : "transparent"

        FocusRing {
            active: button.visualFocus
            gap: 1
            cornerRadius: Theme.radius.badge
        }
    }

    ThemedToolTip {
        text: button.text
    }
}
