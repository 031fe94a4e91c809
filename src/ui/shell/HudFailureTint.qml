// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The red left side of the HUD of a failure. The accent of some palettes is so close to red that the tile alone does not
// tell a failed save from a good one.
Item {
    id: tint

    // Of the HUD's corners.
    required property real radius
    readonly property real stripeWidth: 4

    Rectangle {
        anchors.fill: parent
        radius: tint.radius
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Qt.alpha(Theme.live, 0.3)
            }
            GradientStop {
                position: 0.6
                color: Qt.alpha(Theme.live, 0)
            }
        }
    }

    Item {
        width: tint.stripeWidth
        height: tint.height
        clip: true

        Rectangle {
            width: tint.width
            height: tint.height
            radius: tint.radius
            color: Theme.live
        }
    }
}
