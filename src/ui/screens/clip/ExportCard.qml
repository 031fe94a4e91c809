// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Makes a copy of the clip in another shape.
SectionCard {
    id: card

    required property ClipDetail clip

    title: L10n.T("Dışa aktar")

    QtObject {
        id: internal

        property string aspect: card.clip.defaultAspect
        property string fill: card.clip.defaultFill
    }

    Column {
        width: card.contentWidth
        spacing: Theme.spacing.row

        Text {
            text: L10n.T("En-boy oranı")
            textFormat: Text.PlainText
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
            Accessible.ignored: true
        }

        PillPicker {
            width: parent.width
            name: L10n.T("En-boy oranı")
            options: card.clip.aspects
            selection: internal.aspect
            onPicked: option => internal.aspect = option
        }

        PillPicker {
            width: parent.width
            name: L10n.T("Dolgu")
            options: card.clip.fills
            labelOf: fill => card.clip.fillLabel(fill)
            selection: internal.fill
            onPicked: option => internal.fill = option
        }
    }

    AccentButton {
        width: card.contentWidth
        enabled: !card.clip.isBusy
        text: L10n.T("Yeni oranla dışa aktar")
        onClicked: card.clip.exportAspect(internal.aspect, internal.fill)
    }
}
