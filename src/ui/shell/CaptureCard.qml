// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Shows the recorder's state, switches it, and saves a clip.
Rectangle {
    implicitHeight: lines.implicitHeight + 32
    radius: 10
    color: Theme.panel
    border.width: 1
    border.color: Theme.border

    ColumnLayout {
        id: lines

        anchors.fill: parent
        anchors.margins: 16
        spacing: 12

        CaptureStatus {
            Layout.fillWidth: true
        }

        CaptureDetails {
            Layout.fillWidth: true
            visible: Recorder.state === CaptureState.Recording
        }

        MessageLine {
            Layout.fillWidth: true
            visible: Recorder.state === CaptureState.Error
            symbol: "exclamationmark.circle"
            color: Theme.live
            text: Recorder.errorMessage
        }

        MessageLine {
            Layout.fillWidth: true
            visible: Recorder.isActive && Recorder.micWarning !== ""
            symbol: "exclamationmark.triangle.fill"
            color: Theme.muted
            text: Recorder.micWarning
        }

        AccentButton {
            Layout.fillWidth: true
            symbol: "scissors"
            text: L10n.T("Klip Kaydet")
            trailingText: AppSettings.hotkeyDisplay
            enabled: Recorder.isActive && !Recorder.isSaving
            busy: Recorder.isSaving
            onClicked: Recorder.saveClip()
        }
    }
}
