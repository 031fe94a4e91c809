// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Player
import Quelto.Shared
import Quelto.Theme

// The player: the video, the timeline and the controls on a panel, or on the whole screen.
FocusScope {
    id: view

    // The player on screen, one of `players`.
    required property ClipPlayer model
    property var players: [model]
    // Keys go to this item first, also in full screen.
    property Item keyReceiver: null
    readonly property bool isFullScreen: stage.opened
    readonly property bool showsControls: !isFullScreen || idle.running || controls.isMenuOpen
    // From the edge of the panel.
    readonly property real inset: Theme.spacing.paragraph
    readonly property real belowVideo: timeline.implicitHeight + controls.implicitHeight + 2 * Theme.spacing.row
    readonly property real videoRatio: 16 / 9
    // Playback pauses then, because a hidden window has no controls to stop the sound.
    readonly property bool isWindowHidden: Window.visibility === Window.Hidden

    function heightFor(width: real): real {
        return (width - 2 * inset) / videoRatio + belowVideo + 2 * inset;
    }

    function toggleFullScreen() {
        if (stage.visible) {
            stage.close();
        } else {
            stage.open();
        }
    }

    function takeKeyboard() {
        body.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: heightFor(width)
    onIsWindowHiddenChanged: {
        if (isWindowHidden) {
            model.pause();
        }
    }
    Accessible.role: Accessible.Pane
    Accessible.name: L10n.T("Klip oynatıcı")

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius.panel
        color: Theme.panel
        border.width: 1
        border.color: Theme.border
    }

    // In the panel, or in the full screen. Moves back before the popup leaves the window: without a window the video would
    // lose its output.
    Item {
        id: body

        parent: view.isFullScreen ? (stage.contentItem as Item) : view
        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.Pane
        Accessible.name: L10n.T("Klip oynatıcı")
        onParentChanged: view.takeKeyboard()
        Keys.forwardTo: view.keyReceiver ? [view.keyReceiver] : []
        // Qt would start at the window's first control, because the body is no tab stop itself.
        Keys.onTabPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        Keys.onPressed: event => {
            const actions = {
                [Qt.Key_Space]: () => event.isAutoRepeat || view.model.toggle(),
                [Qt.Key_Left]: () => view.model.seek(view.model.time - 5),
                [Qt.Key_Right]: () => view.model.seek(view.model.time + 5),
                [Qt.Key_Comma]: () => view.model.stepBack(),
                [Qt.Key_Period]: () => view.model.stepForward()
            };
            idle.restart();
            event.accepted = event.key in actions && !(event.modifiers & ~Qt.KeypadModifier);
            if (event.accepted) {
                actions[event.key]();
            }
        }

        HoverHandler {
            // Qt also reports a pointer that rests.
            readonly property point place: point.position

            cursorShape: view.showsControls ? Qt.ArrowCursor : Qt.BlankCursor
            onPlaceChanged: idle.restart()
        }

        Item {
            id: screen

            readonly property real roomHeight: view.isFullScreen ? body.height : body.height - view.belowVideo - 2 * view.inset
            readonly property real roomWidth: view.isFullScreen ? body.width : body.width - 2 * view.inset

            width: view.isFullScreen ? roomWidth : Math.min(roomWidth, roomHeight * view.videoRatio)
            height: view.isFullScreen ? roomHeight : Math.min(roomHeight, roomWidth / view.videoRatio)
            x: (body.width - width) / 2
            y: view.isFullScreen ? 0 : view.inset + (roomHeight - height) / 2

            Rectangle {
                anchors.fill: parent
                color: Theme.shadow
            }

            // All are drawn, so that the picture of each is there when it comes to the front. An output that is built again
            // loses its picture for a moment: the first surface therefore stays when another player is added.
            Item {
                anchors.fill: parent

                VideoSurface {
                    anchors.fill: parent
                    z: model === view.model ? 1 : 0
                    model: view.players.length > 0 ? view.players[0] : null
                }

                Repeater {
                    model: Math.max(0, view.players.length - 1)

                    VideoSurface {
                        required property int index

                        anchors.fill: parent
                        z: model === view.model ? 1 : 0
                        model: view.players[index + 1]
                    }
                }
            }

            // Rounds the corners: a ring in the colour of the panel covers them. It also covers the outermost pixels, of
            // which libmpv leaves some black when sizes are rounded.
            Rectangle {
                readonly property real ring: 4
                readonly property real overlap: 1

                anchors.fill: parent
                anchors.margins: overlap - ring
                visible: !view.isFullScreen
                radius: Theme.radius.card + ring - overlap
                color: "transparent"
                border.width: ring
                border.color: Theme.panel
            }

            TapHandler {
                gesturePolicy: TapHandler.ReleaseWithinBounds
                onTapped: {
                    body.forceActiveFocus(Qt.MouseFocusReason);
                    view.model.toggle();
                }
            }

            PlayButton {
                anchors.centerIn: parent
                visible: !view.model.isPlaying
            }
        }

        Rectangle {
            anchors.fill: bar
            anchors.margins: -view.inset
            visible: view.isFullScreen
            opacity: bar.opacity
            color: Qt.alpha(Theme.panel, 0.92)
        }

        Column {
            id: bar

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: view.inset
            spacing: Theme.spacing.row
            opacity: view.showsControls ? 1 : 0

            Behavior on opacity {
                NumberAnimation {
                    duration: Theme.duration.reveal
                    easing.type: Easing.OutQuad
                }
            }

            Timeline {
                id: timeline

                width: parent.width
                model: view.model
            }

            PlayerControls {
                id: controls

                width: parent.width
                model: view.model
                isFullScreen: view.isFullScreen
                onFullScreenToggled: view.toggleFullScreen()
            }
        }
    }

    // Since the last movement of the pointer, or key.
    Timer {
        id: idle

        interval: 2000
    }

    FullScreenStage {
        id: stage

        onOpened: idle.restart()
    }
}
