// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Controls
import Quelto.Shell
import Quelto.Theme

// The title of a menu in the menu bar.
MenuBarItem {
    id: title

    readonly property real inset: 6
    readonly property bool isOpen: menu !== null && menu.visible

    padding: inset
    leftPadding: inset
    rightPadding: inset
    font.pixelSize: Theme.fontSize.label
    // Qt's menu bar would keep a title highlighted, and open menus under the pointer, after Escape closed its menu.
    hoverEnabled: false
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
        color: title.isOpen || title.activeFocus || pointer.hovered ? Theme.text : Theme.muted
    }
    background: Rectangle {
        radius: Theme.radius.badge
        color: title.isOpen ? Theme.card : "transparent"

        FocusRing {
            gap: 1
            cornerRadius: Theme.radius.badge
            active: title.activeFocus && !title.isOpen
        }
    }

    // The pointer moves from an open menu to another one.
    HoverHandler {
        id: pointer

        onHoveredChanged: {
            if (hovered && !title.isOpen && (title.menuBar as MainMenu).hasOpenMenu()) {
                title.triggered();
            }
        }
    }
}
