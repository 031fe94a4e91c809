// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Shared

// Stands where the cards would be, and says how to get some.
EmptyState {
    property bool isSearch: false

    symbol: "film.stack"
    title: isSearch ? L10n.T("Sonuç bulunamadı") : L10n.T("Henüz klip yok")
    text: isSearch ? "" : L10n.T("Kayıt açıkken {0} tuşlarına basarak son {1} saniyeyi kaydedin.",
                                 [AppSettings.hotkeyDisplay, AppSettings.clipLength])
}
