// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Controls
import Quelto.Shell
import Quelto.Theme

// The title of one menu in the bar.
MenuBarItem {
    id: title

    leftPadding: 6
    rightPadding: 6
    topPadding: 6
    bottomPadding: 6
    font.pixelSize: 12
    focusPolicy: Qt.TabFocus
    Accessible.name: text
    Keys.onReturnPressed: title.triggered()
    Keys.onEnterPressed: title.triggered()
    Keys.onDownPressed: title.triggered()
    Keys.onEscapePressed: (title.menuBar as MainMenu).leave()
    Keys.onLeftPressed: (title.menuBar as MainMenu).go(title, -1)
    Keys.onRightPressed: (title.menuBar as MainMenu).go(title, 1)
    contentItem: Text {
        text: title.text
        font: title.font
        color: title.highlighted || title.activeFocus ? Theme.text : Theme.muted
    }
    background: Rectangle {
        radius: 4
        color: title.highlighted ? Theme.card : "transparent"

        FocusRing {
            anchors.margins: -1
            radius: 5
            active: title.activeFocus && !title.highlighted
        }
    }
}
