// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The background of the window: the palette's gradient from top to bottom, or its plain background colour. A preview of
// another palette sets its own colours.
Rectangle {
    id: backdrop

    property color plainColor: Theme.bg
    property var colors: Theme.gradient
    readonly property int stops: colors.length

    function stopColor(index: int): color {
        return stops === 0 ? plainColor : colors[Math.min(index, stops - 1)];
    }

    color: plainColor
    gradient: stops === 0 ? null : spread

    Gradient {
        id: spread

        GradientStop {
            position: 0
            color: backdrop.stopColor(0)
        }

        GradientStop {
            position: backdrop.stops > 2 ? 0.5 : 1
            color: backdrop.stopColor(1)
        }

        GradientStop {
            position: 1
            color: backdrop.stopColor(backdrop.stops - 1)
        }
    }
}
