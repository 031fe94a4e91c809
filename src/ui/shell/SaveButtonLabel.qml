// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// The content of the save button: its text, and the keys of the shortcut beside it. Keys that do not fit beside the text
// are below it. Without a shortcut there is only the text.
Item {
    id: label

    required property string symbol
    required property string text
    required property bool busy
    required property font font
    required property color color
    readonly property bool hasShortcut: HotKeyManager.keys.length > 0
    readonly property real gap: hasShortcut ? Theme.spacing.row : 0
    // Of the text at its full size.
    readonly property real naturalWidth: words.symbolWidth + metrics.advanceWidth
    readonly property bool isInLine: naturalWidth + gap + caps.implicitWidth <= width
    // A shortcut of many keys with long names is written in a text instead.
    readonly property bool hasRoomForCaps: caps.implicitWidth <= width
    readonly property Item shortcut: hasRoomForCaps ? caps : line

    implicitWidth: naturalWidth + gap + caps.implicitWidth
    implicitHeight: !hasShortcut ? words.implicitHeight
                  : isInLine ? Math.max(words.implicitHeight, caps.implicitHeight)
                  : words.implicitHeight + gap + shortcut.implicitHeight

    TextMetrics {
        id: metrics

        font: label.font
        text: label.text
    }

    ButtonLabel {
        id: words

        y: label.isInLine ? (label.height - height) / 2 : 0
        width: label.isInLine ? label.naturalWidth : label.width
        height: implicitHeight
        symbol: label.symbol
        text: label.text
        busy: label.busy
        canShrink: true
        font: label.font
        color: label.color
    }

    KeyCaps {
        id: caps

        x: label.isInLine ? label.width - width : Math.min(words.symbolWidth, label.width - width)
        y: label.isInLine ? (label.height - height) / 2 : label.height - height
        visible: label.hasShortcut && label.hasRoomForCaps
        opacity: 0.85
        keys: HotKeyManager.keys
        textColor: label.color
        capColor: Qt.alpha(Theme.shadow, 0.2)
        edgeColor: "transparent"
        depth: 0
        // The button says it.
        Accessible.ignored: true
    }

    Text {
        id: line

        y: label.height - height
        width: label.width
        visible: !label.hasRoomForCaps
        opacity: caps.opacity
        // It may break after each plus sign.
        text: HotKeyManager.text.replace(/\+/g, "+\u200B")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: label.color
        font.pixelSize: Theme.fontSize.caption
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
