// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// A line between groups of entries in a ThemedMenu.
T.MenuSeparator {
    implicitWidth: 100
    implicitHeight: 9
    verticalPadding: 4
    horizontalPadding: 4
    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.border
    }
}
