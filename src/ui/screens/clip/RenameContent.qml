// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// The text, the field and the two buttons of a RenameDialog.
Column {
    id: body

    property alias title: field.text

    signal cancelled
    signal accepted

    function start() {
        field.forceActiveFocus(Qt.TabFocusReason);
        field.selectAll();
    }

    spacing: Theme.spacing.stack
    Accessible.role: Accessible.Dialog
    Accessible.name: L10n.T("Klibi yeniden adlandır")

    Text {
        width: parent.width
        text: body.Accessible.name
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.dialogTitle
        font.weight: Font.Bold
    }

    InputField {
        id: field

        width: parent.width
        placeholder: L10n.T("Klip adı")
        onAccepted: body.accepted()
    }

    Row {
        anchors.right: parent.right
        topPadding: Theme.spacing.stack
        spacing: Theme.spacing.stack

        AccentButton {
            id: cancel

            filled: false
            compact: true
            text: L10n.T("Vazgeç")
            KeyNavigation.right: save
            onClicked: body.cancelled()
        }

        AccentButton {
            id: save

            compact: true
            text: L10n.T("Kaydet")
            KeyNavigation.left: cancel
            onClicked: body.accepted()
        }
    }
}
