// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Icons
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// Why a press of the shortcut does nothing, or does more than it should; empty if it works.
Item {
    id: warning

    readonly property string text: {
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

    implicitHeight: Math.max(sign.height, label.implicitHeight)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
    Accessible.ignored: !visible

    SymbolIcon {
        id: sign

        symbol: "exclamationmark.triangle.fill"
        side: 14
        color: Theme.live
    }

    Text {
        id: label

        x: sign.width + Theme.spacing.row
        width: warning.width - x
        text: warning.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.fontSize.caption
        Accessible.ignored: true
    }
}
