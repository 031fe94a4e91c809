// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

// Asks whether to move a clip to the trash.
ConfirmationDialog {
    id: dialog

    property string path: ""

    signal deleteRequested(string path)

    function ask(path: string, title: string) {
        dialog.path = path;
        message = L10n.isolated(title);
        plainMessage = title;
        open();
    }

    title: L10n.T("Klip çöp kutusuna taşınsın mı?")
    destructive: true
    confirmText: L10n.T("Çöp Kutusuna Taşı")
    cancelText: L10n.T("Vazgeç")
    onConfirmed: deleteRequested(path)
}
