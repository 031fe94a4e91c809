// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// Shows the global shortcut: the keys that save a clip, else those that the user prefers. A click waits for a new one.
T.AbstractButton {
    id: button

    // Screen readers read it after the shortcut; may be empty.
    property string explanation: ""
    readonly property bool recording: recorder.recording
    readonly property real minimumWidth: 150
    // A desktop may describe its shortcut in a sentence.
    readonly property real maximumWidth: 260

    implicitWidth: Math.min(maximumWidth, Math.max(minimumWidth, implicitContentWidth + leftPadding + rightPadding))
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.paragraph
    verticalPadding: 9
    font.pixelSize: 14
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: recording ? L10n.T("Tuş kombinasyonuna basın…") : HotKeyManager.text || HotKeyManager.preferredText
    Accessible.name: L10n.T("Klip kaydet kısayolu")
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Accessible.description: explanation === "" ? text : text + "\n" + explanation
    Keys.forwardTo: [actionKeys]
    onClicked: recording ? recorder.stop() : recorder.start()

    HotkeyRecorder {
        id: recorder

        button: button
    }

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        font: button.font
        // A preference that has no effect is dimmed.
        color: button.recording ? Theme.accent : HotKeyManager.text === "" ? Theme.muted : Theme.text
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: !button.recording && (button.down || button.hovered) ? Theme.cardHover : Theme.bg
        border.width: 2
        border.color: button.recording ? Theme.accent : Theme.border

        FocusRing {
            active: button.visualFocus
        }
    }
}
