// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Library
import Quelto.Shared

// The library: all clips or those of one game, grouped by day.
FocusScope {
    id: view

    // The game does not change during the life of the view.
    property bool hasGame: false
    property string game: ""
    // Shows the clips whose names hold no game; `game` is then the word for "Other".
    property bool isOther: false

    // Moves the focus from the search field to the cards. Without cards it stays in the field.
    function leaveSearch(reason: int): bool {
        if (grid.visible) {
            grid.forceActiveFocus(reason);
        }
        return grid.visible;
    }

    focus: true
    Component.onCompleted: internal.isComplete = true
    Accessible.role: Accessible.Pane
    Accessible.name: hasGame ? game : L10n.T("Klipler")
    Keys.onEscapePressed: event => event.accepted = header.searchField.activeFocus && leaveSearch(Qt.OtherFocusReason)

    QtObject {
        id: internal

        // All sizes are final.
        property bool isComplete: false
    }

    LibraryModel {
        id: clips

        game: view.game
        isOther: view.isOther
        hasGame: view.hasGame
        width: grid.width
        viewTop: grid.viewTop
        // Intermediate sizes would create more cards than fit the view, and read their thumbnails.
        viewHeight: internal.isComplete ? grid.height : 0
        cardTextHeight: pattern.implicitHeight
    }

    // Measures the text height of a card, which the layout needs before cards exist.
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
            onSearchDone: view.leaveSearch(Qt.TabFocusReason)
        }

        TierFilterBar {
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
                model: clips
                onOpenRequested: path => Navigation.openClip(path)
                onDeleteRequested: (path, title) => deletion.ask(path, title)
            }

            EmptyLibrary {
                anchors.centerIn: parent
                visible: clips.isLoaded && clips.count === 0
                isSearch: clips.showsSearch
            }
        }
    }

    DeleteClipDialog {
        id: deletion

        onDeleteRequested: path => ClipCommands.trash(path)
    }
}
