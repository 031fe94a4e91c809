// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.Review
import Quelto.Shared
import Quelto.Theme

// All clips of the match in a row, with their answers. One tab stop; the arrow keys change the clip that is shown.
ListView {
    id: strip

    required property MatchReview review
    readonly property real frameWidth: 112
    readonly property real outline: 2

    function announceCurrent() {
        ScreenReader.announceFocus(currentItem);
    }

    height: Math.round(frameWidth * 9 / 16) + 2 * outline
    orientation: ListView.Horizontal
    spacing: Theme.spacing.row
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    reuseItems: true
    // Thumbnails are read for visible frames only.
    cacheBuffer: 0
    model: review
    currentIndex: review.index
    highlightFollowsCurrentItem: true
    highlightMoveDuration: Theme.duration.scroll
    // The current frame is not at the edge, so that the next one is in view.
    highlightRangeMode: ListView.ApplyRange
    preferredHighlightBegin: Math.min(frameWidth + spacing, width / 3)
    preferredHighlightEnd: width - preferredHighlightBegin
    keyNavigationEnabled: false
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: L10n.T("Klipler")
    onActiveFocusChanged: {
        if (activeFocus) {
            telling.restart();
        }
    }
    // The view does not follow by itself when it becomes narrower.
    onWidthChanged: positionViewAtIndex(currentIndex, ListView.Contain)
    Keys.onLeftPressed: review.go(review.index - 1)
    Keys.onRightPressed: review.go(review.index + 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted) {
            review.go(event.key === Qt.Key_Home ? 0 : review.count - 1);
        }
    }

    // Tells screen readers the clip and its answer, after the frame exists.
    Timer {
        id: telling

        interval: 0
        onTriggered: strip.announceCurrent()
    }

    Connections {
        target: strip.review

        function onAnswered() {
            telling.restart();
        }

        function onClipShown() {
            telling.restart();
        }
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const turned = event.angleDelta.y !== 0 ? event.angleDelta.y : event.angleDelta.x;
            const last = Math.max(0, strip.contentWidth - strip.width);
            strip.contentX = Math.max(0, Math.min(strip.contentX - turned, last));
        }
    }

    delegate: FilmstripFrame {
        width: strip.frameWidth
        height: strip.height
        outline: strip.outline
        isCurrent: index === strip.review.index
        showsFocus: isCurrent && strip.activeFocus
        position: `${index + 1} / ${strip.review.count}`
        onChosen: strip.review.go(index)
    }
}
