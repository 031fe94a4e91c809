// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Theme

// An indeterminate progress indicator.
SymbolIcon {
    id: spinner

    symbol: "progress"

    RotationAnimation on rotation {
        running: spinner.visible
        from: 0
        to: 360
        duration: Theme.duration.spinnerTurn
        loops: Animation.Infinite
    }
}
