// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The part of the sidebar above the games.
Column {
    id: top

    readonly property bool isPage: !Navigation.hasSelected
    readonly property string gamesTitle: gamesLabel.text

    // An arrow key asks to move `step` rows from row `from`. Rows here count backwards from the first game: -1, -2.
    signal moved(from: int, step: int)
    // A row received the keyboard focus.
    signal rowFocused(row: Item)

    function reach(place: int) {
        (place === -1 ? matches : clips).forceActiveFocus(Qt.TabFocusReason);
    }

    width: parent ? parent.width : 0

    SidebarLabel {
        text: L10n.T("KÜTÜPHANE")
    }

    NavItem {
        id: clips

        width: top.width
        symbol: "square.grid.2x2.fill"
        text: L10n.T("Tüm Klipler")
        count: LibraryOverview.clipCount
        active: top.isPage && Navigation.pageKind === Pages.Library && !Navigation.hasGame
        onClicked: Navigation.showLibrary()
        onMoved: step => top.moved(-2, Math.max(0, step))
        onVisualFocusChanged: if (visualFocus) {
            top.rowFocused(clips);
        }
    }

    NavItem {
        id: matches

        width: top.width
        symbol: "flag.checkered"
        text: L10n.T("Maç Özetleri")
        count: LibraryOverview.matchCount
        active: top.isPage && (Navigation.pageKind === Pages.Matches || Navigation.pageKind === Pages.Match)
        onClicked: Navigation.showMatches()
        onMoved: step => top.moved(-1, step)
        onVisualFocusChanged: if (visualFocus) {
            top.rowFocused(matches);
        }
    }

    SidebarLabel {
        id: gamesLabel

        visible: LibraryOverview.clipCount > 0
        topPadding: 16
        text: L10n.T("OYUNLAR / UYGULAMALAR")
    }
}
