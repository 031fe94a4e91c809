// SPDX-License-Identifier: GPL-3.0-or-later
import Quelto.SettingsPage
import Quelto.Shared

// Why a press of the shortcut does nothing, or does more than it should; empty if it works.
WarningLine {
    text: {
        switch (HotKeyManager.state) {
        case GlobalKeyState.Taken:
            return L10n.T("Başka bir program bu kısayolu kullanıyor. Başka bir kısayol seçin.");
        case GlobalKeyState.SwitchesLayout:
            return L10n.T("Bu tuşlar klavye düzenini de değiştirir.");
        case GlobalKeyState.ReservedByDesktop:
            return L10n.T("Masaüstünüz bu kısayolu Quelto'ye vermedi. Masaüstünüzün klavye ayarlarında şu komutu çalıştıran bir kısayol ekleyin:");
        case GlobalKeyState.Unavailable:
            return L10n.T("Bu klavyede bu tuşlar yok. Başka bir kısayol seçin.");
        default:
            return "";
        }
    }
}
