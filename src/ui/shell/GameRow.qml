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
    property bool isTabStop: false

    // A key asks for the row at that index.
    signal reachRequested(place: int)

    width: ListView.view?.width ?? 0
    focusPolicy: isTabStop ? Qt.TabFocus : Qt.NoFocus
    symbol: "gamecontroller.fill"
    text: name
    // After a change of the language, the clips without a game have the old name until the library has read them again.
    active: !Navigation.hasSelected && Navigation.pageKind === Pages.Library && Navigation.hasGame
            && (Navigation.game === name || Navigation.isOther && isOther)
    onClicked: isOther ? Navigation.showOther() : Navigation.showGame(name)
    onMoved: step => row.reachRequested(index + step)
    Keys.onPressed: event => {
        const ends = {[Qt.Key_Home]: 0, [Qt.Key_End]: row.ListView.view.count - 1};
        event.accepted = event.key in ends;
        if (event.accepted) {
            row.reachRequested(ends[event.key]);
        }
    }
}
