// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// A game's row in the sidebar.
NavItem {
    id: row

    required property int index
    required property string name
    required property bool isOther
    required count

    width: ListView.view.width
    symbol: "gamecontroller.fill"
    text: name
    active: !Navigation.hasSelected && Navigation.pageKind === Pages.Library && Navigation.hasGame && Navigation.game === name
    onClicked: isOther ? Navigation.showOther() : Navigation.showGame(name)
    onMoved: step => (row.ListView.view as SidebarList).reach(index + step)
    onVisualFocusChanged: if (visualFocus) {
        row.ListView.view.positionViewAtIndex(index, ListView.Contain);
    }
}
