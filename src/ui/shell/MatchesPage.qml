// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Shell

// The list of matches. Not implemented yet.
PlaceholderPage {
    symbol: "flag.checkered"
    title: L10n.T("Maç Özetleri")
    text: L10n.T("Bu sayfa bir sonraki sürümde geliyor.")
}
