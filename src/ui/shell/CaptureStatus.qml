// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// The recorder's state in a word, and its switch.
RowLayout {
    id: status

    readonly property bool isRecording: Recorder.state === CaptureState.Recording
    readonly property bool isFailed: Recorder.state === CaptureState.Error

    spacing: 8

    Rectangle {
        implicitWidth: 8
        implicitHeight: 8
        radius: 4
        color: status.isRecording ? Theme.live : Theme.dim

        Shadow {
            visible: status.isRecording
            radius: 4
            color: Theme.live
            cornerRadius: 4
        }
    }

    Text {
        Layout.fillWidth: true
        text: status.isRecording ? L10n.T("KAYITTA")
            : status.isFailed ? L10n.T("HATA")
            : Recorder.state === CaptureState.Starting ? L10n.T("BAŞLATILIYOR") : L10n.T("KAYIT KAPALI")
        color: status.isRecording ? Theme.text : status.isFailed ? Theme.live : Theme.muted
        font.pixelSize: 11
        font.weight: Font.Bold
        font.letterSpacing: 1
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        elide: Text.ElideRight
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    SSToggle {
        drawnScale: 0.85
        text: L10n.T("Kaydı Başlat / Durdur")
        isOn: Recorder.isActive
        onFlipped: isOn => isOn ? Recorder.start() : Recorder.stop()
    }
}
