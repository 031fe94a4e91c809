// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.Shared

// The menu of a clip.
ThemedMenu {
    id: menu

    property string path: ""

    signal openRequested
    signal deleteRequested

    ThemedMenuItem {
        text: L10n.T("Oynat")
        onTriggered: menu.openRequested()
    }

    ThemedMenuItem {
        text: L10n.T("Dosyayı Kopyala (Discord'a yapıştır)")
        onTriggered: ClipCommands.copy(menu.path)
    }

    ThemedMenuItem {
        text: L10n.TOnDesktop("Finder'da Göster")
        onTriggered: ClipCommands.reveal(menu.path)
    }

    ThemedMenuItem {
        text: L10n.T("Çöp Kutusuna Taşı")
        destructive: true
        onTriggered: menu.deleteRequested()
    }
}
