// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 460
    height: 260
    visible: true
    color: Theme.bg

    Backdrop {
        anchors.fill: parent

        ThemedMenu {
            x: 40
            y: 30
            Component.onCompleted: {
                open();
                currentIndex = 1;
            }

            ThemedMenuItem { text: "Oynat" }
            ThemedMenuItem { text: "Dosyayı Kopyala (Discord'a yapıştır)" }
            ThemedMenuItem { text: "Finder'da Göster"; enabled: false }
            ThemedMenuItem { text: "Çöp Kutusuna Taşı"; destructive: true }
        }
    }
}
