// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Library
import Quelto.Shared

// All clips, or those of one game, by day.
FocusScope {
    id: view

    // Which game is fixed for as long as the view lives.
    property bool hasGame: false
    property string game: ""
    property string pendingPath: ""

    function askToDelete(path: string, title: string) {
        pendingPath = path;
        confirmation.message = title;
        confirmation.open();
    }

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: hasGame ? game : L10n.T("Klipler")
    Keys.onEscapePressed: event => {
        event.accepted = header.searchField.activeFocus;
        if (event.accepted) {
            grid.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    LibraryModel {
        id: clips

        game: view.game
        hasGame: view.hasGame
        width: grid.width
        viewTop: grid.contentY
        viewHeight: grid.height
        cardTextHeight: pattern.implicitHeight
    }

    // Tells how high text is here, for cards that do not exist.
    ClipCardText {
        id: pattern

        visible: false
        title: "A"
        time: "0"
    }

    Shortcut {
        sequences: ["Ctrl+F"]
        enabled: view.visible
        onActivated: {
            header.searchField.forceActiveFocus(Qt.ShortcutFocusReason);
            header.searchField.selectAll();
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        LibraryHeader {
            id: header

            Layout.fillWidth: true
            library: clips
            title: view.Accessible.name
            onSearchDone: grid.forceActiveFocus(Qt.TabFocusReason)
        }

        TierBar {
            Layout.fillWidth: true
            visible: clips.showsTierBar
            library: clips
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            CardGrid {
                id: grid

                anchors.fill: parent
                visible: clips.count > 0
                focus: true
                library: clips
                onDeleteRequested: (path, title) => view.askToDelete(path, title)
            }

            EmptyLibrary {
                anchors.centerIn: parent
                width: Math.min(parent.width - 56, 560)
                visible: clips.isLoaded && clips.count === 0
                isSearch: clips.search !== ""
            }
        }
    }

    ConfirmationDialog {
        id: confirmation

        title: L10n.T("Klip çöp kutusuna taşınsın mı?")
        destructive: true
        confirmText: L10n.T("Çöp Kutusuna Taşı")
        cancelText: L10n.T("Vazgeç")
        onConfirmed: ClipCommands.trash(view.pendingPath)
    }
}
