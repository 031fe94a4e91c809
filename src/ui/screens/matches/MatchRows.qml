// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Library
import Quelto.Matches
import Quelto.Shared
import Quelto.Theme

// The rows of the matches. Only visible rows exist. The list is one tab stop, the row that had the focus last; the arrow
// keys, Home, End, Page Up and Page Down move between rows.
ListView {
    id: list

    required property MatchList matches
    // Its row is the current one at the start.
    required property string initialMatch
    // The match whose menu is open.
    property string matchWithMenu: ""
    // Between a row and the edge of the list: has room for the focus ring.
    readonly property real inset: 6

    signal deleteRequested(string matchId)
    signal menuRequested(string matchId, Item row, point at)

    // Moves the focus to the nearest existing row.
    function reach(place: int) {
        const row = Math.max(0, Math.min(place, count - 1));
        wheel.stop();
        cancelFlick();
        positionViewAtIndex(row, ListView.Contain);
        itemAtIndex(row)?.forceActiveFocus(Qt.TabFocusReason);
    }

    // Scrolls until the row and its focus ring are visible.
    function reveal(row: Item) {
        const lowest = row.y - inset;
        // The list has no height before it is laid out.
        const highest = Math.min(row.y + row.height + inset - height, lowest);
        contentY = Math.max(highest, Math.min(contentY, lowest));
    }

    // The first arrow key only shows which row has the focus.
    function move(key: int): bool {
        const row = currentItem as MatchRow;
        const isFocusHidden = row && row.activeFocus && !row.showsFocus;
        const rowHeight = (currentItem?.height ?? height) + spacing;
        const page = Math.max(1, Math.floor(height / rowHeight) - 1);
        const steps = {
            [Qt.Key_Up]: -1,
            [Qt.Key_Down]: 1,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -count,
            [Qt.Key_End]: count
        };
        if (key in steps) {
            reach(isFocusHidden && Math.abs(steps[key]) < count ? currentIndex : currentIndex + steps[key]);
        }
        return key in steps;
    }

    // Acts on the row that is marked. A key that is held does nothing again.
    function actOn(key: int, isHeld: bool): bool {
        const row = currentItem as MatchRow;
        if (isHeld || !row || row.isLive || !row.showsFocus) {
            return false;
        }
        switch (key) {
        case Qt.Key_Delete:
            list.deleteRequested(row.matchId);
            return true;
        case Qt.Key_Menu:
            list.menuRequested(row.matchId, row, Qt.point(row.width / 2, row.height / 2));
            return true;
        }
        return false;
    }

    model: matches
    focus: true
    clip: true
    // It is positioned by reveal.
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    spacing: Theme.spacing.row
    topMargin: inset
    bottomMargin: Theme.spacing.page
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 0
    Component.onCompleted: currentIndex = Math.max(0, matches.rowOf(initialMatch))
    // The final height is not known before.
    onHeightChanged: {
        if (!internal.isUsed && currentIndex > 0) {
            positionViewAtIndex(currentIndex, ListView.Center);
        }
    }
    // As in the library, a mouse scrolls by its wheel.
    interactive: !mouse.active
    Accessible.role: Accessible.List
    onMovementStarted: {
        internal.isUsed = true;
        wheel.stop();
    }
    Keys.onPressed: event => {
        const isMenuKey = event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        const isPlain = event.modifiers === Qt.NoModifier || event.modifiers === Qt.KeypadModifier;
        const key = isMenuKey ? Qt.Key_Menu : event.key;
        event.accepted = (isMenuKey || isPlain) && (list.move(key) || list.actOn(key, event.isAutoRepeat));
        internal.isByKeyboard = true;
        internal.isUsed = true;
    }

    QtObject {
        id: internal

        // The last input came from the keyboard, so the row with the focus is marked.
        property bool isByKeyboard: false
        // The user has moved the view, or the focus in it.
        property bool isUsed: false
        // The view was at the top before rows were added.
        property bool wasAtTop: false
    }

    // The view keeps its first row when rows are added above it, but a new match must not be out of view at the top.
    Connections {
        target: list.matches

        function onRowsAboutToBeInserted() {
            internal.wasAtTop = list.contentY <= wheel.nearest + 1;
        }

        function onChanged() {
            if (internal.wasAtTop) {
                internal.wasAtTop = false;
                list.forceLayout();
                list.contentY = wheel.nearest;
            }
        }
    }

    T.ScrollBar.vertical: ThemedScrollBar {}

    SmoothWheelHandler {
        id: wheel

        view: list
        onWheel: internal.isUsed = true
    }

    PointHandler {
        id: mouse

        acceptedDevices: PointerDevice.Mouse
        acceptedButtons: Qt.AllButtons
        onActiveChanged: {
            if (active) {
                internal.isByKeyboard = false;
            }
        }
    }

    delegate: MatchRow {
        id: row

        x: Theme.spacing.page
        width: list.width - 2 * Theme.spacing.page
        isTabStop: ListView.isCurrentItem || activeFocus
        showsFocus: activeFocus && (internal.isByKeyboard || visualFocus)
        hasMenu: matchId !== "" && list.matchWithMenu === matchId
        onActiveFocusChanged: {
            if (activeFocus) {
                list.currentIndex = index;
                list.reveal(row);
            }
        }
        onOpenRequested: Navigation.showMatch(matchId)
        onDeleteRequested: list.deleteRequested(matchId)
        onMenuRequested: at => list.menuRequested(matchId, row, at)
    }
}
