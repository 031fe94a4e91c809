// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// One line of a ThemedMenu: what it does on the left, its key on the right.
T.MenuItem {
    id: entry

    // What it does takes something away.
    property bool destructive: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 8
    font.pixelSize: 13
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.MenuItem
    Accessible.name: text

    contentItem: ButtonLabel {
        readonly property color ground: entry.destructive ? Theme.live : Theme.text

        text: entry.text
        trailingText: KeyNames.of(entry.action?.shortcut ?? "")
        gap: 32
        font: entry.font
        color: entry.destructive && entry.highlighted ? Theme.onAccent : ground
    }

    background: Rectangle {
        radius: 5
        visible: entry.highlighted
        color: entry.destructive ? Theme.live : Theme.cardHover
    }
}
