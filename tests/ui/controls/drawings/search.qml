// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 460
    height: 110
    visible: true
    color: Theme.bg

    Row {
        x: 24
        y: 36
        spacing: 24

        SearchField { placeholder: "Ara" }
        SearchField { placeholder: "Ara"; text: "penta"; objectName: "focus" }
    }
}
