// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A computed value, and above it what it is.
Column {
    id: statistic

    required property string label
    required property string value

    spacing: Theme.spacing.lines
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + value

    Text {
        text: TextCase.upper(statistic.label)
        textFormat: Text.PlainText
        color: Theme.dim
        font.pixelSize: Theme.fontSize.statisticLabel
        font.weight: Font.Bold
        font.letterSpacing: 1.1
        Accessible.ignored: true
    }

    Text {
        text: statistic.value
        textFormat: Text.PlainText
        color: Theme.accent
        font.pixelSize: Theme.fontSize.statistic
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
