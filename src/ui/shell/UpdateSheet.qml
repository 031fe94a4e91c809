// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import Quelto.Controls
import Quelto.Shell

// Offers the page of a newer version. Escape means later.
ThemedDialog {
    id: sheet

    // Between the sheet and the edges of the window.
    readonly property real margin: 20

    widest: 440
    visible: UpdateChecker.showSheet && UpdateChecker.version !== ""
    onClosed: UpdateChecker.showSheet = false

    contentItem: UpdateSheetContent {
        width: sheet.availableWidth
        highest: (sheet.parent?.height ?? 0) - 2 * (sheet.margin + sheet.padding)
        isOpen: sheet.opened
        onLaterRequested: sheet.close()
    }
}
