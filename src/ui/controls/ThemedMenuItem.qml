// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// An entry of a ThemedMenu: its text on the left, the shortcut of a ShortcutAction on the right.
T.MenuItem {
    id: entry

    // The action removes something.
    property bool destructive: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.control
    verticalPadding: 8
    font.pixelSize: Theme.fontSize.body
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.MenuItem
    Accessible.name: text

    contentItem: ButtonLabel {
        readonly property color normalColor: entry.destructive ? Theme.live : Theme.text

        text: entry.text
        trailingText: KeyNames.of((entry.action as ShortcutAction)?.keys ?? "")
        gap: 32
        font: entry.font
        color: entry.destructive && entry.highlighted ? Theme.onAccent : normalColor
    }

    background: Rectangle {
        radius: Theme.radius.smallControl
        visible: entry.highlighted
        color: entry.destructive ? Theme.live : Theme.cardHover
    }
}
