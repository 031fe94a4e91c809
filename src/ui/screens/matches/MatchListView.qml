// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Matches
import Quelto.Shared

// All matches: the running one, then the recaps of the finished ones, newest first.
FocusScope {
    id: view

    // The match that the user comes from; its row is the current one.
    property string initialMatch: ""

    function askToDelete(matchId: string) {
        internal.pendingMatch = matchId;
        confirmation.open();
    }

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: header.title

    QtObject {
        id: internal

        // The match that the confirmation asks about.
        property string pendingMatch: ""
        // The match that the menu was last opened for.
        property string menuMatch: ""
    }

    MatchList {
        id: matches
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        MatchListHeader {
            id: header

            Layout.fillWidth: true
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            MatchRows {
                anchors.fill: parent
                visible: count > 0
                matches: matches
                initialMatch: view.initialMatch
                matchWithMenu: menu.visible ? internal.menuMatch : ""
                Accessible.name: header.title
                onDeleteRequested: matchId => view.askToDelete(matchId)
                onMenuRequested: (matchId, row, at) => {
                    const place = row.mapToItem(view, at);
                    internal.menuMatch = matchId;
                    menu.popup(view, place.x, place.y);
                }
            }

            EmptyState {
                anchors.centerIn: parent
                visible: matches.isEmpty
                symbol: "flag.checkered"
                title: L10n.T("Henüz maç özeti yok")
                text: L10n.T("Oto klip açıkken bir LoL veya Dota 2 maçı oynayınca burada görünür.")
            }
        }
    }

    ThemedMenu {
        id: menu

        title: L10n.T("Maç Özetleri")

        ThemedMenuItem {
            destructive: true
            text: L10n.T("Özeti Sil")
            onTriggered: view.askToDelete(internal.menuMatch)
        }
    }

    DeleteMatchDialog {
        id: confirmation

        onDeleteRecapRequested: matches.deleteRecap(internal.pendingMatch)
        onDeleteAllRequested: matches.deleteWithClips(internal.pendingMatch)
    }
}
