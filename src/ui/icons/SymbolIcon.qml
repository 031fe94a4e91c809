// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Theme

// A symbol in one colour, rendered at the pixel density of the screen. An empty name shows nothing.
Image {
    property string symbol: ""
    property int side: 16
    property color color: Theme.text
    // As of a font. Bold and heavier symbols have wider lines.
    property int weight: Font.Normal

    width: side
    height: side
    sourceSize.width: side
    sourceSize.height: side
    source: symbol === "" ? "" : "image://symbols/" + symbol + "/" + color.toString().slice(-6) + "/" + weight
    Accessible.ignored: true
}
