// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// The texts below the name of a game. Names in them come from the game, so they may be long or in any script.
Column {
    id: texts

    required property bool isLive
    required property string status
    required property string hint
    required property string lastMoment
    readonly property string momentText: lastMoment === "" ? "" : L10n.T("Son an: {0}", [lastMoment])
    // All texts, a line each.
    readonly property string text: status + (hint === "" ? "" : "\n" + hint) + (momentText === "" ? "" : "\n" + momentText)

    spacing: Theme.spacing.lines

    CardParagraph {
        width: parent.width
        text: L10n.isolated(texts.status)
        color: texts.isLive ? Theme.good : Theme.muted
    }

    CardParagraph {
        width: parent.width
        visible: texts.hint !== ""
        text: texts.hint
    }

    CardParagraph {
        width: parent.width
        visible: texts.momentText !== ""
        text: L10n.isolated(texts.momentText)
        color: Theme.dim
        font.pixelSize: Theme.fontSize.note
    }
}
