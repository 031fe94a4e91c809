// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Library
import Quelto.Theme

// A clip's picture, or a sign in its place until it is there.
Item {
    id: thumbnail

    property string path: ""
    // Another one when the file at the path has changed.
    property int version: 0
    property bool showDuration: false
    // Of the upper corners.
    property real radius: 0
    property real ratio: 16 / 9
    // Scrolled through too fast to be looked at.
    property alias isPassing: picture.isPassing
    readonly property alias picture: picture
    readonly property bool showsChip: showDuration && picture.durationText !== ""

    implicitHeight: Math.round(width / ratio)

    // The lower corners stay square.
    Item {
        anchors.fill: parent
        clip: true
        visible: !picture.hasPicture

        Rectangle {
            width: parent.width
            height: parent.height + radius
            radius: thumbnail.radius
            color: Theme.bg
        }

        SymbolIcon {
            anchors.centerIn: parent
            symbol: "film"
            side: 26
            color: Theme.dim
        }
    }

    ClipPicture {
        id: picture

        anchors.fill: parent
        path: thumbnail.path
        version: thumbnail.version
        radius: thumbnail.radius
    }

    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 8
        visible: thumbnail.showsChip
        width: duration.implicitWidth + 12
        height: duration.implicitHeight + 6
        radius: 4
        color: Qt.alpha(Theme.shadow, 0.75)

        Text {
            id: duration

            anchors.centerIn: parent
            text: picture.durationText
            textFormat: Text.PlainText
            color: Theme.onAccent
            font.pixelSize: 11
            font.weight: Font.Bold
        }
    }
}
