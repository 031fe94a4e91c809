// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

// The settings: a sidebar of sections, and one long page of cards.
FocusScope {
    id: page

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: L10n.T("Ayarlar")

    EmptyState {
        anchors.centerIn: parent
        symbol: "gearshape.fill"
        title: L10n.T("Ayarlar")
    }
}
