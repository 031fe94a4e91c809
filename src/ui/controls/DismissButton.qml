// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A small cross that removes the notice beside it.
IconButton {
    symbol: "xmark"
    side: 12
    inset: 3
}
