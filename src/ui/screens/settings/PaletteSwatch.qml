// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A small picture of the window in the colours of a palette, with its name below.
T.RadioButton {
    id: swatch

    // As SettingsOptions.palettes() describes it.
    required property var palette
    required property bool isSelected
    required property bool isTabStop
    readonly property real pictureHeight: 72
    readonly property real stripWidth: 26

    implicitHeight: pictureHeight + Theme.spacing.row + name.implicitHeight
    text: palette.name
    hoverEnabled: true
    autoExclusive: false
    focusPolicy: isTabStop ? Qt.StrongFocus : Qt.ClickFocus
    checked: isSelected
    // A click sets `checked`; this binds it to the selection again.
    onToggled: checked = Qt.binding(() => swatch.isSelected)
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
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: swatch.clicked()
    }

    Backdrop {
        id: picture

        width: swatch.width
        height: swatch.pictureHeight
        radius: Theme.radius.card
        plainColor: swatch.palette.bg
        colors: swatch.palette.gradient

        // Shows the left part of a rectangle, which has round corners only there.
        Item {
            width: swatch.stripWidth
            height: parent.height
            clip: true

            Rectangle {
                width: parent.width + picture.radius
                height: parent.height
                radius: picture.radius
                color: swatch.palette.sidebar
            }
        }

        Column {
            id: bars

            x: swatch.stripWidth + Theme.spacing.row
            y: Theme.spacing.row
            width: parent.width - x - Theme.spacing.row
            spacing: 5

            PaletteBar {
                width: bars.width
                color: swatch.palette.panel
            }

            PaletteBar {
                width: 50
                color: swatch.palette.accent
            }

            PaletteBar {
                width: 38
                color: swatch.palette.muted
            }
        }

        SymbolIcon {
            anchors.top: parent.top
            anchors.right: parent.right
            anchors.margins: 6
            visible: swatch.isSelected
            symbol: "checkmark.circle.fill"
            side: 20
            weight: Font.Bold
            color: Theme.onAccent
        }

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: swatch.isSelected ? 2.5 : 1
            border.color: swatch.isSelected ? swatch.palette.accent : swatch.hovered ? Theme.muted : Theme.border
        }

        FocusRing {
            active: swatch.visualFocus
            cornerRadius: Theme.radius.card
        }
    }

    Text {
        id: name

        anchors.top: picture.bottom
        anchors.topMargin: Theme.spacing.row
        width: swatch.width
        text: swatch.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: swatch.isSelected || swatch.hovered ? Theme.text : Theme.muted
        font.pixelSize: Theme.fontSize.label
        font.weight: swatch.isSelected ? Font.Bold : Font.Medium
    }
}
