// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// Language, notifications and the start of the program.
SectionCard {
    title: L10n.T("Genel")
    symbol: "slider.horizontal.3"

    DropDownRow {
        title: L10n.T("Dil")
        subtitle: L10n.T("Uygulamanın arayüz dili")
        menuWidth: 180
        choices: SettingsOptions.languages()
        selection: AppSettings.language
        onPicked: language => AppSettings.language = language
    }

    ToggleRow {
        title: L10n.T("Klip kaydedilince ses çal")
        isOn: AppSettings.playSound
        onFlipped: isOn => AppSettings.playSound = isOn
    }

    ToggleRow {
        title: L10n.T("Ekranda bildirim göster")
        subtitle: L10n.T("Oyun üzerinde küçük “Klip kaydedildi” bildirimi")
        isOn: AppSettings.showOverlay
        onFlipped: isOn => AppSettings.showOverlay = isOn
    }

    LaunchAtLogin {
        id: login
    }

    ToggleRow {
        title: L10n.T("Girişte başlat")
        subtitle: L10n.TOnDesktop("Mac açıldığında Quelto otomatik açılsın (uygulama /Applications içinde olmalı)")
        isOn: login.isOn
        busy: login.isBusy
        onFlipped: isOn => login.setOn(isOn)
    }
}
