// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// The global shortcut that saves a clip, and what keeps it from working.
SectionCard {
    id: card

    title: L10n.T("Kısayol")
    symbol: "keyboard"

    SettingRow {
        id: row

        title: L10n.T("Klip kaydet kısayolu")
        subtitle: L10n.T("Oyun içindeyken bile çalışır. Değiştirmek için tıklayın, Esc ile iptal.")

        HotkeyRecorderView {
            explanation: row.subtitle
        }
    }

    ShortcutWarning {
        width: card.contentWidth
        visible: text !== ""
    }

    ShortcutCommand {
        width: card.contentWidth
        visible: HotKeyManager.state === GlobalKeyState.ReservedByDesktop
    }
}
