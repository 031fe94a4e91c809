// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// Scrolls a view by wheel or touch pad. Wheel notches are animated; touch pad movement is applied directly.
WheelHandler {
    id: wheel

    required property Flickable view
    // Units: logical pixels per notch.
    property real notch: 110
    // The range of contentY.
    readonly property real nearest: view.originY - view.topMargin
    readonly property real furthest: Math.max(nearest, view.originY + view.contentHeight + view.bottomMargin - view.height)

    function stop() {
        glide.stop();
    }

    target: null
    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: event => {
        view.cancelFlick();
        const distance = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 120 * notch;
        const start = glide.running ? glide.to : view.contentY;
        const goal = Math.max(nearest, Math.min(start - distance, furthest));
        glide.stop();
        if (event.pixelDelta.y !== 0) {
            view.contentY = goal;
        } else {
            glide.to = goal;
            glide.start();
        }
    }

    property NumberAnimation glide: NumberAnimation {
        id: glide

        target: wheel.view
        property: "contentY"
        duration: Theme.duration.scroll
        easing.type: Easing.OutCubic
    }
}
