// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// What is heard in clips: the system's sound, voice chat and the microphone.
SectionCard {
    id: card

    title: L10n.T("Ses")
    symbol: "speaker.wave.2.fill"

    ToggleRow {
        id: systemSwitch

        title: L10n.T("Sistem sesini kaydet")
        subtitle: L10n.T("Oyun ve uygulama sesleri kliplere eklenir")
        isOn: AppSettings.captureAudio
        onFlipped: isOn => AppSettings.captureAudio = isOn
    }

    OptionalGroup {
        width: card.contentWidth
        isShown: AppSettings.captureAudio
        fallback: systemSwitch.control

        SettingRow {
            title: L10n.T("Sistem sesi seviyesi")

            VolumeSlider {
                name: L10n.T("Sistem sesi seviyesi")
                gain: AppSettings.systemVolume
                onChanged: gain => AppSettings.systemVolume = gain
            }
        }
    }

    ToggleRow {
        title: L10n.T("Sesli sohbeti ayrı kaydet")
        subtitle: Recorder.chatActive ? L10n.T("Discord vb. sesi ayrı kanala alınıyor") : L10n.T("Discord, TeamSpeak, Zoom gibi uygulamaların sesi klipte ayrı bir ses kanalına kaydedilir")
        isOn: AppSettings.captureVoiceChat
        onFlipped: isOn => AppSettings.captureVoiceChat = isOn
    }

    Rectangle {
        width: card.contentWidth
        height: 1
        color: Theme.border
    }

    ToggleRow {
        id: microphoneSwitch

        title: L10n.T("Mikrofonu kaydet")
        subtitle: L10n.T("Açıksa sesiniz de klibe eklenir (sistem sesiyle tek kanalda karıştırılır, Discord'da duyulur)")
        isOn: AppSettings.captureMicrophone
        onFlipped: isOn => AppSettings.captureMicrophone = isOn
    }

    MicrophoneRows {
        width: card.contentWidth
        isShown: AppSettings.captureMicrophone
        fallback: microphoneSwitch.control
    }
}
