// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The content of the window: the sidebar, the page beside it, and the menu bar over the empty strip at the top.
FocusScope {
    id: root

    readonly property real sidebarWidth: 240
    // The titles have a padding of 6, so their text lines up with the brand below.
    readonly property real menuInset: 12
    readonly property Item focusedItem: Window.activeFocusItem

    focus: true
    onFocusedItemChanged: {
        if (pages.activeFocus) {
            menu.target = focusedItem;
        }
    }

    Backdrop {
        anchors.fill: parent
    }

    FocusScope {
        id: pages

        anchors.fill: parent
        focus: true

        RowLayout {
            anchors.fill: parent
            spacing: 0

            Sidebar {
                Layout.preferredWidth: root.sidebarWidth
                Layout.fillHeight: true
            }

            Rectangle {
                Layout.preferredWidth: 1
                Layout.fillHeight: true
                color: Theme.border
            }

            ContentArea {
                Layout.fillWidth: true
                Layout.fillHeight: true
                focus: true
            }
        }
    }

    // In line with the brand below it.
    MainMenu {
        id: menu

        x: root.menuInset
        y: 4
        width: root.sidebarWidth - root.menuInset
        onAboutRequested: about.open()
    }

    MessageDialog {
        id: about

        title: "Quelto " + WindowCommands.version
        text: L10n.T("Linux için anlık tekrar kaydedici. GNU GPL 3 veya sonraki sürümüyle özgür yazılımdır.")
    }

    UpdateSheet {}

    QuitDialogs {}
}
