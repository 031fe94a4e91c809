// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// The on-screen notice. Its ground is the same in every palette: it stands above a game, not in our window.
Rectangle {
    id: hud

    required property string title
    required property string subtitle
    required property bool error
    // The tier's tag, or nothing.
    required property string tier
    property bool leaving: false
    readonly property string symbol: error ? "xmark" : tier === "" ? "checkmark" : style.symbol

    opacity: 0
    radius: 10
    color: Theme.hud
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.AlertMessage
    Accessible.name: hud.title + "\n" + hud.subtitle

    TierStyle {
        id: style

        tier: hud.tier
    }

    Row {
        anchors.verticalCenter: parent.verticalCenter
        x: 14
        spacing: 12

        Rectangle {
            width: 36
            height: 36
            radius: 7
            color: hud.error ? Theme.live : hud.tier === "" ? Theme.accent : style.color

            SymbolIcon {
                anchors.centerIn: parent
                symbol: hud.symbol
                side: 20
                color: hud.tier === "" ? Theme.onAccent : style.foreground
            }
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Text {
                width: hud.width - 76
                text: hud.title
                color: Theme.onAccent
                font.pixelSize: 13
                font.weight: Font.Bold
                elide: Text.ElideRight
                textFormat: Text.PlainText
            }

            Text {
                width: hud.width - 76
                text: hud.subtitle
                color: Theme.muted
                font.pixelSize: 11
                elide: Text.ElideRight
                textFormat: Text.PlainText
            }
        }
    }

    onLeavingChanged: {
        entering.stop();
        fadingOut.start();
    }

    NumberAnimation {
        id: entering

        target: hud
        property: "opacity"
        to: 1
        duration: 150
        running: true
    }

    NumberAnimation {
        id: fadingOut

        target: hud
        property: "opacity"
        to: 0
        duration: 300
    }
}
