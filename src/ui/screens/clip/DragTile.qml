// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.ClipPage
import Quelto.Icons
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// Hands the file to another program by drag and drop.
Rectangle {
    id: tile

    required property string path
    required property string title
    required property string subtitle
    readonly property real pictureWidth: 84

    implicitHeight: Math.max(picture.height, words.height) + 2 * Theme.spacing.row
    radius: Theme.radius.card
    color: pointer.hovered ? Qt.lighter(Theme.discord, 1.08) : Theme.discord
    Accessible.role: Accessible.StaticText
    Accessible.name: title
    Accessible.description: subtitle

    ClipThumbnail {
        id: picture

        x: Theme.spacing.row
        anchors.verticalCenter: parent.verticalCenter
        width: tile.pictureWidth
        height: implicitHeight
        radius: Theme.radius.badge
        path: tile.path
    }

    Column {
        id: words

        anchors.left: picture.right
        anchors.right: grip.left
        anchors.margins: Theme.spacing.stack
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacing.lines

        Text {
            width: parent.width
            text: tile.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            color: Theme.onAccent
            font.pixelSize: Theme.fontSize.body
            font.weight: Font.Bold
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            text: tile.subtitle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
            color: Theme.onAccent
            opacity: 0.85
            font.pixelSize: Theme.fontSize.caption
            Accessible.ignored: true
        }
    }

    SymbolIcon {
        id: grip

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing.stack
        anchors.verticalCenter: parent.verticalCenter
        symbol: "line.3.horizontal"
        color: Theme.onAccent
        opacity: 0.7
    }

    HoverHandler {
        id: pointer

        cursorShape: Qt.OpenHandCursor
    }

    DragHandler {
        target: null
        acceptedDevices: PointerDevice.Mouse
        onActiveChanged: {
            if (active) {
                ClipCommands.drag(picture.picture);
            }
        }
    }

    ThemedToolTip {
        text: L10n.T("Discord'a sürükleyip bırakın")
    }
}
