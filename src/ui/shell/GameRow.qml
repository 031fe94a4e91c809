// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The sidebar's row of one game.
NavItem {
    id: row

    required property int index
    required property string name
    required count

    width: ListView.view.width
    symbol: "gamecontroller.fill"
    text: name
    active: !Navigation.hasSelected && Navigation.pageKind === Pages.Library && Navigation.hasGame && Navigation.game === name
    onClicked: Navigation.showGame(name)
    onMoved: step => (row.ListView.view as SidebarPlaces).reach(index + step)
    onVisualFocusChanged: if (visualFocus) {
        row.ListView.view.positionViewAtIndex(index, ListView.Contain);
    }
}
