// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.MatchPage
import Quelto.Shared
import Quelto.Theme

// The way back, the name of the match and when it was played, and the button that deletes its recap. In a narrow page, the
// name is below the buttons.
GridLayout {
    id: header

    required property MatchRecap match
    readonly property Item backButton: back
    // A longer name is cut off.
    readonly property real readableWidth: 320
    readonly property bool isNarrow: width < back.implicitWidth + remove.implicitWidth + 2 * columnSpacing
                                     + Math.min(title.implicitWidth, readableWidth)

    signal deleteRequested

    columns: 3
    columnSpacing: Theme.spacing.paragraph
    rowSpacing: Theme.spacing.stack

    AccentButton {
        id: back

        Layout.row: 0
        Layout.column: 0
        // Without clips there is nothing else to use.
        focus: header.match.count === 0
        filled: false
        compact: true
        symbol: "chevron.left"
        text: L10n.T("Maç Özetleri")
        onClicked: Navigation.showMatches()
    }

    ColumnLayout {
        Layout.row: header.isNarrow ? 1 : 0
        Layout.column: header.isNarrow ? 0 : 1
        Layout.columnSpan: header.isNarrow ? 3 : 1
        Layout.fillWidth: true
        visible: header.match.isFound
        spacing: 4

        Text {
            id: title

            Layout.fillWidth: true
            text: L10n.isolated(header.match.name)
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.text
            font.pixelSize: Theme.fontSize.pageTitle
            font.weight: Font.ExtraBold
            Accessible.role: Accessible.Heading
            Accessible.name: header.match.name

            ThemedToolTip {
                text: title.truncated ? header.match.name : ""
            }
        }

        Text {
            Layout.fillWidth: true
            text: header.match.subtitle
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    IconButton {
        id: remove

        Layout.row: 0
        Layout.column: 2
        Layout.alignment: Qt.AlignRight
        visible: header.match.isFound
        symbol: "trash"
        text: L10n.T("Özeti Sil")
        onClicked: header.deleteRequested()
    }
}
