// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 520
    height: 150
    visible: true
    color: Theme.bg

    PillPicker { x: 24; y: 24; options: ["Tümü", "Efsane", "Orta", "Basit", "Manuel"]; selection: "Tümü" }
    PillPicker {
        x: 24
        y: 64
        objectName: "focus"
        options: ["Tümü", "Efsane", "Orta", "Basit", "Manuel"]
        selection: "Orta"
    }
    PillPicker { x: 24; y: 104; options: [30, 60]; labelOf: fps => fps + " FPS"; selection: 60; enabled: false }
}
