// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The clips of one match. Playing and sorting them out here is still to come.
Column {
    id: page

    spacing: 18

    Text {
        width: parent.width
        text: ShownMatch.isKnown ? ShownMatch.name : L10n.T("Bu maç artık listede yok")
        color: Theme.text
        font.pixelSize: 20
        font.weight: Font.Bold
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    ListView {
        width: parent.width
        height: Math.min(contentHeight, 300)
        visible: count > 0
        clip: true
        spacing: 8
        model: ShownMatch.clipTitles
        delegate: Text {
            required property string modelData

            width: ListView.view.width
            text: modelData
            color: Theme.text
            font.pixelSize: 13
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.role: Accessible.ListItem
            Accessible.name: text
        }
    }

    Text {
        width: parent.width
        visible: ShownMatch.isKnown
        text: L10n.T("Klipleri burada izleyip ayıklamak bir sonraki sürümde geliyor. Şimdilik klip klasöründe bulabilirsiniz.")
        color: Theme.muted
        font.pixelSize: 12
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }

    Row {
        spacing: 12

        AccentButton {
            compact: true
            symbol: "folder.fill"
            text: L10n.T("Klip Klasörünü Aç")
            onClicked: WindowCommands.openFolder()
        }

        AccentButton {
            compact: true
            filled: false
            text: L10n.T("Kapat")
            onClicked: Navigation.showLibrary()
        }
    }

    Keys.onEscapePressed: Navigation.showLibrary()
}
