// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// The global shortcut that saves a clip, and what keeps it from working.
SectionCard {
    id: card

    readonly property bool isReserved: HotKeyManager.state === GlobalKeyState.ReservedByDesktop

    title: L10n.T("Kısayol")
    symbol: "keyboard"

    SettingRow {
        id: row

        title: L10n.T("Klip kaydet kısayolu")
        subtitle: card.isReserved ? L10n.T("Değiştirmek için tıklayın, Esc ile iptal.")
                                  : L10n.T("Oyun içindeyken bile çalışır. Değiştirmek için tıklayın, Esc ile iptal.")

        HotkeyRecorderView {
            explanation: row.subtitle
        }
    }

    CardParagraph {
        width: card.contentWidth
        visible: HotKeyManager.hasOtherKeys
        text: L10n.T("Masaüstünüz {0} yerine {1} tuşlarını kullanıyor. Bunu masaüstünüzün klavye ayarlarından değiştirebilirsiniz.",
                     [HotKeyManager.preferredText, HotKeyManager.text])
    }

    ShortcutWarning {
        width: card.contentWidth
        visible: text !== ""
    }

    ShortcutCommand {
        width: card.contentWidth
        visible: card.isReserved
    }
}
