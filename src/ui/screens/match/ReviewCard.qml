// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// What a review is for, and the button that starts it. In a narrow page, the button is below the text.
Rectangle {
    id: card

    property bool canReview: false
    readonly property real smallestTextWidth: 240

    signal reviewRequested

    implicitHeight: content.implicitHeight + 2 * Theme.spacing.card
    radius: Theme.radius.panel
    color: Theme.panel
    border.width: 1
    border.color: Theme.border

    GridLayout {
        id: content

        anchors.fill: parent
        anchors.margins: Theme.spacing.card
        anchors.leftMargin: Theme.spacing.panel
        columns: width >= card.smallestTextWidth + columnSpacing + review.implicitWidth ? 2 : 1
        columnSpacing: Theme.spacing.panel
        rowSpacing: Theme.spacing.stack

        Text {
            Layout.fillWidth: true
            text: L10n.T("Klipleri tek tek izle; beğendiklerin kalır, diğerleri Çöp Kutusu'na gider.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: Theme.fontSize.body
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        AccentButton {
            id: review

            // Enter starts the review as soon as the page is open.
            focus: card.canReview
            Layout.fillWidth: false
            enabled: card.canReview
            symbol: "play.rectangle.on.rectangle.fill"
            text: L10n.T("Klipleri İncele")
            onClicked: card.reviewRequested()
        }
    }
}
