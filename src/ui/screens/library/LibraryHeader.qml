// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// What is shown and how many, the search, and the way to the folder.
Item {
    id: header

    required property LibraryModel library
    required property string title
    readonly property alias searchField: search

    // The search is empty, and the user is done with it.
    signal searchDone

    implicitHeight: 38 + Math.max(titles.height, tools.height) + 12

    Column {
        id: titles

        x: 28
        y: 38
        width: header.width - 28 - 28 - tools.width - 20
        spacing: 4

        Text {
            width: parent.width
            text: header.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.text
            font.pixelSize: 28
            font.weight: Font.ExtraBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            width: parent.width
            opacity: header.library.isLoaded ? 1 : 0
            text: L10n.T("{0} klip • Discord'a paylaşmak için bir klibi sürükleyip bırakın", [header.library.count])
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.muted
            font.pixelSize: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Row {
        id: tools

        anchors.right: parent.right
        anchors.rightMargin: 28
        anchors.verticalCenter: titles.verticalCenter
        spacing: 8

        SearchField {
            id: search

            anchors.verticalCenter: parent.verticalCenter
            width: 170
            placeholder: L10n.T("Ara")
            onTextChanged: header.library.search = text
            Keys.onDownPressed: header.searchDone()
            Keys.onReturnPressed: header.searchDone()
        }

        AccentButton {
            anchors.verticalCenter: parent.verticalCenter
            filled: false
            compact: true
            symbol: "folder"
            text: L10n.T("Klasör")
            onClicked: ClipCommands.openFolder()
        }
    }
}
