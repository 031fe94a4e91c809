// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// The text and the two buttons of a ConfirmationDialog.
Column {
    id: body

    required property string title
    required property string message
    required property string plainMessage
    required property string confirmText
    required property string cancelText
    required property bool destructive
    required property bool isAsking

    signal answered(bool yes)

    spacing: Theme.spacing.stack
    Accessible.role: Accessible.Dialog
    Accessible.name: title
    Accessible.description: plainMessage
    onIsAskingChanged: {
        if (isAsking) {
            cancel.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    Text {
        width: parent.width
        text: body.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.dialogTitle
        font.weight: Font.Bold
    }

    Text {
        width: parent.width
        visible: body.message !== ""
        text: body.message
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: Theme.fontSize.body
    }

    Row {
        anchors.right: parent.right
        topPadding: Theme.spacing.stack
        spacing: Theme.spacing.stack

        AccentButton {
            id: cancel

            filled: false
            compact: true
            text: body.cancelText
            KeyNavigation.right: confirm
            onClicked: body.answered(false)
        }

        AccentButton {
            id: confirm

            compact: true
            destructive: body.destructive
            text: body.confirmText
            KeyNavigation.left: cancel
            onClicked: body.answered(true)
        }
    }
}
