// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Theme

// One line of a menu: what it does on the left, its key on the right.
MenuItem {
    id: entry

    horizontalPadding: 12
    verticalPadding: 8
    font.pixelSize: 13
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    contentItem: ButtonLabel {
        text: entry.text
        trailingText: entry.action ? entry.action.shortcut ?? "" : ""
        font: entry.font
        color: Theme.text
    }
    background: Rectangle {
        radius: 5
        color: entry.highlighted ? Theme.cardHover : "transparent"
    }
}
