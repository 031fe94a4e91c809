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

    symbol: "film.stack"
    title: isSearch ? L10n.T("Sonuç bulunamadı") : L10n.T("Henüz klip yok")
    text: isSearch ? "" : L10n.T("Kayıt açıkken {0} tuşlarına basarak son {1} saniyeyi kaydedin.",
                                 [SaveShortcut.text, AppSettings.clipLength])

    KeyCaps {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: !empty.isSearch
        keys: SaveShortcut.keys
        fontSize: Theme.fontSize.body
        // The text says the same.
        Accessible.ignored: true
    }
}
