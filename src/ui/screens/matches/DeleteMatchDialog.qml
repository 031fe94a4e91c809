// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

// Asks whether to delete a match recap, with or without its clips. The clips go to the trash.
ConfirmationDialog {
    id: dialog

    signal deleteRecapRequested
    signal deleteAllRequested

    title: L10n.T("Bu maç özeti silinsin mi?")
    message: L10n.T("Silinen klipler Çöp Kutusu'na gider, oradan geri alınabilir.")
    alternativeText: L10n.T("Sadece özeti sil (klipler kalır)")
    confirmText: L10n.T("Özeti ve kliplerini sil")
    cancelText: L10n.T("Vazgeç")
    destructive: true
    onAlternativeChosen: dialog.deleteRecapRequested()
    onConfirmed: dialog.deleteAllRequested()
}
