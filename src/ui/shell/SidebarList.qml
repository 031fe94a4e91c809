// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Shell

// The library's pages, and below them a row for each game. Rows are created only while they are visible.
// Not `ComponentBehavior: Bound`: with it, Qt 6.4 reports header and delegate as "Component is not ready".
ListView {
    id: places

    // Moves the focus to the row of a game, or to a row of the header if the place is negative.
    function reach(place: int) {
        if (place >= 0 && place < count) {
            positionViewAtIndex(place, ListView.Contain);
            itemAtIndex(place).forceActiveFocus(Qt.TabFocusReason);
        } else if (place < 0) {
            positionViewAtBeginning();
            (headerItem as SidebarHeader).reach(place);
        }
    }

    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: true
    model: LibraryOverview.games
    header: SidebarHeader {}
    delegate: GameRow {}

    Connections {
        target: places.headerItem as SidebarHeader

        function onMoved(from: int, step: int) {
            places.reach(from + step);
        }
    }
}
