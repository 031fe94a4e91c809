// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Review
import Quelto.Shared
import Quelto.Theme

// The way back to the match, the instructions, and the number of the clip that is shown.
RowLayout {
    id: header

    required property MatchReview review

    spacing: Theme.spacing.paragraph

    AccentButton {
        Layout.alignment: Qt.AlignTop
        // Without clips there is nothing else to use.
        focus: header.review.count === 0
        filled: false
        compact: true
        symbol: "chevron.left"
        text: L10n.T("Maç Özeti")
        onClicked: header.review.leave()
    }

    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.spacing.lines

        Text {
            id: title

            Layout.fillWidth: true
            text: L10n.T("Klipleri İncele")
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.text
            font.pixelSize: Theme.fontSize.itemTitle
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            Layout.fillWidth: true
            text: L10n.T("Beğendiklerini tut, diğerlerini sil • D: sil  K: tut")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Text {
        Layout.alignment: Qt.AlignTop
        visible: header.review.count > 0
        text: `${header.review.index + 1} / ${header.review.count}`
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.fontSize.heading
        font.weight: Font.Bold
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
