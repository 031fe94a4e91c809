// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Player
import Quelto.Shared
import Quelto.Theme

// The row of controls below the timeline.
RowLayout {
    id: controls

    required property ClipPlayer model
    required property bool isFullScreen
    readonly property bool isMenuOpen: speed.isOpen

    signal fullScreenToggled

    spacing: 4

    IconButton {
        symbol: controls.model.isPlaying ? "pause.fill" : "play.fill"
        side: 20
        inset: 4
        idleColor: Theme.text
        text: controls.model.isPlaying ? L10n.T("Duraklat") : L10n.T("Oynat")
        onClicked: controls.model.toggle()
    }

    IconButton {
        symbol: "gobackward.5"
        text: L10n.T("5 saniye geri")
        onClicked: controls.model.seek(controls.model.time - 5)
    }

    IconButton {
        symbol: "goforward.5"
        text: L10n.T("5 saniye ileri")
        onClicked: controls.model.seek(controls.model.time + 5)
    }

    Text {
        Layout.leftMargin: 4
        text: controls.model.positionText(controls.model.time) + " / " + controls.model.positionText(controls.model.duration)
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontSize.label
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    // The only part of the row that a narrow player leaves out.
    Text {
        Layout.leftMargin: 4
        opacity: truncated ? 0 : 1
        Layout.fillWidth: true
        text: controls.model.markers.length > 0 ? L10n.T("{0} an", [controls.model.markers.length]) : ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.muted
        font.pixelSize: Theme.fontSize.caption
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.ignored: text === ""
    }

    SpeedMenu {
        id: speed

        model: controls.model
    }

    VolumeControl {
        model: controls.model
    }

    IconButton {
        symbol: "arrow.up.left.and.arrow.down.right"
        text: controls.isFullScreen ? L10n.T("Tam ekrandan çık") : L10n.T("Tam ekran")
        onClicked: controls.fullScreenToggled()
    }
}
