// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// The background of the window: the palette's gradient from top to bottom, or its plain background colour.
Rectangle {
    id: backdrop

    readonly property int stops: Theme.gradient.length

    function stopColor(index: int): color {
        return stops === 0 ? Theme.bg : Theme.gradient[Math.min(index, stops - 1)];
    }

    color: Theme.bg
    gradient: stops === 0 ? null : colors

    Gradient {
        id: colors

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
