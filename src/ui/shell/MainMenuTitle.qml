// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Theme

// The title of one menu in the bar.
MenuBarItem {
    id: title

    leftPadding: 6
    rightPadding: 6
    topPadding: 6
    bottomPadding: 6
    font.pixelSize: 12
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: text
    contentItem: Text {
        text: title.text
        font: title.font
        color: title.highlighted ? Theme.text : Theme.muted
    }
    background: Rectangle {
        radius: 4
        color: title.highlighted ? Theme.card : "transparent"
    }
}
