// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// A clip in the filmstrip: its thumbnail and its answer.
Item {
    id: frame

    required property int index
    required property string path
    required property string title
    required property bool isMarked
    required property bool isCurrent
    required property bool showsFocus
    required property real outline
    // "2 / 5", for screen readers.
    required property string position

    signal chosen

    Accessible.role: Accessible.ListItem
    Accessible.name: `${position}, ${title}, ${isMarked ? L10n.T("silinecek") : L10n.T("kalacak")}`
    Accessible.focusable: true
    Accessible.focused: showsFocus
    Accessible.onPressAction: chosen()

    ClipThumbnail {
        x: frame.outline
        y: frame.outline
        width: frame.width - 2 * frame.outline
        height: frame.height - 2 * frame.outline
        path: frame.path
        opacity: frame.isMarked ? 0.45 : 1

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.duration.toggle
                easing.type: Easing.OutQuad
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: frame.isCurrent ? frame.outline : pointer.hovered ? 1 : 0
        border.color: frame.showsFocus ? Theme.text : Theme.accent
    }

    // Dark behind the symbol, for bright pictures.
    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: frame.outline + 3
        width: 18
        height: width
        radius: width / 2
        color: Qt.alpha(Theme.shadow, 0.75)

        SymbolIcon {
            anchors.centerIn: parent
            symbol: frame.isMarked ? "xmark.circle.fill" : "checkmark.circle.fill"
            side: 18
            color: frame.isMarked ? Theme.live : Theme.good
        }
    }

    HoverHandler {
        id: pointer
    }

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: frame.chosen()
    }

    ThemedToolTip {
        text: frame.title
    }
}
