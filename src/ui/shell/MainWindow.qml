// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The main window. An ApplicationWindow restores the focus when a menu or a dialog closes.
T.ApplicationWindow {
    id: window

    // A change of language or palette rebuilds the content of the window.
    readonly property string identity: AppSettings.language + "|" + AppSettings.colorTheme

    width: 1240
    height: 780
    minimumWidth: 1020
    minimumHeight: 640
    title: "Quelto"
    color: Theme.bg
    onIdentityChanged: {
        if (root.item) {
            rebuild.restart();
        }
    }

    // Not at once, because the change may come from the content itself.
    Timer {
        id: rebuild

        interval: 0
        onTriggered: {
            const old = root.item;
            root.active = false;
            // Both contents at once would need twice the memory, and malloc keeps what it once got from the system.
            ImmediateDeletion.of(old);
            root.active = true;
        }
    }

    Loader {
        id: root

        anchors.fill: parent
        focus: true
        source: "ContentView.qml"
    }
}
