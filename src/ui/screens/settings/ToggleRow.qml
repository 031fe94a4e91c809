// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A setting that is on or off. It shows the value that it is bound to and emits flipped() for the owner to change it.
SettingRow {
    id: row

    required property bool isOn
    readonly property Item control: toggle

    signal flipped(bool isOn)

    SSToggle {
        id: toggle

        text: row.title
        isOn: row.isOn
        Accessible.description: row.subtitle
        onFlipped: isOn => row.flipped(isOn)
    }
}
