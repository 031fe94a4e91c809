// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell

// The menu bar, with the usual shortcuts of the desktop.
MenuBar {
    id: bar

    // The item that had the focus before the menu bar.
    property Item target: null

    signal aboutRequested

    // Returns the focus to the target.
    function leave() {
        if (target) {
            target.forceActiveFocus(Qt.MenuBarFocusReason);
        }
    }

    // Returns the focus after an entry was triggered by key, unless the action moved the focus itself.
    function leaveTitles() {
        for (let i = 0; i < count; ++i) {
            if (itemAt(i).activeFocus) {
                leave();
            }
        }
    }

    // Moves the focus along the titles; wraps at both ends.
    function go(title: Item, step: int) {
        for (let i = 0; i < count; ++i) {
            if (itemAt(i) === title) {
                itemAt((i + step + count) % count).forceActiveFocus(Qt.MenuBarFocusReason);
                return;
            }
        }
    }

    delegate: MainMenuTitle {}
    background: null
    Component.onCompleted: {
        for (let i = 0; i < count; ++i) {
            const menu = menuAt(i);
            for (let k = 0; k < menu.count; ++k) {
                const entry = menu.itemAt(k) as ThemedMenuItem;
                entry?.triggered.connect(() => Qt.callLater(bar.leaveTitles));
            }
        }
    }

    Shortcut {
        sequence: "F10"
        onActivated: bar.itemAt(0).forceActiveFocus(Qt.MenuBarFocusReason)
    }

    ThemedMenu {
        title: "Quelto"

        Action {
            text: L10n.T("Quelto Hakkında")
            onTriggered: bar.aboutRequested()
        }
        ThemedMenuSeparator {}
        Action {
            text: L10n.T("Ayarlar…")
            shortcut: "Ctrl+,"
            onTriggered: Navigation.showSettings()
        }
        ThemedMenuSeparator {}
        Action {
            text: L10n.T("Quelto'yi Gizle")
            shortcut: "Ctrl+H"
            onTriggered: WindowCommands.hide()
        }
        ThemedMenuSeparator {}
        Action {
            text: L10n.T("Quelto'den Çık")
            shortcut: "Ctrl+Q"
            onTriggered: WindowCommands.quit()
        }
    }

    ThemedMenu {
        title: L10n.T("Dosya")

        Action {
            text: L10n.T("Klip Kaydet")
            shortcut: "Ctrl+S"
            onTriggered: Recorder.saveClip()
        }
        Action {
            text: L10n.T("Kaydı Başlat / Durdur")
            shortcut: "Ctrl+R"
            onTriggered: Recorder.toggle()
        }
        Action {
            text: L10n.T("Klip Klasörünü Aç")
            shortcut: "Ctrl+O"
            onTriggered: WindowCommands.openFolder()
        }
    }

    ThemedMenu {
        title: L10n.T("Düzen")

        Action {
            text: L10n.T("Geri Al")
            shortcut: "Ctrl+Z"
            onTriggered: WindowCommands.edit("undo", bar.target)
        }
        ThemedMenuSeparator {}
        Action {
            text: L10n.T("Kes")
            shortcut: "Ctrl+X"
            onTriggered: WindowCommands.edit("cut", bar.target)
        }
        Action {
            text: L10n.T("Kopyala")
            shortcut: "Ctrl+C"
            onTriggered: WindowCommands.edit("copy", bar.target)
        }
        Action {
            text: L10n.T("Yapıştır")
            shortcut: "Ctrl+V"
            onTriggered: WindowCommands.edit("paste", bar.target)
        }
        Action {
            text: L10n.T("Tümünü Seç")
            shortcut: "Ctrl+A"
            onTriggered: WindowCommands.edit("selectAll", bar.target)
        }
    }

    ThemedMenu {
        title: L10n.T("Pencere")

        Action {
            text: L10n.T("Küçült")
            shortcut: "Ctrl+M"
            onTriggered: WindowCommands.minimize()
        }
        Action {
            text: L10n.T("Kapat")
            shortcut: "Ctrl+W"
            onTriggered: WindowCommands.close()
        }
    }
}
