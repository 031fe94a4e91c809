// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Shared
import Quelto.Shell

// Where the settings are kept. Changing them in here is still to come.
PlaceholderPage {
    symbol: "gearshape.fill"
    title: L10n.T("Ayarlar")
    text: L10n.T("Ayarlar sayfası bir sonraki sürümde geliyor. Şimdilik Quelto'den çıkın, bu dosyayı düzenleyip Quelto'yi yeniden açın:") + "\n\n" + WindowCommands.settingsPath
}
