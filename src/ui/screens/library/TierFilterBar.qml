// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Icons
import Quelto.Library
import Quelto.Shared
import Quelto.Theme

// Filters the clips by tier.
Item {
    id: bar

    required property LibraryModel library

    implicitHeight: pills.implicitHeight + 18

    SymbolIcon {
        id: mark

        x: Theme.spacing.page
        anchors.verticalCenter: pills.verticalCenter
        symbol: "line.3.horizontal.decrease"
        side: 16
        color: Theme.muted
    }

    PillPicker {
        id: pills

        x: mark.x + mark.width + 10
        name: L10n.T("Seviye")
        options: bar.library.tierFilters
        selection: bar.library.tierFilter
        labelOf: option => bar.library.tierFilterLabel(option)
        onPicked: option => bar.library.tierFilter = option
    }
}
