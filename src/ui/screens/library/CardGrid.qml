// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// Cards of clips, below the titles of their days if the model has any. Only visible cards exist. It is one tab stop; the
// arrow keys move the current card. In a selectable grid, Space and a click select a clip or take it back.
T.Control {
    id: grid

    required property CardGridModel model
    property bool isSelectable: false
    // Whether any clip is selected. Delete is then about the selection.
    property bool hasSelection: false
    // Room for items of the page that scroll with the cards, above them.
    property real headHeight: 0
    readonly property alias headArea: head
    // Of the cards: negative while the head is in view.
    readonly property real viewTop: flick.contentY - headHeight
    readonly property bool showsCurrent: activeFocus && (internal.isByKeyboard || visualFocus)
    readonly property alias contentY: flick.contentY
    readonly property alias contentHeight: flick.contentHeight

    signal openRequested(string path)
    signal deleteRequested(string path, string title)
    signal toggleRequested(string path)
    signal selectAllRequested
    signal selectionDeleteRequested

    // The menu bar's "copy" calls this on the item that has the focus.
    function copy() {
        if (grid.model.currentPath !== "") {
            ClipCommands.copy(grid.model.currentPath);
        }
    }

    // The same for "select all".
    function selectAll() {
        grid.selectAllRequested();
    }

    function currentCard(): ClipCard {
        for (let i = 0; i < cards.count; ++i) {
            const card = cards.itemAt(i) as ClipCard;
            if (card && card.path !== "" && card.path === grid.model.currentPath) {
                return card;
            }
        }
        return null;
    }

    function openCurrentMenu() {
        const card = currentCard();
        card?.openMenu(Qt.point(card.width / 2, card.height / 2));
    }

    function announceCurrent() {
        if (showsCurrent) {
            ScreenReader.announceFocus(currentCard());
        }
    }

    // A key that is held moves on, but does nothing else again.
    function actOn(key: int, isHeld: bool): bool {
        const path = grid.model.currentPath;
        if (grid.model.moveCurrent(key)) {
            return true;
        }
        if (isHeld) {
            return false;
        }
        if (key === Qt.Key_Delete && grid.hasSelection) {
            grid.selectionDeleteRequested();
            return true;
        }
        if (path === "") {
            return false;
        }
        switch (key) {
        case Qt.Key_Space:
            if (grid.isSelectable) {
                grid.toggleRequested(path);
            } else {
                grid.openRequested(path);
            }
            return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            grid.openRequested(path);
            return true;
        case Qt.Key_Delete:
            grid.deleteRequested(path, grid.model.currentTitle());
            return true;
        case Qt.Key_Menu:
            grid.openCurrentMenu();
            return true;
        }
        return false;
    }

    QtObject {
        id: internal

        // The last input came from the keyboard, so the current card is marked.
        property bool isByKeyboard: false
    }

    focusPolicy: Qt.TabFocus
    Accessible.name: L10n.T("Klipler")
    onShowsCurrentChanged: telling.restart()
    onVisualFocusChanged: {
        if (visualFocus && model.currentPosition < 0) {
            model.selectFirstInView();
        }
    }
    Keys.onPressed: event => {
        if (!grid.activeFocus) {
            // From a control of the head.
            event.accepted = false;
            return;
        }
        const isMenuKey = event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        const isPlain = event.modifiers === Qt.NoModifier || event.modifiers === Qt.KeypadModifier;
        internal.isByKeyboard = true;
        event.accepted = (isMenuKey || isPlain) && grid.actOn(isMenuKey ? Qt.Key_Menu : event.key, event.isAutoRepeat);
    }

    // Runs after the view has scrolled and the card exists.
    Timer {
        id: telling

        interval: 0
        onTriggered: grid.announceCurrent()
    }

    Connections {
        target: grid.model

        function onScrollRequested(viewTop: real) {
            wheel.stop();
            flick.cancelFlick();
            flick.contentY = Math.max(0, viewTop + grid.headHeight);
        }

        function onCurrentChanged() {
            telling.restart();
        }
    }

    Flickable {
        id: flick

        objectName: "cards"

        readonly property Item focusedItem: Window.activeFocusItem

        // Scrolls until the item is visible, if it is in the head and the user has moved the focus there. The focus that
        // a page sets when it opens must not scroll: the head may have no layout yet.
        function reveal(item: Item) {
            let ancestor = (item as T.Control)?.visualFocus ? item : null;
            while (ancestor && ancestor !== head) {
                ancestor = ancestor.parent;
            }
            if (ancestor) {
                const start = Math.max(0, item.mapToItem(head, 0, 0).y - Theme.spacing.row);
                const end = start + item.height + 2 * Theme.spacing.row;
                contentY = Math.min(Math.max(contentY, end - height), start);
            }
        }

        anchors.fill: parent
        contentWidth: width
        contentHeight: grid.headHeight + grid.model.contentHeight
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        maximumFlickVelocity: 6000
        // A mouse drags cards out of the window, so it must not flick the view.
        interactive: !mouse.active
        clip: true
        // In Qt 6.4 a Control always has the role of its template, so the role is set here.
        Accessible.role: Accessible.List
        Accessible.name: L10n.T("Klipler")
        onMovementStarted: wheel.stop()
        onFocusedItemChanged: reveal(focusedItem)

        T.ScrollBar.vertical: ThemedScrollBar {}

        SmoothWheelHandler {
            id: wheel

            view: flick
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

        Item {
            id: head

            width: flick.width
            height: grid.headHeight
        }

        Repeater {
            model: grid.model.days
            delegate: DayHeading {
                required property string title
                required property rect area

                x: area.x
                y: grid.headHeight + area.y
                width: area.width
                height: area.height
                text: title
                visible: text !== ""
            }
        }

        Repeater {
            id: cards

            model: grid.model.cards
            // Recycled: shows different clips in different places while the view scrolls.
            delegate: ClipCard {
                required property int position
                required property rect area
                required path
                required version
                required title
                required game
                required time
                required size
                required tier
                required score
                required label
                required ratio
                required isSelected

                visible: position >= 0
                x: area.x
                y: grid.headHeight + area.y
                width: area.width
                height: area.height
                isCacheOnly: grid.model.isScrollingFast
                isSelectable: grid.isSelectable
                isCurrent: grid.showsCurrent && position >= 0 && position === grid.model.currentPosition
                onOpenRequested: {
                    grid.model.select(position);
                    grid.forceActiveFocus(Qt.MouseFocusReason);
                    grid.openRequested(path);
                }
                onToggleRequested: {
                    grid.model.select(position);
                    grid.forceActiveFocus(Qt.MouseFocusReason);
                    grid.toggleRequested(path);
                }
                onDeleteRequested: grid.deleteRequested(path, title)
                onMenuOpened: {
                    grid.model.select(position);
                    grid.forceActiveFocus(internal.isByKeyboard ? Qt.OtherFocusReason : Qt.MouseFocusReason);
                }
            }
        }
    }
}
