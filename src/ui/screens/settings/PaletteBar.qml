// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick

// A bar in the picture of a palette.
Rectangle {
    height: 14
    radius: 3
}
