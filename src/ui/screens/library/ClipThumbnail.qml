// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.Library
import Quelto.Theme

// A clip's thumbnail; a symbol until the picture is loaded.
Item {
    id: thumbnail

    property string path: ""
    // Changes when the file at the path changes.
    property int version: 0
    property bool showDuration: false
    // Radius of the upper corners.
    property real radius: 0
    property real ratio: 16 / 9
    // The view scrolls too fast to read the card.
    property alias isCacheOnly: picture.isCacheOnly
    readonly property alias picture: picture
    readonly property bool showsChip: showDuration && picture.durationText !== ""

    implicitHeight: Math.round(width / ratio)

    // Cuts off the lower round corners; the details below continue the card.
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

    ThumbnailItem {
        id: picture

        anchors.fill: parent
        path: thumbnail.path
        version: thumbnail.version
        radius: thumbnail.radius
    }

    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Theme.spacing.overlay
        visible: thumbnail.showsChip
        width: duration.implicitWidth + 12
        height: duration.implicitHeight + 6
        radius: Theme.radius.badge
        color: Qt.alpha(Theme.shadow, 0.75)

        Text {
            id: duration

            anchors.centerIn: parent
            text: picture.durationText
            textFormat: Text.PlainText
            color: Theme.onAccent
            font.pixelSize: Theme.fontSize.caption
            font.weight: Font.Bold
        }
    }
}
