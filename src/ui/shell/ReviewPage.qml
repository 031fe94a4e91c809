// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The clips of a match. Review in the window is not implemented yet.
PlaceholderPage {
    id: page

    // Without the titles.
    readonly property real heightOfTheRest: 290

    symbol: "flag.checkered"
    title: MatchSummary.isMissing ? L10n.T("Bu maç artık listede yok") : MatchSummary.name
    text: MatchSummary.isMissing ? "" : L10n.T("Klipleri burada izleyip ayıklamak bir sonraki sürümde geliyor. Şimdilik klip klasöründe bulabilirsiniz.")

    details: ListView {
        width: parent.width
        height: Math.min(contentHeight, 260, Math.max(0, page.height - page.heightOfTheRest))
        visible: count > 0
        clip: true
        spacing: Theme.spacing.row
        model: MatchSummary.clipTitles
        Accessible.role: Accessible.List
        Accessible.name: MatchSummary.name
        delegate: Text {
            id: clipTitle

            required property string modelData

            width: ListView.view.width
            text: L10n.isolated(modelData)
            color: Theme.text
            font.pixelSize: Theme.fontSize.body
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.role: Accessible.ListItem
            Accessible.name: modelData

            ThemedToolTip {
                text: clipTitle.truncated ? clipTitle.text : ""
            }
        }
    }

    AccentButton {
        focus: true
        compact: true
        symbol: "folder"
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
