// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A SettingRow with pills.
SettingRow {
    id: row

    required property var options
    property var selection
    property var labelOf: option => String(option)

    signal picked(var option)

    PillPicker {
        width: Math.min(implicitWidth, row.width)
        name: row.title
        Accessible.description: row.subtitle
        options: row.options
        selection: row.selection
        labelOf: row.labelOf
        onPicked: option => row.picked(option)
    }
}
