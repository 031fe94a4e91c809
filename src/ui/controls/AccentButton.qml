// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A button that carries the screen's main action, filled, or a lesser one, outlined. In a layout it takes the whole
// width unless it is compact.
T.AbstractButton {
    id: button

    property bool filled: true
    property bool compact: false
    // What it does cannot be taken back.
    property bool destructive: false
    // At work: it shows so, and where it is disabled meanwhile it is not dimmed.
    property bool busy: false
    property string symbol: ""
    property string trailingText: ""
    readonly property color foreground: filled ? Theme.onAccent : destructive ? Theme.live : Theme.text
    readonly property color fill: !filled ? (down || hovered ? Theme.cardHover : Theme.card)
                                  : destructive ? (down ? Qt.darker(Theme.live, 1.2) : Theme.live)
                                  : down ? Theme.accentDark : Theme.accent

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 44)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: compact ? 12 : 16
    verticalPadding: compact ? 7 : 10
    font.pixelSize: compact ? 12 : 13
    font.weight: Font.DemiBold
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled || busy ? 1 : 0.45
    Layout.fillWidth: !compact
    Accessible.name: text
    Keys.onReturnPressed: event => button.actOn(event)
    Keys.onEnterPressed: event => button.actOn(event)

    function actOn(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            button.clicked()
        }
    }

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        trailingText: button.trailingText
        busy: button.busy
        gap: 8
        canShrink: true
        isCentered: button.trailingText === ""
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: 6
        color: button.fill
        border.width: button.filled ? 0 : 1
        border.color: Theme.border

        FocusRing {
            active: button.visualFocus
        }
    }
}
