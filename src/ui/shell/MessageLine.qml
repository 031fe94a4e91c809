// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Quelto.Theme

// A sentence that something is wrong, with a sign before it. It wraps; nothing of it is cut off.
RowLayout {
    id: line

    required property string symbol
    required property string text
    required property color color

    spacing: 8

    SymbolIcon {
        Layout.alignment: Qt.AlignTop
        symbol: line.symbol
        color: line.color
        side: 16
    }

    Text {
        Layout.fillWidth: true
        text: line.text
        color: line.color
        font.pixelSize: 12
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
