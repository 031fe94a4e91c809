// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// A sentence that something is wrong. It wraps; nothing of it is cut off.
Text {
    font.pixelSize: 10
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
