// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// A window of this kind gives the focus back to where it was when a menu or a question closes.
T.ApplicationWindow {
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
