// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Icons
import Quelto.Theme

// Opens the menu of its card. It takes no focus: the grid opens the menu for the keyboard.
T.AbstractButton {
    id: button

    implicitWidth: 22
    implicitHeight: 22
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            symbol: "ellipsis"
            side: 16
            color: button.hovered || button.down ? Theme.text : Theme.muted
        }
    }

    background: Rectangle {
        radius: Theme.radius.smallControl
        visible: button.hovered || button.down
        color: Theme.border
    }
}
