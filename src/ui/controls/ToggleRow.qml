// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A SettingRow with a switch.
SettingRow {
    id: row

    property bool isOn: false

    signal flipped(bool isOn)

    SSToggle {
        text: row.title
        isOn: row.isOn
        onFlipped: on => row.flipped(on)
    }
}
