// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A bar in a capsule that is as long as the level. Screen readers get its name only: the level changes too often.
Rectangle {
    id: meter

    required property string name
    // 0 to 1.
    required property real level
    readonly property real shownLevel: Math.max(0, Math.min(level, 1))

    implicitWidth: 240
    implicitHeight: 12
    radius: height / 2
    color: Theme.bg
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.Indicator
    Accessible.name: name

    // Clips the bar at the level. The bar itself has the shape of the capsule, because items are clipped to rectangles
    // only, and its gradient ends at the level.
    Item {
        objectName: "bar"
        width: meter.width * meter.shownLevel
        height: meter.height
        clip: true

        Rectangle {
            width: meter.width
            height: meter.height
            radius: meter.radius
            border.width: 1
            border.color: Theme.border

            gradient: Gradient {
                orientation: Gradient.Horizontal

                GradientStop {
                    position: 0
                    color: Theme.good
                }

                GradientStop {
                    position: meter.shownLevel / 2
                    color: Theme.accent
                }

                GradientStop {
                    position: meter.shownLevel
                    color: Theme.live
                }
            }
        }
    }
}
