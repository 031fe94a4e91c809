// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// Shown in place of the cards: no clips yet, or no search results.
EmptyState {
    id: empty

    property bool isSearch: false
    readonly property bool hasShortcut: HotKeyManager.keys.length > 0

    symbol: "film.stack"
    title: isSearch ? L10n.T("Sonuç bulunamadı") : L10n.T("Henüz klip yok")
    text: {
        if (isSearch)
            return "";
        if (!hasShortcut)
            return L10n.T("Kayıt açıkken son {0} saniyeyi kaydetmek için “{1}” düğmesine basın. Oyundayken de kaydetmek için Ayarlar'daki kısayol bölümüne bakın.",
                          [AppSettings.clipLength, L10n.T("Klip Kaydet")]);
        return L10n.T("Kayıt açıkken {0} tuşlarına basarak son {1} saniyeyi kaydedin.",
                      [HotKeyManager.text, AppSettings.clipLength]);
    }

    KeyCaps {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: !empty.isSearch && empty.hasShortcut
        keys: HotKeyManager.keys
        fontSize: Theme.fontSize.body
        // The text says the same.
        Accessible.ignored: true
    }
}
