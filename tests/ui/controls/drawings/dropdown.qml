// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    readonly property var screens: [
        {text: "Ana ekran", value: 0},
        {text: "DELL U2720Q", value: 1},
        {text: "Yeti Stereo Microphone Analog Stereo", value: 2}
    ]

    width: 520
    height: 260
    visible: true
    color: Theme.bg

    Rectangle {
        anchors.fill: parent
        color: Theme.panel

        ThemedDropDown { x: 24; y: 24; width: 220; objectName: "focus"; choices: screens; selection: 1 }
        ThemedDropDown { x: 24; y: 80; width: 180; choices: screens; selection: 2 }
        ThemedDropDown { x: 24; y: 136; width: 180; choices: screens; selection: 3 }
        ThemedDropDown { x: 24; y: 192; width: 180; choices: screens; selection: 0; enabled: false }
        ThemedDropDown {
            x: 270
            y: 24
            width: 220
            choices: screens
            selection: 0
            Component.onCompleted: popup.open()
        }
    }
}
