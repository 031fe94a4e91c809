// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The current page, or the open clip in its place. The page keeps its state while a clip is open.
FocusScope {
    id: area

    readonly property var pageFiles: ({
            [Pages.Library]: "qrc:/Quelto/Library/LibraryView.qml",
            [Pages.Match]: "qrc:/Quelto/MatchPage/MatchSummaryView.qml",
            [Pages.Review]: "qrc:/Quelto/Review/ReviewView.qml",
            [Pages.Settings]: "qrc:/Quelto/SettingsPage/SettingsView.qml",
            [Pages.Matches]: "qrc:/Quelto/Matches/MatchListView.qml"
        })

    // The match that the page is about; empty for other pages.
    property string shownMatch: ""

    // Creates a new page. A change from one game to another is a new page too.
    function renew() {
        const match = {
            matchId: Navigation.matchId
        };
        const states = {
            [Pages.Library]: {
                hasGame: Navigation.hasGame,
                game: Navigation.game,
                isOther: Navigation.isOther
            },
            [Pages.Match]: match,
            [Pages.Review]: match,
            [Pages.Matches]: {
                initialMatch: shownMatch
            }
        };
        shownMatch = Navigation.matchId;
        page.setSource("");
        page.setSource(pageFiles[Navigation.pageKind], states[Navigation.pageKind] ?? {});
        // The sidebar keeps the keyboard for its own pages only. These are opened elsewhere, also by notifications.
        if (shownMatch !== "") {
            area.focus = true;
        }
    }

    // Creates a new page for the open clip.
    function renewClip() {
        clip.setSource("");
        if (Navigation.hasSelected) {
            clip.setSource("qrc:/Quelto/ClipPage/ClipDetailView.qml", {
                path: Navigation.selectedPath
            });
            area.focus = true;
        }
        (Navigation.hasSelected ? clip : page).focus = true;
    }

    Component.onCompleted: {
        renew();
        renewClip();
    }
    Keys.onEscapePressed: event => {
        if (event.isAutoRepeat) {
            return;
        }
        if (Navigation.hasSelected) {
            Navigation.closeClip();
        } else if (Navigation.pageKind !== Pages.Library) {
            Navigation.showLibrary();
        } else {
            event.accepted = false;
        }
    }

    Connections {
        target: Navigation

        function onPageChanged() {
            area.renew();
        }

        function onSelectedChanged() {
            area.renewClip();
        }
    }

    Loader {
        id: page

        anchors.fill: parent
        visible: !Navigation.hasSelected
    }

    Loader {
        id: clip

        anchors.fill: parent
    }

    Toast {}
}
