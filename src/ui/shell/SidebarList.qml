// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The part of the sidebar that scrolls: the library's pages, and below them a row for each game. Rows are created only
// while they are visible. The games are one tab stop: the row that had the focus last, or whose page was opened. The arrow
// keys, Home and End move between them.
Item {
    id: places

    // Has room for the library's pages.
    readonly property real lowest: 110
    // The range of contentY.
    readonly property real firstY: games.originY - games.topMargin
    readonly property real lastY: Math.max(firstY, games.originY + games.contentHeight - games.height)

    // Moves the focus to the row of a game, or to a row of the header if the place is negative.
    function reach(place: int) {
        if (place < 0) {
            pages.reach(place);
        } else if (place < games.count) {
            games.positionViewAtIndex(place, ListView.Contain);
            games.itemAtIndex(place).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    // The list keeps its current row, also out of view, so that the Tab key can reach it.
    function setTabStop(place: int) {
        const y = games.contentY;
        games.currentIndex = place;
        // The list has scrolled to that row.
        games.contentY = y;
    }

    // Scrolls until the row is visible and clear of the fading edges.
    function reveal(row: Item) {
        const start = games.contentItem.mapFromItem(row, 0, 0).y - upperFade.height;
        const end = start + row.height + upperFade.height + lowerFade.height;
        const wanted = Math.max(Math.min(games.contentY, start), end - games.height);
        games.contentY = Math.max(firstY, Math.min(wanted, lastY));
    }

    clip: true

    // Not the header of the list, which would be a part of the list of games for screen readers. Declared before the
    // list for the order of tab stops, and above it for the pointer.
    SidebarHeader {
        id: pages

        y: places.firstY - games.contentY
        z: 1
        onHeightChanged: games.contentY = places.firstY
        onMoved: (from, step) => places.reach(from + step)
        onRowFocused: row => places.reveal(row)
    }

    ListView {
        id: games

        anchors.fill: parent
        topMargin: pages.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: places.lastY > places.firstY
        // With a current row, the list would start there, below the header.
        currentIndex: -1
        model: LibraryOverview.games
        Accessible.ignored: count === 0
        Accessible.role: Accessible.List
        Accessible.name: pages.gamesTitle

        delegate: GameRow {
            id: row

            isTabStop: index === Math.max(0, games.currentIndex)
            onReachRequested: place => places.reach(place)
            onActiveChanged: if (active) {
                places.setTabStop(index);
            }
            onActiveFocusChanged: if (activeFocus) {
                places.setTabStop(index);
                games.positionViewAtIndex(index, ListView.Contain);
                places.reveal(row);
            }
        }
    }

    EdgeFade {
        id: upperFade

        anchors.top: parent.top
        distance: games.contentY - places.firstY
    }

    EdgeFade {
        id: lowerFade

        anchors.bottom: parent.bottom
        isLower: true
        distance: places.lastY - games.contentY
    }
}
