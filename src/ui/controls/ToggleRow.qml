// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A SettingRow with a switch.
SettingRow {
    id: row

    property bool isOn: false
    // As of SSToggle.
    property bool busy: false
    readonly property Item control: toggle

    signal flipped(bool isOn)

    SSToggle {
        id: toggle

        text: row.title
        isOn: row.isOn
        busy: row.busy
        Accessible.description: row.subtitle
        onFlipped: on => row.flipped(on)
    }
}
