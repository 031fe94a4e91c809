// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Shared
import Quelto.Theme

// The technical data of the clip. A narrow page shows it in several lines.
Flow {
    id: row

    required property ClipDetail clip

    spacing: Theme.spacing.stack

    InfoItem {
        label: L10n.T("Süre")
        value: row.clip.durationText
    }

    InfoItem {
        label: L10n.T("Çözünürlük")
        value: row.clip.resolutionText
    }

    InfoItem {
        label: "FPS"
        value: row.clip.fpsText
    }

    InfoItem {
        label: L10n.T("Boyut")
        value: row.clip.sizeText
    }

    InfoItem {
        label: L10n.T("Tarih")
        value: row.clip.dateText
    }
}
