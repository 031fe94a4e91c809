// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// Fades out an edge of a list in the sidebar, which shows that the list continues there.
Rectangle {
    id: fade

    // How far the list can scroll on past this edge.
    required property real distance
    property bool isLower: false

    width: parent?.width ?? 0
    height: 28
    opacity: Math.max(0, Math.min(distance / height, 1))
    visible: opacity > 0
    gradient: Gradient {
        GradientStop {
            position: fade.isLower ? 0 : 1
            color: Qt.alpha(Theme.sidebar, 0)
        }

        GradientStop {
            position: fade.isLower ? 1 : 0
            color: Theme.sidebar
        }
    }
}
