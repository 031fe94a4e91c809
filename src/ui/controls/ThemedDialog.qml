// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// The frame of a modal dialog in the middle of the window. Escape closes it.
T.Popup {
    id: dialog

    property real widest: 420

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(widest, parent.width - 40) : widest
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: Theme.spacing.dialog
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Qt.alpha(Theme.bg, 0.7)
    }

    background: Rectangle {
        radius: Theme.radius.panel
        color: Theme.panel
        border.width: 1
        border.color: Theme.border

        Shadow {
            radius: 28
            offset: 10
            cornerRadius: Theme.radius.panel
            color: Qt.alpha(Theme.shadow, 0.5)
        }
    }
}
