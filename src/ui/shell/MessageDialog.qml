// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// A modal message. Escape, Enter or its button close it.
ThemedDialog {
    id: dialog

    required property string title
    required property string text

    widest: 460
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
