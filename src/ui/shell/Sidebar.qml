// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The way to every page, with live counts, and the recorder below.
Rectangle {
    id: sidebar

    // The version that waits to be installed; empty for none.
    property string availableUpdate: ""

    readonly property bool isPage: !Navigation.hasSelected
    readonly property bool isLibrary: isPage && Navigation.pageKind === Pages.Library

    signal updateRequested

    color: Theme.sidebar
    Accessible.role: Accessible.Pane
    Accessible.name: "Quelto"

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Brand {
            Layout.topMargin: 40
            Layout.leftMargin: 18
            Layout.rightMargin: 18
            Layout.bottomMargin: 26
        }

        Flickable {
            id: places

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentHeight: rows.height
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height
            clip: true

            // Keeps the row that the keyboard reached in sight.
            function show(row: Item) {
                const top = row.mapToItem(rows, 0, 0).y;
                // With a little room for the ring around it.
                contentY = Math.max(Math.min(contentY, Math.max(0, top - 4)), Math.min(contentHeight, top + row.height + 4) - height);
            }

            Column {
                id: rows

                x: 10
                width: places.width - 20

                SidebarLabel {
                    text: L10n.T("KÜTÜPHANE")
                }

                NavItem {
                    width: rows.width
                    symbol: "square.grid.2x2.fill"
                    text: L10n.T("Tüm Klipler")
                    count: LibraryOverview.clipCount
                    active: sidebar.isLibrary && !Navigation.hasGame
                    onClicked: Navigation.showLibrary()
                    onReached: item => places.show(item)
                }

                NavItem {
                    width: rows.width
                    symbol: "flag.checkered"
                    text: L10n.T("Maç Özetleri")
                    count: LibraryOverview.matchCount
                    active: sidebar.isPage && (Navigation.pageKind === Pages.Matches || Navigation.pageKind === Pages.Match)
                    onClicked: Navigation.showMatches()
                    onReached: item => places.show(item)
                }

                SidebarLabel {
                    visible: games.count > 0
                    topPadding: 16
                    text: L10n.T("OYUNLAR / UYGULAMALAR")
                }

                Repeater {
                    id: games

                    model: LibraryOverview.games
                    delegate: NavItem {
                        required property string name
                        required count

                        width: rows.width
                        symbol: "gamecontroller.fill"
                        text: name
                        active: sidebar.isLibrary && Navigation.hasGame && Navigation.game === name
                        onClicked: Navigation.showGame(name)
                        onReached: item => places.show(item)
                    }
                }
            }
        }

        UpdateRow {
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.topMargin: 10
            visible: version !== ""
            version: sidebar.availableUpdate
            onClicked: sidebar.updateRequested()
        }

        CaptureCard {
            Layout.fillWidth: true
            Layout.margins: 10
        }

        NavItem {
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.bottomMargin: 10
            symbol: "gearshape.fill"
            text: L10n.T("Ayarlar")
            active: sidebar.isPage && Navigation.pageKind === Pages.Settings
            onClicked: Navigation.showSettings()
        }
    }
}
