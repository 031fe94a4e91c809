// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Shell
import Quelto.Theme

// One menu: titles on the left, their keys on the right.
Menu {
    id: menu

    implicitWidth: 290
    padding: 5
    background: Rectangle {
        radius: 8
        color: Theme.panel
        border.width: 1
        border.color: Theme.border
    }
    delegate: MainMenuEntry {}
}
