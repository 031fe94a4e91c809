// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A choice in the menu of a ThemedDropDown.
T.ItemDelegate {
    id: entry

    required property var modelData
    property bool isSelected: false
    readonly property int markSide: 12

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: Theme.spacing.row
    rightPadding: Theme.spacing.row + markSide + Theme.spacing.row
    verticalPadding: 7
    text: modelData.text
    font.pixelSize: Theme.fontSize.label
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }

    contentItem: Text {
        text: entry.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font: entry.font
    }

    background: Rectangle {
        radius: Theme.radius.smallControl
        color: entry.highlighted ? Theme.cardHover : "transparent"

        SymbolIcon {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing.row
            anchors.verticalCenter: parent.verticalCenter
            visible: entry.isSelected
            symbol: "checkmark"
            side: entry.markSide
            color: Theme.accent
        }
    }

    ThemedToolTip {
        text: (entry.contentItem as Text).truncated ? entry.text : ""
    }
}
