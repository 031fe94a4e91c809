// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Player
import Quelto.Review
import Quelto.Theme

// The player, the answers, the clips of the match and the last button. A low window scrolls.
FocusScope {
    id: body

    required property MatchReview review
    required property Item keyReceiver

    function finish() {
        sequence.stop();
        review.finish();
    }

    focus: true
    Component.onCompleted: sequence.show(review.currentPath)
    Component.onDestruction: sequence.stop()
    // The controls that have the focus take these keys first. The key that opened the review may still be held.
    Keys.onPressed: event => {
        const isEnter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
        event.accepted = isEnter && !event.isAutoRepeat;
        if (event.accepted) {
            summary.takeKeyboard();
        }
    }

    QtObject {
        id: internal

        readonly property Item focusedItem: body.Window.activeFocusItem
        // Qt gives the focus of a disabled control to the page or the player as a whole.
        readonly property bool isFocusLost: focusedItem === body || focusedItem === playerView

        onIsFocusLostChanged: focusCheck.restart()
    }

    // Not at once, because the focus may be on its way to another control.
    Timer {
        id: focusCheck

        interval: 0
        onTriggered: {
            if (internal.isFocusLost) {
                playerView.takeKeyboard();
            }
        }
    }

    ClipSequencePlayer {
        id: sequence

        following: body.review.followingPath
    }

    Connections {
        target: body.review

        function onClipShown(path: string) {
            sequence.show(path);
        }
    }

    FocusFlickable {
        id: scroll

        anchors.fill: parent
        contentHeight: column.height + Theme.spacing.panel
        scope: column

        Column {
            id: column

            x: Theme.spacing.page
            width: scroll.width - 2 * Theme.spacing.page
            spacing: Theme.spacing.stack

            ClipPlayerView {
                id: playerView

                readonly property real smallestHeight: 250
                readonly property real roomBelow: answers.height + strip.height + summary.height + 3 * column.spacing + Theme.spacing.panel

                width: parent.width
                height: Math.max(smallestHeight, Math.min(implicitHeight, scroll.height - roomBelow))
                focus: true
                model: sequence.current
                players: sequence.players
                keyReceiver: body.keyReceiver
            }

            AnswerBar {
                id: answers

                width: parent.width
                review: body.review
            }

            Filmstrip {
                id: strip

                width: parent.width
                review: body.review
            }

            ReviewSummary {
                id: summary

                width: parent.width
                review: body.review
                onFinished: body.finish()
            }
        }
    }
}
