// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.ClipPage
import Quelto.Shared
import Quelto.Theme

// The way back, the clip's title and game, its tier, and the button that renames it.
RowLayout {
    id: header

    required property ClipDetail clip

    signal renameRequested

    spacing: Theme.spacing.paragraph

    AccentButton {
        filled: false
        compact: true
        symbol: "chevron.left"
        text: L10n.T("Kütüphane")
        onClicked: Navigation.closeClip()
    }

    ColumnLayout {
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
        spacing: 2

        Text {
            id: title

            Layout.fillWidth: true
            text: L10n.isolated(header.clip.title)
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.text
            font.pixelSize: Theme.fontSize.itemTitle
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: header.clip.title

            ThemedToolTip {
                text: title.truncated ? header.clip.title : ""
            }
        }

        Text {
            Layout.fillWidth: true
            text: L10n.isolated(TextCase.upper(header.clip.game))
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.accent
            font.pixelSize: Theme.fontSize.note
            font.weight: Font.Bold
            font.letterSpacing: 0.6
            Accessible.role: Accessible.StaticText
            Accessible.name: header.clip.game
        }
    }

    TierBadge {
        visible: header.clip.tier !== ""
        tier: header.clip.tier
        label: header.clip.tierLabel
        score: header.clip.score
    }

    IconButton {
        symbol: "pencil"
        text: L10n.T("Yeniden adlandır")
        onClicked: header.renameRequested()
    }

    Item {
        Layout.fillWidth: true
    }
}
