// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// A game's row in the sidebar. The row that had the focus last, or whose page is open, is the tab stop of the games.
NavItem {
    id: row

    required property int index
    required property string name
    required count

    // A key asks for the row at that index.
    signal reachRequested(place: int)

    width: ListView.view?.width ?? 0
    focusPolicy: index === Math.max(0, ListView.view?.currentIndex ?? 0) ? Qt.TabFocus : Qt.NoFocus
    symbol: "gamecontroller.fill"
    text: name
    active: !Navigation.hasSelected && Navigation.pageKind === Pages.Library && Navigation.hasGame && Navigation.game === name
    onClicked: Navigation.showGame(name)
    onMoved: step => row.reachRequested(index + step)
    onActiveChanged: if (active) {
        ListView.view.currentIndex = index;
    }
    onActiveFocusChanged: if (activeFocus) {
        ListView.view.currentIndex = index;
    }
    Keys.onPressed: event => {
        const ends = {[Qt.Key_Home]: 0, [Qt.Key_End]: row.ListView.view.count - 1};
        event.accepted = event.key in ends;
        if (event.accepted) {
            row.reachRequested(ends[event.key]);
        }
    }
}
