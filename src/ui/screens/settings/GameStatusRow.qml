// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Theme

// A game of which moments become clips: its switch, and what its watcher reports. Children are shown before the switch.
Rectangle {
    id: row

    required property string name
    required property string symbol
    required property bool isOn
    required property bool isLive
    required property string status
    // What the user can do next; empty if the status says it.
    property string hint: ""
    // The latest moment; empty before the first.
    property string lastMoment: ""
    readonly property Item control: toggle
    default property alias actions: actionRow.data

    signal flipped(bool isOn)

    implicitWidth: parent?.width ?? 0
    implicitHeight: header.height + texts.implicitHeight + 2 * Theme.spacing.card + Theme.spacing.badge
    radius: Theme.radius.card
    color: Theme.bg
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Item {
        id: header

        x: Theme.spacing.card
        y: Theme.spacing.card
        width: row.width - 2 * Theme.spacing.card
        height: Math.max(title.implicitHeight, end.implicitHeight)

        Row {
            id: title

            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacing.row

            Rectangle {
                objectName: "liveDot"
                anchors.verticalCenter: parent.verticalCenter
                width: 7
                height: width
                radius: height / 2
                color: row.isLive ? Theme.good : Theme.dim
            }

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                symbol: row.symbol
                side: 16
                color: Theme.text
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                textFormat: Text.PlainText
                color: Theme.text
                font.pixelSize: Theme.fontSize.body
                font.weight: Font.DemiBold
            }
        }

        Row {
            id: end

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacing.stack

            Row {
                id: actionRow

                anchors.verticalCenter: parent.verticalCenter
            }

            SSToggle {
                id: toggle

                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                isOn: row.isOn
                Accessible.description: texts.text
                onFlipped: isOn => row.flipped(isOn)
            }
        }
    }

    GameStatusTexts {
        id: texts

        x: Theme.spacing.card
        y: header.y + header.height + Theme.spacing.badge
        width: header.width
        isLive: row.isLive
        status: row.status
        hint: row.hint
        lastMoment: row.lastMoment
    }
}
