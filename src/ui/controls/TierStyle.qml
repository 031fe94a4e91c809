// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// Colours and symbol of a tier. Tiers are identified by their tags in clip names.
QtObject {
    required property string tier
    readonly property bool isEpic: tier === "EFSANE"
    readonly property color color: isEpic ? Theme.gold : tier === "ORTA" ? Theme.accent : Theme.violet
    readonly property color foreground: isEpic ? Theme.onGold : Theme.onAccent
    readonly property string symbol: isEpic ? "flame.fill" : tier === "ORTA" ? "bolt.fill" : "star.fill"
}
