// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The matches that were played. Showing them is still to come.
PlaceholderPage {
    symbol: "flag.checkered"
    title: L10n.T("Maç Özetleri")
    text: L10n.T("Bu sayfa bir sonraki sürümde geliyor.")
}
