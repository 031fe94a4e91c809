// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A button: filled for the main action of a screen, outlined for other actions. In a layout it takes the full width
// unless it is compact.
T.AbstractButton {
    id: button

    property bool filled: true
    property bool compact: false
    // The action removes something.
    property bool destructive: false
    // Shows a spinner in place of the symbol. A busy button is not dimmed while it is disabled.
    property bool busy: false
    property string symbol: ""
    readonly property real minimumWidth: 44
    readonly property color idleFill: destructive ? Theme.live : Theme.accent
    readonly property color pressedFill: destructive ? Qt.darker(Theme.live, 1.2) : Theme.accentDark
    readonly property color foreground: filled ? Theme.onAccent : destructive ? Theme.live : Theme.text
    // Qt also sets `hovered` of a disabled control.
    readonly property bool isUnderPointer: hovered && enabled
    readonly property color fill: !filled ? (down || isUnderPointer ? Theme.cardHover : Theme.card)
                                  : down ? pressedFill : isUnderPointer ? Qt.tint(idleFill, Qt.alpha(pressedFill, 0.5)) : idleFill

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, minimumWidth)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: compact ? Theme.spacing.control : 16
    verticalPadding: compact ? 7 : 10
    font.pixelSize: compact ? Theme.fontSize.label : Theme.fontSize.body
    font.weight: Font.DemiBold
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled || busy ? 1 : Theme.disabledOpacity
    Layout.fillWidth: !compact
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: button.clicked()
    }

    contentItem: ButtonLabel {
        symbol: button.symbol
        text: button.text
        busy: button.busy
        canShrink: true
        isCentered: true
        font: button.font
        color: button.foreground
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: button.fill
        border.width: button.filled ? 0 : 1
        border.color: Theme.border

        FocusRing {
            active: button.visualFocus
        }
    }
}
