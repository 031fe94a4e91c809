// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// A modal message. Escape, Enter or its button close it.
Popup {
    id: dialog

    required property string title
    required property string text

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 460
    padding: Theme.spacing.dialog
    modal: true
    focus: true
    T.Overlay.modal: Rectangle {
        color: Qt.alpha(Theme.bg, 0.7)
    }
    background: Rectangle {
        radius: Theme.radius.panel
        color: Theme.panel
        border.width: 1
        border.color: Theme.border
    }
    contentItem: Column {
        spacing: Theme.spacing.paragraph
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title
        Accessible.description: dialog.text

        Text {
            width: parent.width
            text: dialog.title
            color: Theme.text
            font.pixelSize: Theme.fontSize.dialogTitle
            font.weight: Font.Bold
        }

        Text {
            width: parent.width
            text: dialog.text
            color: Theme.muted
            font.pixelSize: Theme.fontSize.body
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
        }

        AccentButton {
            anchors.right: parent.right
            compact: true
            focus: true
            text: L10n.T("Kapat")
            onClicked: dialog.close()
        }
    }
}
