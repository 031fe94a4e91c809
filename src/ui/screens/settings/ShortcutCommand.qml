// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// The command that saves a clip, for the keyboard settings of the desktop.
Item {
    id: row

    implicitHeight: Math.max(field.implicitHeight, copyButton.implicitHeight)

    T.TextArea {
        id: field

        width: row.width - copyButton.width - Theme.spacing.row
        implicitHeight: contentHeight + topPadding + bottomPadding
        topPadding: 8
        bottomPadding: 8
        leftPadding: Theme.spacing.control
        rightPadding: Theme.spacing.control
        text: HotKeyManager.command
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.WrapAnywhere
        readOnly: true
        selectByMouse: true
        selectByKeyboard: true
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.onAccent
        font.family: "monospace"
        font.pixelSize: Theme.fontSize.caption
        Accessible.name: L10n.T("Komut")
        // Tab moves on.
        KeyNavigation.priority: KeyNavigation.BeforeItem
        KeyNavigation.tab: copyButton

        background: Rectangle {
            radius: Theme.radius.control
            color: Theme.bg
            border.width: 1
            border.color: field.activeFocus ? Theme.accent : Theme.border
        }
    }

    AccentButton {
        id: copyButton

        anchors.right: parent.right
        filled: false
        compact: true
        text: L10n.T("Kopyala")
        onClicked: {
            field.selectAll();
            field.copy();
            field.deselect();
            Navigation.showToast(L10n.T("Komut kopyalandı"));
        }
    }
}
