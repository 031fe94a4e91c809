// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// Length and quality of clips, and what they need.
SectionCard {
    id: card

    title: L10n.T("Klip")
    symbol: "film"

    PillRow {
        title: L10n.T("Klip uzunluğu")
        subtitle: L10n.T("Kısayola bastığınızda geriye dönük kaydedilecek süre")
        options: SettingsOptions.clipLengths()
        labelOf: seconds => SettingsOptions.clipLengthLabel(seconds)
        selection: AppSettings.clipLength
        onPicked: seconds => AppSettings.clipLength = seconds
    }

    PillRow {
        title: L10n.T("Çözünürlük")
        subtitle: L10n.T("Ekran bu yüksekliğe ölçeklenir (en-boy oranı korunur)")
        options: SettingsOptions.resolutions()
        labelOf: resolution => SettingsOptions.resolutionLabel(resolution)
        selection: AppSettings.resolution
        onPicked: resolution => AppSettings.resolution = resolution
    }

    PillRow {
        title: L10n.T("Kalite")
        subtitle: L10n.T("Yüksek kalite = daha büyük dosya")
        options: SettingsOptions.qualities()
        labelOf: quality => SettingsOptions.qualityLabel(quality)
        selection: AppSettings.quality
        onPicked: quality => AppSettings.quality = quality
    }

    PillRow {
        title: "FPS"
        subtitle: L10n.TOnDesktop("120 FPS yalnızca ProMotion ekranlarda anlamlıdır")
        options: SettingsOptions.fpsOptions()
        selection: AppSettings.fps
        onPicked: fps => AppSettings.fps = fps
    }

    PillRow {
        title: "Codec"
        subtitle: L10n.T("H.264 Discord'da her yerde oynatılır; HEVC daha küçük dosya üretir")
        options: SettingsOptions.codecs()
        labelOf: codec => SettingsOptions.codecLabel(codec)
        selection: AppSettings.codec
        onPicked: codec => AppSettings.codec = codec
    }

    CaptureEstimates {
        id: estimates
    }

    Flow {
        width: card.contentWidth
        spacing: Theme.spacing.dialog

        Statistic {
            label: L10n.T("Çıktı")
            value: estimates.output
        }

        Statistic {
            label: L10n.T("Bit hızı")
            value: estimates.bitrate
        }

        Statistic {
            label: L10n.T("Tahmini klip boyutu")
            value: estimates.clipSize
        }

        Statistic {
            label: L10n.T("RAM kullanımı")
            value: estimates.memory
        }
    }
}
