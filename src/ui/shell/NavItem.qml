// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Shell
import Quelto.Theme

// A row of the sidebar: where it leads, how much is there, and whether the window shows it now.
T.AbstractButton {
    id: row

    required property string symbol
    // Negative for no count.
    property int count: -1
    property bool active: false

    // The keyboard wants to go one row on, or back.
    signal moved(step: int)

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 8
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: count < 0 ? text : text + ", " + count
    Accessible.selectable: true
    Accessible.selected: active
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    Keys.onUpPressed: row.moved(-1)
    Keys.onDownPressed: row.moved(1)

    contentItem: NavItemLabel {
        symbol: row.symbol
        text: row.text
        count: row.count
        active: row.active
    }

    background: Rectangle {
        radius: 6
        color: row.active ? Theme.card : "transparent"

        Rectangle {
            visible: row.active
            anchors.verticalCenter: parent.verticalCenter
            width: 3
            height: 18
            radius: 2
            color: Theme.accent
        }

        // Inside, as the list's edge would cut it.
        FocusRing {
            anchors.margins: 0
            active: row.visualFocus
            radius: 6
        }
    }
}
