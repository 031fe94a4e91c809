// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A SettingRow with a menu.
SettingRow {
    id: row

    required property var choices
    property var selection
    property real menuWidth: 220

    signal picked(var value)

    ThemedDropDown {
        width: row.menuWidth
        name: row.title
        explanation: row.subtitle
        choices: row.choices
        selection: row.selection
        onPicked: value => row.picked(value)
    }
}
