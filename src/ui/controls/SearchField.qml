// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A line of text to search for. Escape empties it; in an empty field Escape belongs to the screen.
T.TextField {
    id: field

    property string symbol: "magnifyingglass"
    property alias placeholder: field.placeholderText
    readonly property int iconSide: 14
    readonly property bool isFocusedByKeyboard: activeFocus && (focusReason === Qt.TabFocusReason
        || focusReason === Qt.BacktabFocusReason || focusReason === Qt.ShortcutFocusReason)

    implicitWidth: 170
    implicitHeight: contentHeight + topPadding + bottomPadding
    topPadding: 8
    bottomPadding: 8
    leftPadding: 12 + iconSide + 8
    rightPadding: 12
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    font.pixelSize: 13
    selectByMouse: true
    Accessible.name: placeholderText
    Keys.onEscapePressed: event => {
        event.accepted = field.text !== ""
        field.clear()
    }
    // A search holds the keys that would else mean something to the screen.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape && field.text !== ""

    background: Rectangle {
        radius: 6
        color: Theme.panel
        border.width: 1
        border.color: field.activeFocus && !field.isFocusedByKeyboard ? Theme.accent : Theme.border

        SymbolIcon {
            x: 12
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
