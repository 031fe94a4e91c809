// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A field for one line of text.
T.TextField {
    id: field

    // At the start of the field; empty for none.
    property string symbol: ""
    property alias placeholder: field.placeholderText
    readonly property int iconSide: 14
    readonly property bool isFocusedByKeyboard: activeFocus && (focusReason === Qt.TabFocusReason
        || focusReason === Qt.BacktabFocusReason || focusReason === Qt.ShortcutFocusReason)

    implicitWidth: 200
    implicitHeight: contentHeight + topPadding + bottomPadding
    topPadding: 8
    bottomPadding: 8
    leftPadding: Theme.spacing.control + (symbol === "" ? 0 : iconSide + Theme.spacing.row)
    rightPadding: Theme.spacing.control
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    font.pixelSize: Theme.fontSize.body
    selectByMouse: true
    Accessible.name: placeholderText

    background: Rectangle {
        radius: Theme.radius.control
        color: Theme.panel
        border.width: 1
        border.color: field.activeFocus && !field.isFocusedByKeyboard ? Theme.accent : Theme.border

        SymbolIcon {
            x: Theme.spacing.control
            anchors.verticalCenter: parent.verticalCenter
            symbol: field.symbol
            side: field.iconSide
            color: Theme.muted
        }

        FocusRing {
            active: field.isFocusedByKeyboard
        }
    }

    Text {
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        visible: field.text === "" && field.preeditText === ""
        verticalAlignment: Text.AlignVCenter
        text: field.placeholderText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.dim
        font: field.font
        Accessible.ignored: true
    }
}
