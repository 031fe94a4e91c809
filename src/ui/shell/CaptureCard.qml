// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The recorder's state, its switch, and the button that saves a clip.
Rectangle {
    implicitHeight: lines.implicitHeight + 2 * Theme.spacing.card
    radius: Theme.radius.panel
    color: Theme.panel
    border.width: 1
    border.color: Theme.border

    ColumnLayout {
        id: lines

        anchors.fill: parent
        anchors.margins: Theme.spacing.card
        spacing: Theme.spacing.stack

        CaptureStatus {
            Layout.fillWidth: true
        }

        CaptureDetails {
            Layout.fillWidth: true
            visible: Recorder.state === CaptureState.Recording
        }

        WarningText {
            Layout.fillWidth: true
            visible: Recorder.state === CaptureState.Error
            color: Theme.live
            text: Recorder.errorMessage
        }

        // The cause of an error is fixed outside of Quelto; this button retries.
        AccentButton {
            visible: Recorder.state === CaptureState.Error
            compact: true
            filled: false
            text: L10n.T("Tekrar Dene")
            onClicked: Recorder.start()
        }

        WarningText {
            Layout.fillWidth: true
            visible: Recorder.isActive && Recorder.micWarning !== ""
            color: Theme.muted
            text: Recorder.micWarning
        }

        SaveFailureNotice {
            Layout.fillWidth: true
        }

        SaveButton {
            Layout.fillWidth: true
        }
    }
}
