// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 640
    height: 360
    visible: true
    color: Theme.bg

    Backdrop { anchors.fill: parent }
    GhostButton { x: 30; y: 30; text: "Kırp" }
    ConfirmationDialog {
        visible: true
        destructive: true
        title: "Klip çöp kutusuna taşınsın mı?"
        message: "PENTAKILL (Ahri)"
        confirmText: "Çöp Kutusuna Taşı"
        cancelText: "Vazgeç"
    }
}
