// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// A sign, and a sentence that says what does not work in this card.
Item {
    id: warning

    property string text: ""

    implicitHeight: Math.max(sign.height, label.implicitHeight)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
    Accessible.ignored: !visible

    SymbolIcon {
        id: sign

        symbol: "exclamationmark.triangle.fill"
        side: 14
        color: Theme.live
    }

    Text {
        id: label

        x: sign.width + Theme.spacing.row
        width: warning.width - x
        text: warning.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.caption
        Accessible.ignored: true
    }
}
