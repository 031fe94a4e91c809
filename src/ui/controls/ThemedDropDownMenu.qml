// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// The menu of a ThemedDropDown. It opens upward where there is no room below, and scrolls if the window is too low.
T.Popup {
    id: menu

    required property string title
    // The entries with their delegates.
    required property var entries
    required property int highlightedIndex

    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 5
    margins: 8
    // Screen readers see the item that draws the popup, not the popup.
    onAboutToShow: contentItem.parent.Accessible.name = title

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.entries
        currentIndex: menu.highlightedIndex
        highlightMoveDuration: 0
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true
        Accessible.role: Accessible.List
        Accessible.name: menu.title

        T.ScrollBar.vertical: ThemedScrollBar {}
    }

    background: Rectangle {
        radius: Theme.radius.card
        color: Theme.panel
        border.width: 1
        border.color: Theme.border

        Shadow {
            radius: 16
            offset: 6
            cornerRadius: Theme.radius.card
            color: Qt.alpha(Theme.shadow, 0.5)
        }
    }
}
