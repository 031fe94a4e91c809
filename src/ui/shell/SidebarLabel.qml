// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The heading of a section of the sidebar.
Text {
    leftPadding: Theme.spacing.sidebar
    rightPadding: Theme.spacing.sidebar
    bottomPadding: 6
    width: parent.width
    color: Theme.dim
    font.pixelSize: Theme.fontSize.note
    font.weight: Font.Bold
    font.letterSpacing: 1.4
    elide: Text.ElideRight
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
