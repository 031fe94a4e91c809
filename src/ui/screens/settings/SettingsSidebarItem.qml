// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A section in the settings' sidebar. A tab for screen readers; Qt takes the role of a control from its type.
T.TabButton {
    id: row

    required property string symbol
    required property bool active
    required property bool isTabStop
    // From the top of the list. Units: logical pixels.
    required property real topEdge
    readonly property real symbolColumn: 16

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: Theme.spacing.sidebar
    verticalPadding: 7
    hoverEnabled: true
    checkable: false
    autoExclusive: false
    focusPolicy: isTabStop ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: active
    Accessible.onPressAction: {
        if (enabled) {
            clicked();
        }
    }
    Keys.forwardTo: [actionKeys]

    ActionKeys {
        id: actionKeys

        onActed: row.clicked()
    }

    contentItem: RowLayout {
        spacing: Theme.spacing.row

        SymbolIcon {
            Layout.preferredWidth: row.symbolColumn
            symbol: row.symbol
            color: row.active ? Theme.accent : Theme.muted
        }

        Text {
            Layout.fillWidth: true
            text: row.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: row.active || row.hovered ? Theme.text : Theme.muted
            font.pixelSize: Theme.fontSize.body
            font.weight: row.active ? Font.DemiBold : Font.Medium
        }
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: Theme.card
        opacity: row.hovered && !row.active ? 0.6 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.duration.highlight
                easing.type: Easing.OutQuad
            }
        }
    }

    FocusRing {
        active: row.visualFocus
        gap: 0
    }
}
