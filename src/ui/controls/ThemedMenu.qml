// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A menu. It is as wide as the widest of its ThemedMenuItems.
T.Menu {
    id: menu

    implicitWidth: internal.entryWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 5
    margins: 8
    delegate: ThemedMenuItem {}
    onAboutToShow: {
        internal.measureEntries();
        // Screen readers see the item that draws the popup, not the popup.
        contentItem.parent.Accessible.name = title;
    }

    QtObject {
        id: internal

        readonly property real minimumEntryWidth: 150
        property real entryWidth: minimumEntryWidth

        function measureEntries() {
            let widest = minimumEntryWidth;
            for (let i = 0; i < menu.count; ++i) {
                widest = Math.max(widest, menu.itemAt(i).implicitWidth);
            }
            entryWidth = widest;
        }
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        clip: true
        currentIndex: menu.currentIndex
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
