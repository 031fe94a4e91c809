// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Review
import Quelto.Shared
import Quelto.Theme

// The numbers of clips to keep and to delete, and the button that deletes. A narrow page shows the button below.
Rectangle {
    id: panel

    required property MatchReview review
    readonly property real inset: Theme.spacing.card
    readonly property real gap: Theme.spacing.paragraph
    readonly property bool isNarrow: width < 2 * inset + gap + Math.max(badges.implicitWidth, 260) + done.implicitWidth

    signal finished

    function takeKeyboard() {
        done.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: isNarrow ? words.height + gap + done.height + 2 * inset : Math.max(words.height, done.height) + 2 * inset
    radius: Theme.radius.panel
    color: Theme.panel
    border.width: 1
    border.color: Theme.border

    Column {
        id: words

        x: panel.inset
        y: panel.isNarrow ? panel.inset : Math.round((panel.height - height) / 2)
        width: panel.width - 2 * panel.inset - (panel.isNarrow ? 0 : done.width + panel.gap)
        spacing: 6

        Row {
            id: badges

            spacing: Theme.spacing.row

            CountBadge {
                count: panel.review.keptCount
                label: L10n.T("kalacak")
                tint: Theme.good
            }

            CountBadge {
                count: panel.review.markedCount
                label: L10n.T("silinecek")
                tint: Theme.live
            }
        }

        Text {
            width: parent.width
            text: panel.review.markedCount === 0 ? L10n.T("Hepsi kalacak. Beğenmediklerini D ile işaretle.") : L10n.T("Silinenler Çöp Kutusu'na gider, oradan geri alınabilir.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    AccentButton {
        id: done

        x: panel.isNarrow ? panel.inset : panel.width - panel.inset - width
        y: panel.isNarrow ? words.y + words.height + panel.gap : Math.round((panel.height - height) / 2)
        width: panel.isNarrow ? panel.width - 2 * panel.inset : implicitWidth
        destructive: panel.review.markedCount > 0
        symbol: "checkmark"
        text: panel.review.markedCount > 0 ? L10n.T("Kaydet ve {0} klibi sil", [panel.review.markedCount]) : L10n.T("Bitti")
        onClicked: panel.finished()
    }
}
