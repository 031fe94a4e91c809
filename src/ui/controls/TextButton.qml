// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A button without a frame, for an action that few users want.
T.AbstractButton {
    id: button

    // A fraction of a pixel less would cut the text.
    implicitWidth: Math.ceil(implicitContentWidth)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    verticalPadding: 7
    font.pixelSize: Theme.fontSize.label
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

    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: button.enabled && (button.hovered || button.down) ? Theme.text : Theme.muted
        font: button.font
    }

    background: Item {
        FocusRing {
            active: button.visualFocus
        }
    }
}
