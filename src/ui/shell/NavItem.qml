// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Shell
import Quelto.Theme

// A row of the sidebar that opens a page. It shows the number of items there and whether the page is open.
T.AbstractButton {
    id: row

    required property string symbol
    // Negative for no count.
    property int count: -1
    property bool active: false

    // An arrow key asks for the next row (1) or the previous row (-1).
    signal moved(step: int)

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.sidebar
    verticalPadding: 8
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: count < 0 ? text : text + ", " + count
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Accessible.selectable: true
    Accessible.selected: active
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    Keys.onUpPressed: row.moved(-1)
    Keys.onDownPressed: row.moved(1)

    contentItem: NavItemLabel {
        isMarked: row.active || row.hovered
        symbol: row.symbol
        text: row.text
        count: row.count
        active: row.active
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: row.active ? Theme.card : row.hovered ? Qt.alpha(Theme.card, 0.6) : "transparent"

        Rectangle {
            visible: row.active
            anchors.verticalCenter: parent.verticalCenter
            width: 3
            height: 18
            radius: 2
            color: Theme.accent
        }

        // Inside the row, because the list would clip it.
        FocusRing {
            active: row.visualFocus
            gap: 0
        }
    }

    ThemedToolTip {
        text: (row.contentItem as NavItemLabel).isTruncated ? row.text : ""
    }
}
