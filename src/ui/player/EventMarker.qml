// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A moment on the timeline. A click plays it with the seconds before it.
T.AbstractButton {
    id: marker

    required property string symbol
    required property color color
    required property string title
    required property string time
    readonly property real side: 17

    implicitWidth: side
    implicitHeight: side
    // Above its neighbours, where moments are close together.
    z: hovered || visualFocus ? 1 : 0
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: title + " • " + time
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: marker.clicked()
    }

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            symbol: marker.symbol
            side: 10
            weight: Font.Black
            color: Theme.shadow
        }
    }

    background: Rectangle {
        radius: marker.side / 2
        color: Qt.alpha(marker.color, marker.hovered || marker.down ? 1 : 0.85)
        border.width: 1
        border.color: Qt.alpha(Theme.shadow, 0.4)

        FocusRing {
            active: marker.visualFocus
            gap: 2
            cornerRadius: marker.side / 2
        }
    }

    ThemedToolTip {
        text: marker.text
    }
}
