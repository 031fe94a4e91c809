// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Theme

// The text and the buttons of a ConfirmationDialog.
Column {
    id: body

    required property string title
    required property string message
    required property string plainMessage
    required property string confirmText
    // Empty for no second action.
    required property string alternativeText
    required property string cancelText
    required property bool destructive
    required property bool isAsking
    readonly property real rowWidth: cancel.implicitWidth + confirm.implicitWidth + buttons.columnSpacing
                                     + (alternative.visible ? alternative.implicitWidth + buttons.columnSpacing : 0)
    // Buttons that are too long for one row are below each other.
    readonly property bool isStacked: rowWidth > width

    enum Answer {
        None,
        Cancel,
        Alternative,
        Confirm
    }

    signal answered(int answer)

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

    Item {
        width: parent.width
        implicitHeight: buttons.height + Theme.spacing.stack

        GridLayout {
            id: buttons

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: body.isStacked ? parent.width : implicitWidth
            rowSpacing: Theme.spacing.row
            columnSpacing: Theme.spacing.stack

            AccentButton {
                id: cancel

                Layout.row: body.isStacked ? 2 : 0
                Layout.column: 0
                Layout.fillWidth: body.isStacked
                filled: false
                compact: true
                text: body.cancelText
                KeyNavigation.right: alternative
                KeyNavigation.up: confirm
                onClicked: body.answered(ConfirmationContent.Cancel)
            }

            AccentButton {
                id: alternative

                Layout.row: 0
                Layout.column: body.isStacked ? 0 : 1
                Layout.fillWidth: body.isStacked
                visible: text !== ""
                filled: false
                compact: true
                text: body.alternativeText
                KeyNavigation.right: confirm
                onClicked: body.answered(ConfirmationContent.Alternative)
            }

            AccentButton {
                id: confirm

                Layout.row: body.isStacked ? 1 : 0
                Layout.column: body.isStacked ? 0 : 2
                Layout.fillWidth: body.isStacked
                compact: true
                destructive: body.destructive
                text: body.confirmText
                KeyNavigation.up: alternative
                onClicked: body.answered(ConfirmationContent.Confirm)
            }
        }
    }
}
