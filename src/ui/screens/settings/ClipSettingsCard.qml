// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

SectionCard {
    title: L10n.T("Klip")
    symbol: "film"
}
