// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// An error or a warning. It wraps and is never cut.
Text {
    font.pixelSize: Theme.fontSize.note
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
