// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Theme

// The day above its cards.
Text {
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    color: Theme.muted
    font.pixelSize: 11
    font.weight: Font.Bold
    font.letterSpacing: 1.3
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
