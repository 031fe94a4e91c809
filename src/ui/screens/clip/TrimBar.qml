// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Says how to choose the range to keep, and saves it. A narrow page shows the buttons below the text.
GridLayout {
    id: bar

    signal cancelled
    signal saved

    readonly property bool isNarrow: width < hint.implicitWidth + buttons.implicitWidth + columnSpacing

    columns: isNarrow ? 1 : 2
    columnSpacing: Theme.spacing.paragraph
    rowSpacing: Theme.spacing.stack

    Text {
        id: hint

        Layout.fillWidth: true
        text: L10n.T("Sarı tutamakları sürükleyerek başlangıcı ve bitişi seç")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: Theme.fontSize.label
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Row {
        id: buttons

        Layout.alignment: Qt.AlignRight
        spacing: Theme.spacing.stack

        AccentButton {
            filled: false
            compact: true
            text: L10n.T("Vazgeç")
            onClicked: bar.cancelled()
        }

        AccentButton {
            compact: true
            text: L10n.T("Kırpılmış kopyayı kaydet")
            onClicked: bar.saved()
        }
    }
}
