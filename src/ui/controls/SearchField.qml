// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A search field. Escape clears it; an empty field leaves Escape to the screen.
InputField {
    id: field

    implicitWidth: 170
    symbol: "magnifyingglass"
    Keys.onEscapePressed: event => {
        event.accepted = field.text !== "";
        field.clear();
    }
    // While there is text, Escape is not taken by a shortcut of the screen.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape && field.text !== ""
}
