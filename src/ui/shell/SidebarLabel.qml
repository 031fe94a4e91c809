// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Theme

// Names a section of the sidebar.
Text {
    leftPadding: 10
    rightPadding: 10
    bottomPadding: 6
    width: parent.width
    color: Theme.dim
    font.pixelSize: 10
    font.weight: Font.Bold
    font.letterSpacing: 1.4
    elide: Text.ElideRight
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
