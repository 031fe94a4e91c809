// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// A tier of which moments become clips: its switch, its badge, and what belongs to it.
Item {
    id: row

    required property bool isOn
    required property string tier
    required property string label
    required property string text

    signal flipped(bool isOn)

    implicitWidth: parent?.width ?? 0
    implicitHeight: Math.max(toggle.implicitHeight, badge.implicitHeight, words.implicitHeight)

    SSToggle {
        id: toggle

        anchors.verticalCenter: parent.verticalCenter
        text: row.label
        isOn: row.isOn
        Accessible.description: row.text
        onFlipped: isOn => row.flipped(isOn)
    }

    Item {
        id: column

        x: toggle.width + Theme.spacing.card
        width: 96
        height: parent.height

        TierBadge {
            id: badge

            anchors.verticalCenter: parent.verticalCenter
            tier: row.tier
            label: row.label
        }
    }

    CardParagraph {
        id: words

        x: column.x + column.width + Theme.spacing.card
        anchors.verticalCenter: parent.verticalCenter
        width: row.width - x
        text: row.text
        Accessible.ignored: true
    }
}
