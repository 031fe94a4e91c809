// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Matches
import Quelto.Shared
import Quelto.Theme

// What a match's row shows: a symbol, two lines of text, and at the end a live mark or what can be done with the match.
Item {
    id: content

    required property string symbol
    required property string title
    required property string subtitle
    required property bool isLive
    required property bool isMarked
    required property bool isTabStop
    readonly property color emphasis: isLive ? Theme.live : Theme.accent

    signal deleteRequested

    implicitHeight: tile.height

    Rectangle {
        id: tile

        anchors.verticalCenter: parent.verticalCenter
        width: 40
        height: 40
        radius: Theme.radius.tile
        color: Qt.alpha(content.emphasis, 0.14)

        SymbolIcon {
            anchors.centerIn: parent
            side: 20
            symbol: content.symbol
            color: content.emphasis
        }
    }

    Column {
        anchors.left: tile.right
        anchors.leftMargin: Theme.spacing.paragraph
        anchors.right: end.left
        anchors.rightMargin: Theme.spacing.paragraph
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacing.lines

        MatchRowText {
            width: parent.width
            text: L10n.isolated(content.title)
            font.weight: Font.DemiBold
        }

        MatchRowText {
            width: parent.width
            text: content.subtitle
            color: Theme.muted
            font.pixelSize: Theme.fontSize.label
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacing.row

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: chevron.width
            height: width
            visible: content.isLive

            LiveDot {
                anchors.centerIn: parent
            }
        }

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            visible: !content.isLive
            focusPolicy: content.isTabStop || activeFocus ? Qt.TabFocus : Qt.NoFocus
            symbol: "trash"
            text: L10n.T("Özeti Sil")
            onClicked: content.deleteRequested()
        }

        SymbolIcon {
            id: chevron

            anchors.verticalCenter: parent.verticalCenter
            visible: !content.isLive
            symbol: "chevron.right"
            side: 14
            color: content.isMarked ? Theme.text : Theme.dim
        }
    }
}
