// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A small label for a clip's tier and score. Only the best tier glows.
Rectangle {
    id: badge

    required property string tier
    // The tier's word for the user; shown in capitals.
    required property string label
    // A number, or nothing where there is none.
    property var score: undefined
    readonly property bool hasScore: score !== undefined && score !== null
    readonly property string text: TextCase.upper(label) + (hasScore ? " " + score : "")

    implicitWidth: content.implicitWidth + 14
    implicitHeight: content.implicitHeight + 8
    radius: 4
    color: style.color
    Accessible.role: Accessible.StaticText
    Accessible.name: hasScore ? label + " " + score : label

    TierStyle {
        id: style

        tier: badge.tier
    }

    Shadow {
        visible: style.isEpic
        radius: 6
        cornerRadius: badge.radius
        color: Qt.alpha(Theme.gold, 0.6)
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 4

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: style.symbol
            side: 11
            color: style.foreground
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: badge.text
            textFormat: Text.PlainText
            color: style.foreground
            font.pixelSize: 10
            font.weight: Font.ExtraBold
            font.letterSpacing: 0.6
            Accessible.ignored: true
        }
    }
}
