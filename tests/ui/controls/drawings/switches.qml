// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 420
    height: 120
    visible: true
    color: Theme.bg

    Row {
        x: 24
        y: 40
        spacing: 24

        SSToggle { isOn: true }
        SSToggle { isOn: false }
        SSToggle { isOn: true; enabled: false }
        SSToggle { isOn: false; enabled: false }
        SSToggle { isOn: true; objectName: "focus" }
        SSToggle { isOn: true; scale: 0.85 }
    }
}
