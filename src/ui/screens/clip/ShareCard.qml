// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Hands the clip over: by drag, shrunk below an upload limit, or by the clipboard.
SectionCard {
    id: card

    required property ClipDetail clip
    readonly property bool isShrunk: clip.discordPath !== ""

    title: L10n.T("Paylaş")
    symbol: "paperplane.fill"

    DragTile {
        width: card.contentWidth
        path: card.clip.sharedPath
        title: card.isShrunk ? L10n.T("Discord sürümü hazır") : L10n.T("Discord'a sürükle bırak")
        subtitle: card.isShrunk ? card.clip.sharedSizeText + " • " + L10n.T("sürükleyip bırakın")
                                : L10n.T("Kartı tutup Discord sohbetine bırakın")
    }

    Column {
        width: card.contentWidth
        visible: card.clip.isAboveLimit
        spacing: Theme.spacing.stack

        Text {
            width: parent.width
            text: L10n.T("Bu klip {0}; Discord sınırı {1} MB.", [card.clip.sizeText, card.clip.limitMB])
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.muted
            font.pixelSize: Theme.fontSize.caption
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        AccentButton {
            width: parent.width
            enabled: !card.clip.isBusy
            text: L10n.T("Discord için küçült ({0} MB)", [card.clip.limitMB])
            onClicked: card.clip.shrink()
        }
    }

    GhostButton {
        width: card.contentWidth
        enabled: !card.clip.isBusy
        text: L10n.T("Dosyayı Kopyala")
        onClicked: card.clip.copy()
    }
}
