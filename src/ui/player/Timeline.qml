// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Player
import Quelto.Shared
import Quelto.Theme

// The time of the clip from left to right: the position, the moments, and while trimming the range to keep. A drag below the
// moments moves the position.
Item {
    id: timeline

    required property ClipPlayer model
    readonly property bool scrubbing: pointer.isScrubbing
    // The height at the top that belongs to the moments.
    readonly property real markersHeight: 16
    readonly property real trackHeight: 6
    readonly property real trackCenter: 23
    // A clip of unknown length must not divide by zero.
    readonly property real length: Math.max(model.duration, 0.001)

    // For screen readers.
    property real value: model.time
    property real minimumValue: 0
    property real maximumValue: model.duration
    property real stepSize: 5

    function xOf(seconds: real): real {
        return seconds / length * width;
    }

    function secondsAt(x: real): real {
        return model.duration * Math.max(0, Math.min(x, width)) / Math.max(width, 1);
    }

    implicitHeight: 34
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: L10n.T("Konum")
    Accessible.description: model.positionText(model.time)
    Accessible.focusable: true
    Accessible.onIncreaseAction: model.seek(model.time + stepSize)
    Accessible.onDecreaseAction: model.seek(model.time - stepSize)
    Keys.onPressed: event => {
        const targets = {[Qt.Key_Home]: 0, [Qt.Key_End]: model.duration};
        event.accepted = event.key in targets;
        if (event.accepted) {
            model.seek(targets[event.key]);
        }
    }

    Rectangle {
        id: track

        y: timeline.trackCenter - height / 2
        width: timeline.width
        height: timeline.trackHeight
        radius: height / 2
        color: Theme.bg

        FocusRing {
            active: timeline.activeFocus
            cornerRadius: track.radius
        }
    }

    Rectangle {
        visible: timeline.model.trimming
        x: timeline.xOf(timeline.model.trimIn)
        y: track.y
        width: timeline.xOf(timeline.model.trimOut) - x
        height: timeline.trackHeight
        color: Qt.alpha(Theme.accent, 0.25)
    }

    Rectangle {
        y: track.y
        width: Math.min(timeline.xOf(timeline.model.time), timeline.width)
        height: timeline.trackHeight
        radius: track.radius
        color: Theme.accent
    }

    // Below the moments and handles, which take what lies over them.
    MouseArea {
        id: pointer

        property bool isScrubbing: false

        function scrub(x: real) {
            timeline.model.seek(timeline.secondsAt(x));
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => {
            isScrubbing = mouse.y >= timeline.markersHeight;
            if (isScrubbing) {
                scrub(mouse.x);
            }
        }
        onPositionChanged: mouse => {
            if (isScrubbing) {
                scrub(mouse.x);
            }
        }
        onReleased: isScrubbing = false
        onCanceled: isScrubbing = false
    }

    Repeater {
        model: timeline.model.markers

        EventMarker {
            id: marker

            required property var modelData

            x: timeline.xOf(modelData.time) - width / 2
            symbol: modelData.icon
            color: modelData.color
            title: modelData.title
            time: timeline.model.positionText(modelData.time)
            onClicked: timeline.model.playEvent(modelData.time)
        }
    }

    Rectangle {
        x: Math.min(timeline.xOf(timeline.model.time), timeline.width) - width / 2
        y: timeline.trackCenter - height / 2
        width: 13
        height: width
        radius: width / 2
        color: Theme.onAccent

        Shadow {
            radius: 5
            offset: 1
            cornerRadius: parent.radius
            color: Qt.alpha(Theme.shadow, 0.5)
        }
    }

    TrimHandle {
        visible: timeline.model.trimming
        x: timeline.xOf(value) - width / 2
        y: timeline.trackCenter - height / 2
        name: L10n.T("Kırpma başlangıcı")
        value: timeline.model.trimIn
        duration: timeline.model.duration
        onDragged: x => timeline.model.dragTrimIn(timeline.secondsAt(x))
        onStepped: value => timeline.model.dragTrimIn(value)
    }

    TrimHandle {
        visible: timeline.model.trimming
        x: timeline.xOf(value) - width / 2
        y: timeline.trackCenter - height / 2
        name: L10n.T("Kırpma sonu")
        value: timeline.model.trimOut
        duration: timeline.model.duration
        onDragged: x => timeline.model.dragTrimOut(timeline.secondsAt(x))
        onStepped: value => timeline.model.dragTrimOut(value)
    }

    Rectangle {
        readonly property real labelMargin: 16

        visible: pointer.containsMouse && !pointer.isScrubbing && timeline.model.duration > 0
        x: Math.max(labelMargin, Math.min(pointer.mouseX, timeline.width - labelMargin)) - width / 2
        y: timeline.trackCenter - timeline.trackHeight - height
        width: label.implicitWidth + 8
        height: label.implicitHeight + 4
        radius: 3
        color: Qt.alpha(Theme.shadow, 0.8)

        Text {
            id: label

            anchors.centerIn: parent
            text: timeline.model.positionText(timeline.secondsAt(pointer.mouseX))
            textFormat: Text.PlainText
            color: Theme.onAccent
            font.pixelSize: 9
            font.weight: Font.Bold
            Accessible.ignored: true
        }
    }
}
