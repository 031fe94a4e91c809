// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A button that has only a symbol. Its text is the tool tip and the name for screen readers.
T.AbstractButton {
    id: button

    property string symbol: ""
    property int side: 16
    // Units: logical pixels, between the symbol and the edge.
    property real inset: 6
    property real focusGap: 1
    property color idleColor: Theme.muted

    implicitWidth: side + 2 * inset
    implicitHeight: side + 2 * inset
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            symbol: button.symbol
            side: button.side
            color: button.enabled && (button.hovered || button.down || button.visualFocus) ? Theme.text : button.idleColor
        }
    }

    background: Rectangle {
        radius: Theme.radius.smallControl
        color: button.enabled && (button.hovered || button.down) ? Theme.cardHover : "transparent"

        FocusRing {
            active: button.visualFocus
            gap: button.focusGap
            cornerRadius: Theme.radius.smallControl
        }
    }

    ThemedToolTip {
        text: button.text
    }
}
