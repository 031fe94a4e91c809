// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// One line of a match's row, with a tool tip if it is cut. The row names it for screen readers.
Text {
    id: line

    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: 1
    color: Theme.text
    font.pixelSize: Theme.fontSize.body
    Accessible.ignored: true

    ThemedToolTip {
        text: line.truncated ? line.text : ""
    }
}
