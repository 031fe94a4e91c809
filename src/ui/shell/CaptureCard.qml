// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Shows the recorder's state, switches it, and saves a clip.
Rectangle {
    implicitHeight: lines.implicitHeight + 24
    radius: 10
    color: Theme.panel
    border.width: 1
    border.color: Theme.border

    ColumnLayout {
        id: lines

        anchors.fill: parent
        anchors.margins: 12
        spacing: 10

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
            color: Theme.live
            text: Recorder.errorMessage
        }

        // What stands in the way is mended elsewhere; here it is tried again.
        AccentButton {
            visible: Recorder.state === CaptureState.Error
            compact: true
            filled: false
            text: L10n.T("Tekrar Dene")
            onClicked: Recorder.start()
        }

        MessageLine {
            Layout.fillWidth: true
            visible: Recorder.isActive && Recorder.micWarning !== ""
            color: Theme.muted
            text: Recorder.micWarning
        }

        MessageLine {
            Layout.fillWidth: true
            visible: WindowCommands.lastFailure !== ""
            color: Theme.live
            text: WindowCommands.lastFailure
        }

        SaveButton {
            Layout.fillWidth: true
        }
    }
}
