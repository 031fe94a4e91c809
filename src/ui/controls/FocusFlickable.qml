// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A page that scrolls vertically if it is too high, and scrolls to the control that gets the keyboard focus.
Flickable {
    id: page

    // Only controls inside this item are scrolled to.
    required property Item scope
    property bool hasScrollBar: true
    readonly property Item focusedItem: Window.activeFocusItem
    readonly property real lastY: Math.max(0, contentHeight - height)

    function reveal(item: Item) {
        let ancestor = item;
        while (ancestor && ancestor !== scope) {
            ancestor = ancestor.parent;
        }
        if (ancestor) {
            const start = item.mapToItem(contentItem, 0, 0).y - Theme.spacing.row;
            const end = start + item.height + 2 * Theme.spacing.row;
            contentY = Math.max(0, Math.min(Math.min(Math.max(contentY, end - height), start), lastY));
        }
    }

    boundsBehavior: Flickable.StopAtBounds
    interactive: lastY > 0
    clip: interactive
    onFocusedItemChanged: reveal(focusedItem)

    T.ScrollBar.vertical: ThemedScrollBar {
        policy: page.hasScrollBar ? T.ScrollBar.AsNeeded : T.ScrollBar.AlwaysOff
    }
}
