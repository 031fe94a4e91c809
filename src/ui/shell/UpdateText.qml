// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// A line with a version number. The number comes from outside of the program, so the text has a limit.
Text {
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    maximumLineCount: 2
    elide: Text.ElideRight
}
