// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 640
    height: 320
    visible: true
    color: Theme.bg

    Grid {
        x: 24
        y: 24
        columns: 4
        spacing: 16

        AccentButton { text: "Klip Kaydet" }
        AccentButton { text: "Klip Kaydet"; down: true }
        AccentButton { text: "Klip Kaydet"; enabled: false }
        AccentButton { text: "Klip Kaydet"; destructive: true }
        AccentButton { text: "Klasör"; filled: false }
        AccentButton { text: "Klasör"; filled: false; down: true }
        AccentButton { text: "Klasör"; filled: false; enabled: false }
        AccentButton { text: "Klasör"; filled: false; destructive: true }
        AccentButton { text: "Klasör"; compact: true; filled: false; symbol: "folder" }
        AccentButton { text: "Kırp"; compact: true; symbol: "scissors" }
        AccentButton { text: "Kırp"; compact: true; busy: true; enabled: false; symbol: "scissors" }
        AccentButton { text: "Klasör"; compact: true; objectName: "focus" }
        GhostButton { text: "Kırp" }
        GhostButton { text: "Kırp"; down: true }
        GhostButton { text: "Kırp"; enabled: false }
        GhostButton { text: "Çöp Kutusuna Taşı"; destructive: true; symbol: "trash" }
    }

    KeyCaps { x: 24; y: 258; keys: ["Alt", "Shift", "C"] }
    KeyCaps { x: 140; y: 255; keys: ["Strg", "↑"]; fontSize: Theme.fontSize.body }
    AccentButton { x: 300; y: 250; width: 200; text: "In den Papierkorb verschieben und noch mehr"; symbol: "scissors" }
}
