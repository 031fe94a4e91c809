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

    function hasOpenMenu(): bool {
        for (let i = 0; i < count; ++i) {
            if (menuAt(i).visible) {
                return true;
            }
        }
        return false;
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
        ShortcutAction {
            text: L10n.T("Ayarlar…")
            keys: "Ctrl+,"
            onTriggered: Navigation.showSettings()
        }
        ThemedMenuSeparator {}
        ShortcutAction {
            text: L10n.T("Quelto'yi Gizle")
            keys: "Ctrl+H"
            onTriggered: WindowCommands.hide()
        }
        ThemedMenuSeparator {}
        ShortcutAction {
            text: L10n.T("Quelto'den Çık")
            keys: "Ctrl+Q"
            onTriggered: WindowCommands.quit()
        }
    }

    ThemedMenu {
        title: L10n.T("Dosya")

        ShortcutAction {
            text: L10n.T("Klip Kaydet")
            keys: "Ctrl+S"
            onTriggered: Recorder.saveClip()
        }
        ShortcutAction {
            text: L10n.T("Kaydı Başlat / Durdur")
            keys: "Ctrl+R"
            onTriggered: Recorder.toggle()
        }
        ShortcutAction {
            text: L10n.T("Klip Klasörünü Aç")
            keys: "Ctrl+O"
            onTriggered: WindowCommands.openFolder()
        }
    }

    ThemedMenu {
        title: L10n.T("Düzen")

        ShortcutAction {
            text: L10n.T("Geri Al")
            keys: "Ctrl+Z"
            onTriggered: WindowCommands.edit("undo", bar.target)
        }
        ThemedMenuSeparator {}
        ShortcutAction {
            text: L10n.T("Kes")
            keys: "Ctrl+X"
            onTriggered: WindowCommands.edit("cut", bar.target)
        }
        ShortcutAction {
            text: L10n.T("Kopyala")
            keys: "Ctrl+C"
            onTriggered: WindowCommands.edit("copy", bar.target)
        }
        ShortcutAction {
            text: L10n.T("Yapıştır")
            keys: "Ctrl+V"
            onTriggered: WindowCommands.edit("paste", bar.target)
        }
        ShortcutAction {
            text: L10n.T("Tümünü Seç")
            keys: "Ctrl+A"
            onTriggered: WindowCommands.edit("selectAll", bar.target)
        }
    }

    ThemedMenu {
        title: L10n.T("Pencere")

        ShortcutAction {
            text: L10n.T("Küçült")
            keys: "Ctrl+M"
            onTriggered: WindowCommands.minimize()
        }
        ShortcutAction {
            text: L10n.T("Kapat")
            keys: "Ctrl+W"
            onTriggered: WindowCommands.close()
        }
    }
}
