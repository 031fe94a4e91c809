// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// What is new, how to install it, and the user's answers.
Column {
    id: content

    required property real highest
    required property bool isOpen
    readonly property real iconSide: 48
    readonly property real roomForNotes: highest - header.height - hint.height - buttons.height - 3 * spacing

    signal laterRequested

    spacing: 16
    Accessible.role: Accessible.Dialog
    Accessible.name: headline.text
    Accessible.description: present.text + " " + hint.text
    onIsOpenChanged: {
        if (isOpen) {
            download.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    RowLayout {
        id: header

        width: parent.width
        spacing: Theme.spacing.paragraph

        Image {
            source: "qrc:/app.quelto.Quelto.svg"
            sourceSize.width: content.iconSide
            sourceSize.height: content.iconSide
            Accessible.ignored: true
        }

        Column {
            Layout.fillWidth: true
            spacing: 2

            UpdateText {
                id: headline

                width: parent.width
                text: L10n.T("Quelto {0} çıktı", [UpdateChecker.version])
                color: Theme.text
                font.pixelSize: Theme.fontSize.heading
                font.weight: Font.ExtraBold
            }

            UpdateText {
                id: present

                width: parent.width
                text: L10n.T("Sende {0} var.", [UpdateChecker.currentVersion])
                color: Theme.muted
                font.pixelSize: Theme.fontSize.label
            }
        }
    }

    UpdateNotes {
        width: parent.width
        height: Math.min(implicitHeight, content.roomForNotes)
        visible: notes.length > 0
        notes: UpdateChecker.notes
    }

    Text {
        id: hint

        width: parent.width
        text: L10n.TOnDesktop("İndirdikten sonra yeni Quelto'yi Uygulamalar klasörüne sürükleyip eskisinin üzerine yaz. Kliplerin ve ayarların korunur.")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.dim
        font.pixelSize: Theme.fontSize.caption
    }

    RowLayout {
        id: buttons

        width: parent.width
        spacing: Theme.spacing.stack

        TextButton {
            Layout.maximumWidth: implicitWidth
            Layout.fillWidth: true
            text: L10n.T("Bu sürümü atla")
            onClicked: UpdateChecker.skip()
        }

        Item {
            Layout.fillWidth: true
        }

        AccentButton {
            compact: true
            filled: false
            text: L10n.T("Sonra")
            onClicked: content.laterRequested()
        }

        AccentButton {
            id: download

            compact: true
            text: L10n.T("İndir")
            onClicked: UpdateChecker.download()
        }
    }
}
