// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Review
import Quelto.Shared
import Quelto.Theme

// A quick pass over the clips of a match: each one is played, and a key keeps or deletes it. Nothing is deleted before
// the last button.
FocusScope {
    id: view

    required property string matchId

    readonly property real topMargin: 38

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: L10n.T("Klipleri İncele")
    // A key that is held to leave the full screen does not leave the page.
    Keys.onEscapePressed: event => {
        if (!event.isAutoRepeat) {
            review.leave();
        }
    }
    Keys.forwardTo: [answerKeys]

    // In full screen the player forwards its keys too.
    Item {
        id: answerKeys

        Keys.onPressed: event => {
            const isPlain = !(event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier));
            event.accepted = isPlain && review.answerByKey(event.text, event.nativeScanCode);
        }
    }

    MatchReview {
        id: review

        matchId: view.matchId
    }

    ReviewHeader {
        id: header

        x: Theme.spacing.page
        y: view.topMargin
        width: view.width - 2 * Theme.spacing.page
        review: review
    }

    // Without clips there is no player.
    Loader {
        id: body

        readonly property bool isWanted: review.count > 0

        function update() {
            setSource(isWanted ? "ReviewBody.qml" : "", isWanted ? {
                review: review,
                keyReceiver: answerKeys
            } : {});
        }

        anchors.fill: parent
        anchors.topMargin: header.y + header.height + Theme.spacing.paragraph
        focus: isWanted
        onIsWantedChanged: update()
    }

    EmptyState {
        anchors.centerIn: parent
        visible: review.isLoaded && review.count === 0
        symbol: "film.stack"
        title: L10n.T("Bu maçta klip kalmadı.")
        text: L10n.T("Silinenler Çöp Kutusu'na gider, oradan geri alınabilir.")
    }
}
