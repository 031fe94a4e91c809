// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The page, or the clip that is open in its place; the page is kept as it is meanwhile.
FocusScope {
    id: area

    readonly property var pageFiles: ({
            [Pages.Library]: "qrc:/Quelto/Library/LibraryView.qml",
            [Pages.Match]: "MatchesPage.qml",
            [Pages.Review]: "ReviewPage.qml",
            [Pages.Settings]: "SettingsPage.qml",
            [Pages.Matches]: "MatchesPage.qml"
        })

    // Each change of page makes a fresh one, also from one game to another.
    function renew() {
        const state = Navigation.pageKind === Pages.Library ? {
            hasGame: Navigation.hasGame,
            game: Navigation.game
        } : {};
        page.setSource("");
        page.setSource(pageFiles[Navigation.pageKind], state);
    }

    // Another clip makes a fresh page too.
    function renewClip() {
        clip.setSource("");
        if (Navigation.hasSelected) {
            clip.setSource("ClipPage.qml");
        }
        (Navigation.hasSelected ? clip : page).focus = true;
    }

    Component.onCompleted: {
        renew();
        renewClip();
    }
    Keys.onEscapePressed: event => {
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
