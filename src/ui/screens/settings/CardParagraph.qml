// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Theme

// Explains something in a card.
Text {
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: Theme.muted
    font.pixelSize: Theme.fontSize.caption
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
