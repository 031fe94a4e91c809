// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Theme

// The title of one menu in the bar.
MenuBarItem {
    id: title

    horizontalPadding: 12
    verticalPadding: 8
    font.pixelSize: 13
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: text
    contentItem: Text {
        text: title.text
        font: title.font
        color: title.highlighted ? Theme.text : Theme.muted
    }
    background: Rectangle {
        color: title.highlighted ? Theme.card : "transparent"
    }
}
