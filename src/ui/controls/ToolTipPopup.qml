// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// The popup of a ThemedToolTip, above its parent.
T.ToolTip {
    id: tip

    readonly property real widest: 420

    x: ((parent?.width ?? 0) - width) / 2
    y: -height - 4
    implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, widest)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    horizontalPadding: 8
    verticalPadding: 5
    delay: Theme.duration.toolTipDelay
    contentItem: Text {
        text: tip.text
        color: Theme.text
        font.pixelSize: Theme.fontSize.caption
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: Theme.radius.smallControl
        color: Theme.card
        border.width: 1
        border.color: Theme.border
    }
}
