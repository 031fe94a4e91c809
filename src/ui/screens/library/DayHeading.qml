// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The heading of a day.
Text {
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    color: Theme.muted
    font.pixelSize: Theme.fontSize.caption
    font.weight: Font.Bold
    font.letterSpacing: 1.3
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
