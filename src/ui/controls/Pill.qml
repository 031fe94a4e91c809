// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// One option of a PillPicker.
T.RadioButton {
    id: pill

    property bool isSelected: false
    property bool isTabStop: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 14
    verticalPadding: 7
    font.pixelSize: Theme.fontSize.label
    font.weight: Font.DemiBold
    focus: isTabStop
    focusPolicy: isTabStop ? Qt.StrongFocus : Qt.ClickFocus
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    autoExclusive: false
    checked: isSelected
    // A click sets `checked`; this binds it to the selection again.
    onToggled: checked = Qt.binding(() => pill.isSelected)
    Accessible.name: text
    // Qt's own actions would set `checked` without a click.
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Accessible.onToggleAction: {
        if (enabled) {
            clicked();
        }
    }

    contentItem: Text {
        text: pill.text
        textFormat: Text.PlainText
        font: pill.font
        color: pill.isSelected ? Theme.onAccent : pill.hovered ? Theme.text : Theme.muted

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }
    }

    background: Rectangle {
        radius: Theme.radius.smallControl
        color: pill.isSelected ? Theme.accent : pill.hovered ? Theme.cardHover : Theme.bg
        border.width: 1
        border.color: pill.isSelected ? color : Theme.border

        Behavior on color {
            ColorAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }

        FocusRing {
            active: pill.visualFocus
            cornerRadius: Theme.radius.smallControl
        }
    }
}
