// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// When and what is recorded.
SectionCard {
    id: card

    title: L10n.T("Kayıt")
    symbol: "record.circle"

    ToggleRow {
        title: L10n.T("Açılışta kaydı başlat")
        subtitle: L10n.T("Uygulama açılınca arka planda tamponlamaya başlar")
        isOn: AppSettings.autoStart
        onFlipped: isOn => AppSettings.autoStart = isOn
    }

    ToggleRow {
        title: L10n.T("İmleci göster")
        isOn: AppSettings.showCursor
        onFlipped: isOn => AppSettings.showCursor = isOn
    }

    DisplayChoices {
        id: displays
    }

    SettingRow {
        visible: displays.areMadeByTheDesktop
        title: L10n.T("Ekran")
        subtitle: L10n.T("Masaüstünün seçtiği ekran")

        AccentButton {
            filled: false
            compact: true
            text: L10n.T("Yeniden Seç")
            Accessible.description: L10n.T("Ekran")
            // While a recording starts, its own dialog may be open.
            enabled: Recorder.state !== CaptureState.Starting
            onClicked: displays.chooseAgain()
        }
    }

    WarningLine {
        width: card.contentWidth
        visible: text !== ""
        text: displays.error
    }

    DropDownRow {
        visible: !displays.areMadeByTheDesktop
        title: L10n.T("Ekran")
        subtitle: L10n.T("Birden fazla monitör varsa kaydedilecek ekran")
        menuWidth: 220
        choices: displays.choices
        selection: displays.selected
        onPicked: display => displays.selected = display
    }
}
