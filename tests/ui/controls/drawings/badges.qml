// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Controls
import Quelto.Theme

Window {
    width: 520
    height: 90
    visible: true
    color: Theme.bg

    Row {
        x: 24
        y: 32
        spacing: 24

        TierBadge { tier: "EFSANE"; label: "Efsane"; score: 170 }
        TierBadge { tier: "ORTA"; label: "Orta"; score: 42 }
        TierBadge { tier: "BASIT"; label: "Basit"; score: 0 }
        TierBadge { tier: "BASIT"; label: "Basit" }
    }
}
