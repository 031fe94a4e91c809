// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Shell
import Quelto.Theme

// A row of the sidebar: where it leads, how much is there, and whether the window shows it now.
T.AbstractButton {
    id: row

    required property string symbol
    // Negative for no count.
    property int count: -1
    property bool active: false

    // The keyboard came to this row.
    signal reached(item: Item)

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
    Keys.onUpPressed: row.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onDownPressed: row.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    onVisualFocusChanged: if (visualFocus) {
        reached(row);
    }

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

        FocusRing {
            anchors.margins: -1
            active: row.visualFocus
            radius: 7
        }
    }
}
