// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// What else can be done with the clip.
SectionCard {
    id: card

    required property ClipDetail clip

    signal trimRequested
    signal frameRequested
    signal deleteRequested

    title: L10n.T("Düzenle")

    Column {
        width: card.contentWidth
        spacing: Theme.spacing.row

        GhostButton {
            width: parent.width
            enabled: !card.clip.isBusy
            text: L10n.T("Kırp")
            onClicked: card.trimRequested()
        }

        GhostButton {
            width: parent.width
            enabled: !card.clip.isBusy
            text: L10n.TOnDesktop("Finder'da Göster")
            onClicked: card.clip.reveal()
        }

        GhostButton {
            width: parent.width
            enabled: !card.clip.isSavingFrame
            text: L10n.T("Kareyi Kaydet")
            onClicked: card.frameRequested()
        }

        GhostButton {
            width: parent.width
            enabled: !card.clip.isBusy
            destructive: true
            text: L10n.T("Çöp Kutusuna Taşı")
            onClicked: card.deleteRequested()
        }
    }
}
