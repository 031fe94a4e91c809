// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 320
    height: 220
    visible: true
    color: Theme.bg

    ListView {
        anchors.fill: parent
        anchors.margins: 20
        model: 60
        clip: true
        delegate: Text {
            required property int index

            height: 24
            text: "Klip " + index
            color: Theme.text
        }
    }
    ThemedScrollBar { x: 290; y: 20; height: 180; policy: ThemedScrollBar.AlwaysOn; size: 0.2; position: 0.3 }
}
