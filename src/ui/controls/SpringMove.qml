// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// Moves like a damped spring: fast at first, and then slowly to rest without a visible overshoot. The curve differs by
// less than 2 % from that of a spring with a damping ratio between 0.86 and 0.9.
NumberAnimation {
    // The period that the spring would have without damping. Units: milliseconds.
    required property int response

    duration: 1.2 * response
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.24, 0.23, 0.12, 1.14, 1, 1]
}
