// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Shell

// The library's pages, and below them one row for each game. There may be thousands; only those in sight are made.
ListView {
    id: places

    // Moves the keyboard to a game's row, or to one of those above, which have the places before 0.
    function reach(place: int) {
        if (place >= 0 && place < count) {
            positionViewAtIndex(place, ListView.Contain);
            itemAtIndex(place).forceActiveFocus(Qt.TabFocusReason);
        } else if (place < 0) {
            positionViewAtBeginning();
            (headerItem as SidebarTop).reach(place);
        }
    }

    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: true
    model: LibraryOverview.games
    header: SidebarTop {}
    delegate: GameRow {}

    Connections {
        target: places.headerItem as SidebarTop

        function onMoved(from: int, step: int) {
            places.reach(from + step);
        }
    }
}
