// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Matches
import Quelto.Theme

// A match in the list. A click opens it. A running match has a live mark and no actions.
T.ItemDelegate {
    id: row

    required property int index
    required property string symbol
    required property string title
    required property string subtitle
    required property bool isLive
    // Empty for a running match.
    required property string matchId
    property bool isTabStop: false
    // Its menu is open.
    property bool hasMenu: false
    property bool showsFocus: visualFocus
    readonly property bool isMarked: !isLive && (hovered || hasMenu)

    signal openRequested
    signal deleteRequested
    signal menuRequested(at: point)

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.spacing.card
    hoverEnabled: true
    focusPolicy: isTabStop ? Qt.TabFocus : Qt.NoFocus
    // In Qt 6.4 a Control always has the role of its template.
    Accessible.name: title + ", " + subtitle
    Accessible.onPressAction: row.clicked()
    Keys.forwardTo: [actionKeys]
    onClicked: {
        if (!row.isLive) {
            row.openRequested();
        }
    }

    ActionKeys {
        id: actionKeys

        onActed: row.clicked()
    }

    contentItem: MatchRowContent {
        symbol: row.symbol
        title: row.title
        subtitle: row.subtitle
        isLive: row.isLive
        isMarked: row.isMarked
        isTabStop: row.isTabStop
        onDeleteRequested: row.deleteRequested()
    }

    background: Rectangle {
        radius: Theme.radius.card
        color: row.isMarked ? Theme.cardHover : Theme.card
        border.width: 1
        border.color: row.isMarked ? Qt.alpha(Theme.accent, 0.7) : Theme.border

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }

        Behavior on border.color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }

        FocusRing {
            active: row.showsFocus
            cornerRadius: Theme.radius.card
        }

        // A handler that is a direct child of a button would let the right button click it.
        TapHandler {
            enabled: !row.isLive
            acceptedButtons: Qt.RightButton
            gesturePolicy: TapHandler.WithinBounds
            onPressedChanged: {
                if (pressed) {
                    row.menuRequested(point.position);
                }
            }
        }
    }
}
