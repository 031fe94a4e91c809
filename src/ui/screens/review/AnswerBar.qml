// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Review
import Quelto.Shared
import Quelto.Theme

// The clip that is shown, and the answers for it.
RowLayout {
    id: bar

    required property MatchReview review

    spacing: Theme.spacing.row

    TierBadge {
        visible: bar.review.tier !== ""
        tier: bar.review.tier
        label: bar.review.tierLabel
        score: bar.review.score
    }

    Text {
        id: title

        Layout.fillWidth: true
        Layout.rightMargin: Theme.spacing.row
        text: L10n.isolated(bar.review.title)
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: bar.review.isMarked ? Theme.muted : Theme.text
        font.pixelSize: Theme.fontSize.dialogTitle
        font.weight: Font.DemiBold
        font.strikeout: bar.review.isMarked
        Accessible.role: Accessible.Heading
        Accessible.name: bar.review.title

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.toggle
                easing.type: Easing.OutQuad
            }
        }

        ThemedToolTip {
            text: title.truncated ? bar.review.title : ""
        }
    }

    IconButton {
        symbol: "chevron.left"
        text: L10n.T("Önceki klip")
        enabled: bar.review.index > 0
        focusPolicy: Qt.TabFocus
        onClicked: bar.review.go(bar.review.index - 1)
    }

    ReviewButton {
        symbol: "xmark"
        text: bar.review.isMarked ? L10n.T("Silinecek") : L10n.T("Sil")
        otherText: bar.review.isMarked ? L10n.T("Sil") : L10n.T("Silinecek")
        color: Theme.live
        filledForeground: Theme.onAccent
        active: bar.review.isMarked
        onClicked: bar.review.remove()
    }

    ReviewButton {
        symbol: "checkmark"
        text: L10n.T("Tut")
        color: Theme.good
        filledForeground: Theme.onGood
        active: !bar.review.isMarked
        onClicked: bar.review.keep()
    }

    IconButton {
        symbol: "chevron.right"
        text: L10n.T("Sonraki klip")
        enabled: bar.review.index < bar.review.count - 1
        focusPolicy: Qt.TabFocus
        onClicked: bar.review.go(bar.review.index + 1)
    }
}
