// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Controls
import Quelto.Library
import Quelto.Player
import Quelto.Shared
import Quelto.Theme

// The page of one clip: it plays, and can be renamed, trimmed, exported, shared and deleted.
FocusScope {
    id: view

    required property string path

    readonly property real topMargin: 38
    readonly property real sideWidth: 300
    readonly property real gap: Theme.spacing.paragraph
    // Below this width the cards are under the player.
    readonly property bool isWide: body.width >= 2 * sideWidth + gap
    readonly property real mainWidth: isWide ? body.width - sideWidth - gap : body.width

    function saveTrim() {
        detail.trim(player.trimIn, player.trimOut);
        player.trimming = false;
    }

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: detail.title
    Component.onCompleted: player.load(path)
    Component.onDestruction: player.stop()
    Keys.onEscapePressed: event => {
        event.accepted = player.trimming;
        player.trimming = false;
    }

    QtObject {
        id: internal

        readonly property Item focusedItem: view.Window.activeFocusItem
        // Qt gives the focus of a disabled control to the page or the player as a whole, and leaves it on a hidden one.
        readonly property bool isFocusLost: focusedItem === view || focusedItem === playerView
                                            || (focusedItem?.visible === false && contains(focusedItem))

        function contains(item: Item): bool {
            let ancestor = item;
            while (ancestor && ancestor !== view) {
                ancestor = ancestor.parent;
            }
            return ancestor === view;
        }

        // The button that saves a frame is disabled for a moment only.
        function keepKeyboard() {
            if (isFocusLost && !detail.isSavingFrame) {
                playerView.takeKeyboard();
            }
        }

        onIsFocusLostChanged: focusCheck.restart()
    }

    // Not at once, because the focus may be on its way to another control.
    Timer {
        id: focusCheck

        interval: 0
        onTriggered: internal.keepKeyboard()
    }

    ClipDetail {
        id: detail

        path: view.path
    }

    ClipPlayer {
        id: player
    }

    ClipHeader {
        id: header

        x: Theme.spacing.page
        y: view.topMargin
        width: view.width - 2 * Theme.spacing.page
        clip: detail
        onRenameRequested: rename.ask(detail.editableTitle)
    }

    // In a low window the cards scroll beside the player. In a narrow one all of it scrolls.
    FocusFlickable {
        id: scroll

        anchors.fill: parent
        anchors.topMargin: header.y + header.height + Theme.spacing.paragraph
        contentHeight: body.height + Theme.spacing.page
        scope: view.isWide ? side : body
        clip: true

        Item {
            id: body

            x: Theme.spacing.page
            width: scroll.width - 2 * Theme.spacing.page
            height: Math.max(main.height, side.y + side.height) + (busyPanel.visible ? view.gap + busyPanel.height : 0)

            Column {
                id: main

                readonly property real roomBelow: under.height + spacing + Theme.spacing.page

                // Stays in view while the cards scroll.
                y: view.isWide ? Math.min(scroll.contentY, body.height - height) : 0
                width: view.mainWidth
                spacing: Theme.spacing.paragraph

                ClipPlayerView {
                    id: playerView

                    readonly property real smallestHeight: 220

                    width: parent.width
                    height: Math.max(smallestHeight, Math.min(implicitHeight, scroll.height - (view.isWide ? main.roomBelow : 0)))
                    focus: true
                    model: player
                }

                Item {
                    id: under

                    width: parent.width
                    height: player.trimming ? trimBar.implicitHeight : info.implicitHeight

                    InfoRow {
                        id: info

                        width: parent.width
                        visible: !player.trimming
                        clip: detail
                    }

                    TrimBar {
                        id: trimBar

                        width: parent.width
                        visible: player.trimming
                        onCancelled: player.trimming = false
                        onSaved: view.saveTrim()
                    }
                }
            }

            Column {
                id: side

                x: view.isWide ? view.mainWidth + view.gap : 0
                y: view.isWide ? 0 : main.height + view.gap
                width: view.isWide ? view.sideWidth : body.width
                spacing: Theme.spacing.paragraph

                ShareCard {
                    clip: detail
                }

                ExportCard {
                    clip: detail
                }

                EditCard {
                    clip: detail
                    onTrimRequested: player.startTrimming()
                    onFrameRequested: detail.saveFrame(player.time)
                    onDeleteRequested: deletion.ask(view.path, detail.title)
                }
            }

            // Below the cards, or above what does not fit the window, so that it is always in view.
            BusyPanel {
                id: busyPanel

                x: side.x
                y: Math.min(side.y + side.height + view.gap, scroll.contentY + scroll.height - height - Theme.spacing.row)
                width: side.width
                visible: detail.isBusy
                text: detail.busyText
                progress: detail.progress
            }
        }
    }

    RenameDialog {
        id: rename

        onAccepted: title => detail.rename(title)
    }

    DeleteClipDialog {
        id: deletion

        onDeleteRequested: detail.trash()
    }
}
