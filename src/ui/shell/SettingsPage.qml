// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// Shows the path of the settings file. Settings screens are not implemented yet.
PlaceholderPage {
    symbol: "gearshape.fill"
    title: L10n.T("Ayarlar")
    text: L10n.T("Ayarlar sayfası bir sonraki sürümde geliyor. Şimdilik Quelto'den çıkın, bu dosyayı düzenleyip Quelto'yi yeniden açın:") + "\n\n" + WindowCommands.settingsPath
}
