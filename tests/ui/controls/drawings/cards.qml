// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 620
    height: 380
    visible: true
    color: Theme.bg

    SectionCard {
        x: 24
        y: 24
        width: 572
        title: "Klip"
        symbol: "film"

        SettingRow {
            title: "Klip uzunluğu"
            subtitle: "Kısayola bastığınızda geriye dönük kaydedilecek süre"

            PillPicker { options: ["15 sn", "30 sn", "1 dk"]; selection: "30 sn" }
        }

        SettingRow {
            title: "İmleci göster"

            SSToggle { isOn: true }
        }

        SettingRow {
            title: "Mikrofonu kaydet"
            subtitle: "Açıksa sesiniz de klibe eklenir (sistem sesiyle tek kanalda karıştırılır, Discord'da duyulur)"

            SSToggle {}
        }

        SettingRow {
            title: "Kayıt klasörü"
            subtitle: "/home/ada/Videos/Quelto"

            AccentButton { compact: true; filled: false; text: "Klasörde Aç" }
            AccentButton { compact: true; text: "Değiştir…" }
        }
    }
}
