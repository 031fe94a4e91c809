// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell

// Asks whether to quit while clips are exported, and says why the program did not quit after all.
Item {
    ConfirmationDialog {
        visible: QuitQuestion.isAsked
        destructive: true
        title: L10n.T("Dışa aktarma sürerken çıkılsın mı?")
        message: QuitQuestion.exportCount > 1
                 ? L10n.T("{0} dışa aktarma henüz bitmedi. Şimdi çıkarsanız dururlar ve dosyaları silinir.", [QuitQuestion.exportCount])
                 : L10n.T("Bir klip hâlâ dışa aktarılıyor. Şimdi çıkarsanız dışa aktarma durur ve dosyası silinir.")
        cancelText: L10n.T("Bitince Çık")
        confirmText: L10n.T("Yine de Çık")
        onCancelled: QuitQuestion.quitWhenDone()
        onConfirmed: QuitQuestion.quitNow()
        onDismissed: QuitQuestion.dismiss()
    }

    MessageDialog {
        visible: QuitQuestion.failure !== ""
        title: L10n.T("Quelto kapanmadı")
        text: QuitQuestion.failure
        onClosed: QuitQuestion.dismissFailure()
    }
}
