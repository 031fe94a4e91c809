// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Navigation with live counts, and the recorder below it.
Rectangle {
    id: sidebar

    color: Theme.sidebar
    Accessible.role: Accessible.Pane
    Accessible.name: "Quelto"

    // Below the menu bar. In a window that is too low for the sidebar, all of it scrolls.
    Flickable {
        id: view

        readonly property Item focusedItem: Window.activeFocusItem
        readonly property real lastY: Math.max(0, contentHeight - height)

        // Scrolls until the item is visible and clear of the fading edges. An item elsewhere in the window changes nothing.
        function reveal(item: Item) {
            let shown = item;
            let ancestor = item;
            while (ancestor && ancestor !== rows) {
                ancestor = ancestor.parent;
                // The list itself scrolls to its rows.
                shown = ancestor === places ? places : shown;
            }
            if (ancestor) {
                const start = shown.mapToItem(rows, 0, 0).y - upperFade.height;
                const end = start + shown.height + upperFade.height + lowerFade.height;
                contentY = Math.max(0, Math.min(Math.max(Math.min(contentY, start), end - height), lastY));
            }
        }

        anchors.fill: parent
        anchors.topMargin: 40
        contentHeight: rows.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: lastY > 0
        clip: true
        onFocusedItemChanged: reveal(focusedItem)

        ColumnLayout {
            id: rows

            width: view.width
            height: Math.max(view.height, implicitHeight)
            spacing: 0

            Brand {
                Layout.leftMargin: 18
                Layout.rightMargin: 18
                Layout.bottomMargin: 26
            }

            SidebarList {
                id: places

                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.minimumHeight: lowest
                Layout.leftMargin: Theme.spacing.sidebar
                Layout.rightMargin: Theme.spacing.sidebar
            }

            UpdateRow {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing.sidebar
                Layout.rightMargin: Theme.spacing.sidebar
                Layout.topMargin: Theme.spacing.sidebar
                visible: version !== ""
                version: UpdateChecker.version
                onClicked: UpdateChecker.showSheet = true
            }

            CaptureCard {
                Layout.fillWidth: true
                Layout.margins: Theme.spacing.sidebar
            }

            NavItem {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.spacing.sidebar
                Layout.rightMargin: Theme.spacing.sidebar
                Layout.bottomMargin: Theme.spacing.sidebar
                symbol: "gearshape.fill"
                text: L10n.T("Ayarlar")
                active: !Navigation.hasSelected && Navigation.pageKind === Pages.Settings
                onClicked: Navigation.showSettings()
            }
        }
    }

    EdgeFade {
        id: upperFade

        anchors.top: view.top
        distance: view.contentY
    }

    EdgeFade {
        id: lowerFade

        anchors.bottom: view.bottom
        isLower: true
        distance: view.lastY - view.contentY
    }
}
