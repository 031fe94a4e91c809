// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// The title of the list of matches, and what it is for. At the height of the library's header.
Column {
    id: header

    readonly property string title: L10n.T("Maç Özetleri")
    readonly property real topMargin: 38
    readonly property real bottomMargin: 16

    topPadding: topMargin
    bottomPadding: bottomMargin
    leftPadding: Theme.spacing.page
    rightPadding: Theme.spacing.page
    spacing: 4

    Text {
        width: header.width - 2 * Theme.spacing.page
        text: header.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font.pixelSize: Theme.fontSize.pageTitle
        font.weight: Font.ExtraBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: header.width - 2 * Theme.spacing.page
        text: L10n.T("Her maçın klipleri tek yerde; maç bitince inceleyip beğenmediklerini silebilirsin.")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: Theme.fontSize.label
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
