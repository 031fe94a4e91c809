// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// One choice of a PillPicker.
T.RadioButton {
    id: pill

    property bool isSelected: false
    property bool isTabStop: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 14
    verticalPadding: 7
    font.pixelSize: 12
    font.weight: Font.DemiBold
    focus: isTabStop
    focusPolicy: isTabStop ? Qt.StrongFocus : Qt.ClickFocus
    opacity: enabled ? 1 : 0.45
    autoExclusive: false
    checked: isSelected
    // A click checks it at once; what counts is the selection.
    onToggled: checked = Qt.binding(() => pill.isSelected)
    Accessible.name: text

    contentItem: Text {
        text: pill.text
        textFormat: Text.PlainText
        font: pill.font
        color: pill.isSelected ? Theme.onAccent : Theme.muted

        Behavior on color {
            ColorAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }
    }

    background: Rectangle {
        radius: 5
        color: pill.isSelected ? Theme.accent : Theme.bg
        border.width: 1
        border.color: pill.isSelected ? color : Theme.border

        Behavior on color {
            ColorAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }

        FocusRing {
            active: pill.visualFocus
            radius: 8
        }
    }
}
