// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The HUD. It appears above a game, so its background is the same in all palettes.
Rectangle {
    id: hud

    required property string title
    required property string subtitle
    required property bool error
    // The tier's tag; empty for none.
    required property string tier
    // Does not fade in.
    property bool still: false
    property bool leaving: false
    readonly property real tileSide: 36
    readonly property real inset: 14
    readonly property real gap: 12
    readonly property real textWidth: width - inset - tileSide - gap - inset
    readonly property string symbol: error ? "xmark" : tier === "" ? "checkmark" : style.symbol

    opacity: still ? 1 : 0
    radius: Theme.radius.panel
    color: Theme.hud
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.AlertMessage
    Accessible.name: hud.title + "\n" + hud.subtitle

    TierStyle {
        id: style

        tier: hud.tier
    }

    HudFailureTint {
        anchors.fill: parent
        visible: hud.error
        radius: hud.radius
    }

    Row {
        anchors.verticalCenter: parent.verticalCenter
        x: hud.inset
        spacing: hud.gap

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: hud.tileSide
            height: hud.tileSide
            radius: Theme.radius.tile
            color: hud.error ? Theme.live : hud.tier === "" ? Theme.accent : style.color

            SymbolIcon {
                anchors.centerIn: parent
                symbol: hud.symbol
                side: 20
                weight: Font.Black
                color: hud.tier === "" ? Theme.onAccent : style.foreground
            }
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Text {
                width: hud.textWidth
                text: L10n.isolated(hud.title)
                color: Theme.onAccent
                font.pixelSize: Theme.fontSize.body
                font.weight: Font.Bold
                elide: Text.ElideRight
                textFormat: Text.PlainText
            }

            Text {
                width: hud.textWidth
                text: L10n.isolated(hud.subtitle)
                color: Theme.muted
                font.pixelSize: Theme.fontSize.caption
                wrapMode: Text.Wrap
                maximumLineCount: 2
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
        duration: Theme.duration.hudEnter
        running: !hud.still
    }

    NumberAnimation {
        id: fadingOut

        target: hud
        property: "opacity"
        to: 0
        duration: Theme.duration.hudLeave
    }
}
