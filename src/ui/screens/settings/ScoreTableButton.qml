// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// Opens and closes the text below it.
T.AbstractButton {
    id: button

    readonly property bool isOpen: checked
    readonly property color foreground: hovered ? Theme.text : Theme.muted

    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    font.pixelSize: Theme.fontSize.label
    font.weight: Font.DemiBold
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    checkable: true
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            toggle();
        }
    }
    Accessible.onToggleAction: {
        if (enabled) {
            toggle();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: button.toggle()
    }

    contentItem: Row {
        spacing: Theme.spacing.badge

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "chevron.right"
            side: 12
            rotation: button.isOpen ? 90 : 0
            color: button.foreground
        }

        Text {
            text: button.text
            textFormat: Text.PlainText
            font: button.font
            color: button.foreground
        }
    }

    background: Item {
        FocusRing {
            active: button.visualFocus
            cornerRadius: Theme.radius.badge
        }
    }
}
