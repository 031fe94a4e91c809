// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Quelto.Theme

// One symbol of the icon set in one colour, sharp at every scale of the screen.
Image {
    property string symbol: ""
    property int side: 16
    property color color: Theme.text

    width: side
    height: side
    sourceSize.width: side * Screen.devicePixelRatio
    sourceSize.height: side * Screen.devicePixelRatio
    source: symbol === "" ? "" : "image://symbols/" + symbol + "/" + color.toString().slice(-6)
    Accessible.ignored: true
}
