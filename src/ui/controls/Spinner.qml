// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Icons

// Turns while work goes on whose end is not known.
SymbolIcon {
    id: spinner

    symbol: "progress"

    RotationAnimation on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
