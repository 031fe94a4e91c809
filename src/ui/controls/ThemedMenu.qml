// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A menu over the window. Its entries are ThemedMenuItems; it is as wide as the widest of them.
T.Menu {
    id: menu

    property real entryWidth: 150

    function widestEntry(): real {
        let widest = 0
        for (let i = 0; i < count; ++i) {
            widest = Math.max(widest, itemAt(i).implicitWidth)
        }
        return widest
    }

    implicitWidth: entryWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 5
    margins: 8
    delegate: ThemedMenuItem {}
    onAboutToShow: {
        entryWidth = Math.max(150, widestEntry())
        // What draws a popup is what screen readers see of it.
        contentItem.parent.Accessible.name = title
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        clip: true
        currentIndex: menu.currentIndex
    }

    background: Rectangle {
        radius: 8
        color: Theme.panel
        border.width: 1
        border.color: Theme.border

        Shadow {
            radius: 16
            offset: 6
            cornerRadius: 8
            color: Qt.alpha(Theme.shadow, 0.5)
        }
    }
}
