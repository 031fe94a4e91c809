// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.SettingsPage
import Quelto.Shared

// A change of colours or language builds the page again. This keeps what the user sees where it is, and the focus on the
// control that was used. A page that is opened starts at the top.
Item {
    id: keeper

    required property Flickable view
    required property Item column
    required property SettingsSidebar sidebar
    // The cards by section.
    required property var cards
    required property Item focusedItem
    readonly property bool isRestoring: internal.place !== null
    readonly property string identity: AppSettings.language + "|" + AppSettings.colorTheme

    // Call when the cards have moved.
    function restore() {
        if (internal.place) {
            view.contentY = Math.max(0, Math.min(internal.topOf(internal.place.section) - internal.place.offset, view.contentHeight - view.height));
        }
    }

    onIdentityChanged: {
        if (internal.isComplete) {
            SettingsMemory.place = internal.currentPlace();
        }
    }
    Component.onCompleted: {
        internal.place = SettingsMemory.place;
        SettingsMemory.place = null;
        internal.isComplete = true;
        if (internal.place) {
            focusing.start();
            settling.start();
        }
    }

    QtObject {
        id: internal

        property bool isComplete: false
        property var place: null

        function topOf(section: int): real {
            return keeper.column.y + keeper.cards[section].y;
        }

        function contains(area: Item, item: Item): bool {
            let ancestor = item;
            while (ancestor && ancestor !== area) {
                ancestor = ancestor.parent;
            }
            return ancestor !== null;
        }

        // -1 if the focus is not on a card.
        function focusedSection(): int {
            for (let section = 0; section < keeper.cards.length; ++section) {
                if (contains(keeper.cards[section], keeper.focusedItem)) {
                    return section;
                }
            }
            return -1;
        }

        // The controls of a card that the Tab key reaches, in order.
        function tabStops(section: int): var {
            const stops = [];
            let item = keeper.cards[section].nextItemInFocusChain(true);
            while (contains(keeper.cards[section], item) && item !== stops[0]) {
                stops[stops.length] = item;
                item = item.nextItemInFocusChain(true);
            }
            return stops;
        }

        // -1 if the list does not have it.
        function placeIn(items: var, item: Item): int {
            for (let i = 0; i < items.length; ++i) {
                if (items[i] === item) {
                    return i;
                }
            }
            return -1;
        }

        function currentPlace(): var {
            const focused = focusedSection();
            const section = focused < 0 ? keeper.sidebar.active : focused;
            return {
                section: section,
                offset: topOf(section) - keeper.view.contentY,
                isInSidebar: contains(keeper.sidebar, keeper.focusedItem),
                tabStop: focused < 0 ? -1 : placeIn(tabStops(section), keeper.focusedItem),
                reason: keeper.focusedItem?.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason
            };
        }

        function restoreFocus() {
            const control = tabStops(place.section)[place.tabStop];
            if (place.isInSidebar) {
                keeper.sidebar.takeFocus();
            } else if (control) {
                control.forceActiveFocus(place.reason);
            }
        }
    }

    Timer {
        id: focusing

        interval: 0
        onTriggered: {
            keeper.restore();
            internal.restoreFocus();
        }
    }

    // Until then the cards may still change their heights.
    Timer {
        id: settling

        interval: 100
        onTriggered: {
            keeper.restore();
            internal.place = null;
        }
    }
}
