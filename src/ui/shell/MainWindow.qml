// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

Window {
    id: window

    // A change of language or colours rebuilds all that stands in the window.
    readonly property string identity: AppSettings.language + "|" + AppSettings.colorTheme

    width: 1240
    height: 780
    minimumWidth: 1020
    minimumHeight: 640
    title: "Quelto"
    color: Theme.bg
    onIdentityChanged: {
        root.active = false;
        root.active = true;
    }

    Loader {
        id: root

        anchors.fill: parent
        focus: true
        source: "ContentView.qml"
    }
}
