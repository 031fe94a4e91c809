// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// A clip: its thumbnail, and its details below. A click opens it; a drag hands the file to another program. A click on a
// selectable card selects it or takes it back, and a double click opens it.
Item {
    id: card

    property string path: ""
    property int version: 0
    property string title: ""
    property string game: ""
    property string time: ""
    property string size: ""
    // The tag of its tier; empty for none.
    property string tier: ""
    property var score: undefined
    property string label: ""
    property real ratio: 16 / 9
    property bool isCacheOnly: false
    property bool isSelectable: false
    property bool isSelected: false
    // The keyboard focus of the grid is on this card.
    property bool isCurrent: false
    readonly property bool isHovered: pointer.hovered
    // Also marked while its menu is open.
    readonly property bool isMarked: isHovered || ((menu.item as ClipMenu)?.visible ?? false)
    readonly property alias textHeight: words.implicitHeight

    signal openRequested
    signal toggleRequested
    signal deleteRequested
    signal menuOpened

    function openMenu(at: point) {
        menu.active = true;
        const shown = menu.item as ClipMenu;
        card.menuOpened();
        shown.path = path;
        shown.title = title;
        shown.popup(card, at.x, at.y);
    }

    implicitHeight: picture.height + words.implicitHeight
    scale: isHovered ? 1.015 : 1
    z: isHovered ? 1 : 0
    Accessible.role: Accessible.ListItem
    Accessible.name: `${title}, ${game}, ${time}, ${size}`
    Accessible.description: isSelectable ? L10n.T("Tıkla: seç • Çift tıkla: oynat") : ""
    Accessible.checkable: isSelectable
    Accessible.checked: isSelected
    Accessible.focusable: true
    Accessible.focused: isCurrent
    Accessible.onPressAction: isSelectable ? toggleRequested() : openRequested()
    onPathChanged: {
        const open = menu.item as ClipMenu;
        if (open) {
            open.close();
        }
    }

    Behavior on scale {
        NumberAnimation {
            duration: Theme.duration.highlight
            easing.type: Easing.OutQuad
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius.card
        color: card.isMarked ? Theme.cardHover : Theme.card

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }

        FocusRing {
            active: card.isCurrent
            cornerRadius: Theme.radius.card
        }
    }

    ClipThumbnail {
        id: picture

        width: card.width
        height: Math.round(card.width / card.ratio)
        path: card.path
        version: card.version
        ratio: card.ratio
        showDuration: true
        isCacheOnly: card.isCacheOnly
        radius: Theme.radius.card
    }

    ClipHover {
        anchors.fill: picture
        visible: card.isHovered && !card.isSelectable
        radius: Theme.radius.card
        reserved: badge.visible ? badge.width + Theme.spacing.overlay : 0
    }

    Loader {
        anchors.fill: picture
        active: card.isSelectable
        source: "SelectionOverlay.qml"
        onLoaded: (item as SelectionOverlay).isSelected = Qt.binding(() => card.isSelected)
    }

    TierBadge {
        id: badge

        x: Theme.spacing.overlay
        y: Theme.spacing.overlay
        visible: card.tier !== ""
        tier: card.tier
        label: card.label
        score: card.score
    }

    ClipCardText {
        id: words

        anchors.top: picture.bottom
        width: card.width
        title: card.title
        game: card.game
        time: card.time
        size: card.size
        reserved: more.width + Theme.spacing.row
    }

    ClipMenuButton {
        id: more

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing.card
        anchors.verticalCenter: words.verticalCenter
        text: L10n.T("Klip menüsü")
        onClicked: card.openMenu(Qt.point(x + width, y + height))
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius.card
        color: "transparent"
        border.width: card.isSelected ? 2 : 1
        border.color: card.isSelected ? Theme.accent : card.isMarked ? Qt.alpha(Theme.accent, 0.7) : Theme.border

        Behavior on border.color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }
    }

    HoverHandler {
        id: pointer
    }

    TapHandler {
        // The clip of the last tap: another one may be shown here by now.
        property string tappedPath: ""

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: {
            if (!card.isSelectable) {
                card.openRequested();
                return;
            }
            // The second click takes back what the first one did.
            const isDouble = tapCount === 2 && tappedPath === card.path;
            tappedPath = card.path;
            card.toggleRequested();
            if (isDouble) {
                card.openRequested();
            }
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.WithinBounds
        onPressedChanged: {
            if (pressed) {
                card.openMenu(point.position);
            }
        }
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

    Loader {
        id: menu

        active: false
        source: "ClipMenu.qml"
    }

    Connections {
        target: menu.item as ClipMenu

        function onOpenRequested() {
            card.openRequested();
        }

        function onDeleteRequested() {
            card.deleteRequested();
        }
    }
}
