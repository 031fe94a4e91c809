// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Theme

// A slider for a gain, with its percentage. It shows the gain that it is bound to and emits changed() for the owner to
// change it.
Row {
    id: control

    // The accessible name.
    required property string name
    // 0 is silent, 1 leaves the volume as it is, 2 doubles it. The slider shows a value outside 0 to 2 at its end.
    required property real gain
    readonly property real clampedGain: Math.max(slider.from, Math.min(gain, slider.to))

    signal changed(real gain)

    spacing: Theme.spacing.row

    ValueSlider {
        id: slider

        anchors.verticalCenter: parent.verticalCenter
        width: 190
        name: control.name
        to: 2
        stepSize: 0.05
        value: control.clampedGain
        Accessible.description: percentage.text
        // Screen readers set the value without moved().
        onValueChanged: {
            if (value !== control.clampedGain) {
                control.changed(value);
            }
        }
    }

    Text {
        id: percentage

        anchors.verticalCenter: parent.verticalCenter
        width: 44
        horizontalAlignment: Text.AlignRight
        text: Math.round(100 * control.gain) + "%"
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font.pixelSize: Theme.fontSize.label
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
