// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Player
import Quelto.Shared

// The volume: a speaker that mutes, and a slider.
Row {
    id: control

    required property ClipPlayer model

    spacing: 2

    IconButton {
        anchors.verticalCenter: parent.verticalCenter
        symbol: control.model.volume === 0 ? "speaker.slash.fill" : "speaker.wave.2.fill"
        text: control.model.volume === 0 ? L10n.T("Sesi aç") : L10n.T("Sesi kapat")
        onClicked: control.model.toggleMuted()
    }

    ValueSlider {
        anchors.verticalCenter: parent.verticalCenter
        width: 80
        name: L10n.T("Ses düzeyi")
        value: control.model.volume
        stepSize: 0.05
        onMoved: control.model.volume = value
    }
}
