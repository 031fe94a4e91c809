// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// Title and number of clips, the search field, and the button that opens the folder.
Item {
    id: header

    required property LibraryModel library
    required property string title
    readonly property real topMargin: 38
    readonly property real bottomMargin: 12
    // Between the title and the tools.
    readonly property real gap: 20
    readonly property alias searchField: search

    // The user leaves the search field for the results.
    signal searchDone

    implicitHeight: topMargin + Math.max(titles.height, tools.height) + bottomMargin

    Column {
        id: titles

        x: Theme.spacing.page
        y: header.topMargin
        width: header.width - 2 * Theme.spacing.page - tools.width - header.gap
        spacing: 4

        Text {
            id: pageTitle

            width: parent.width
            text: L10n.isolated(header.title)
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.text
            font.pixelSize: Theme.fontSize.pageTitle
            font.weight: Font.ExtraBold
            Accessible.role: Accessible.Heading
            Accessible.name: header.title

            ThemedToolTip {
                text: pageTitle.truncated ? header.title : ""
            }
        }

        Text {
            width: parent.width
            opacity: header.library.isLoaded ? 1 : 0
            text: L10n.T("{0} klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın", [header.library.count])
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Row {
        id: tools

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing.page
        anchors.verticalCenter: titles.verticalCenter
        spacing: Theme.spacing.row

        SearchField {
            id: search

            anchors.verticalCenter: parent.verticalCenter
            placeholder: L10n.T("Ara")
            onTextChanged: header.library.search = text
            Keys.onDownPressed: header.searchDone()
            Keys.onReturnPressed: header.searchDone()
            Keys.onEnterPressed: header.searchDone()
        }

        AccentButton {
            anchors.verticalCenter: parent.verticalCenter
            height: search.height
            filled: false
            compact: true
            symbol: "folder"
            text: L10n.T("Klasör")
            onClicked: ClipCommands.openFolder()
        }
    }
}
