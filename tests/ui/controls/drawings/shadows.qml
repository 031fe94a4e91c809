// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

Window {
    width: 520
    height: 180
    visible: true
    color: Theme.bg

    Backdrop { anchors.fill: parent }
    Rectangle {
        x: 40
        y: 60
        width: 220
        height: 40
        radius: 20
        color: Theme.card
        border.color: Qt.alpha(Theme.accent, 0.6)

        Shadow { radius: 12; offset: 4; cornerRadius: 20; color: Qt.alpha(Theme.shadow, 0.5) }
    }
    Rectangle {
        x: 310
        y: 56
        width: 48
        height: 48
        radius: 24
        color: Theme.accent

        Shadow { radius: 8; offset: 2; cornerRadius: 24; color: Qt.alpha(Theme.shadow, 0.5) }
        SymbolIcon { anchors.centerIn: parent; side: 22; symbol: "play.fill"; color: Theme.onAccent }
    }
    Rectangle {
        x: 420
        y: 76
        width: 8
        height: 8
        radius: 4
        color: Theme.live

        Shadow { radius: 4; cornerRadius: 4; color: Theme.live }
    }
}
