// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared

// Which microphone is recorded, how loud, and whether it works.
OptionalGroup {
    id: rows

    SettingRow {
        title: L10n.T("Mikrofon")

        ThemedDropDown {
            id: menu

            width: 240
            name: L10n.T("Mikrofon")
            choices: microphones.choices
            selection: AppSettings.microphoneID
            onPicked: value => AppSettings.microphoneID = value

            MicrophoneChoices {
                id: microphones
            }

            Connections {
                target: menu.popup

                // A device may have been connected since.
                function onAboutToShow() {
                    microphones.refresh();
                }
            }
        }
    }

    SettingRow {
        title: L10n.T("Mikrofon seviyesi")

        VolumeSlider {
            name: L10n.T("Mikrofon seviyesi")
            gain: AppSettings.micVolume
            onChanged: gain => AppSettings.micVolume = gain
        }
    }

    SettingRow {
        id: levelRow

        title: L10n.T("Canlı seviye")
        subtitle: Recorder.micActive ? L10n.T("Konuşun — çubuk hareket ediyorsa mikrofon kaydediliyor") : L10n.T("Kayıt açıkken mikrofon seviyesi burada görünür")

        LevelMeter {
            readonly property bool isOnScreen: visible && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized

            name: L10n.T("Canlı seviye")
            level: isOnScreen ? Recorder.micLevel : 0
            Accessible.description: levelRow.subtitle
        }
    }

    OptionalGroup {
        width: rows.width
        isShown: Recorder.micWarning !== ""
        fallback: menu

        MicrophoneWarning {
            width: rows.width
        }
    }
}
