// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A badge with a clip's tier and score. Only the best tier glows.
Rectangle {
    id: badge

    required property string tier
    // The tier's name in the current language; shown in upper case.
    required property string label
    // A number; undefined or null for a clip without a score.
    property var score: undefined
    readonly property bool hasScore: score !== undefined && score !== null
    readonly property string text: TextCase.upper(label) + (hasScore ? " " + score : "")

    implicitWidth: content.implicitWidth + 14
    implicitHeight: content.implicitHeight + 2 * Theme.spacing.badge
    radius: Theme.radius.badge
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
        spacing: Theme.spacing.badge

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
            font.pixelSize: Theme.fontSize.note
            font.weight: Font.ExtraBold
            font.letterSpacing: 0.6
            Accessible.ignored: true
        }
    }
}
