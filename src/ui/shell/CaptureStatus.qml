// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// The recorder's state as one word, and its switch.
RowLayout {
    id: status

    readonly property bool isRecording: Recorder.state === CaptureState.Recording
    readonly property bool isFailed: Recorder.state === CaptureState.Error
    // The word shrinks to this size before it is cut.
    readonly property int smallestSize: 9

    spacing: Theme.spacing.row

    LiveDot {
        isLive: status.isRecording
    }

    Text {
        Layout.fillWidth: true
        text: status.isRecording ? L10n.T("KAYITTA")
            : status.isFailed ? L10n.T("HATA")
            : Recorder.state === CaptureState.Starting ? L10n.T("BAŞLATILIYOR") : L10n.T("KAYIT KAPALI")
        color: status.isRecording ? Theme.text : status.isFailed ? Theme.live : Theme.muted
        font.pixelSize: Theme.fontSize.caption
        font.weight: Font.Bold
        font.letterSpacing: 1
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: status.smallestSize
        elide: Text.ElideRight
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    SSToggle {
        // The drawing ends at the edge of the card's content.
        Layout.rightMargin: -drawnInset
        drawnScale: 0.85
        text: L10n.T("Kaydı Başlat / Durdur")
        isOn: Recorder.isActive
        onFlipped: isOn => isOn ? Recorder.start() : Recorder.stop()
    }
}
