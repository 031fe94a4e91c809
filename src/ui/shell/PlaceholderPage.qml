// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared

// A page with a symbol, a title, a text and buttons.
FocusScope {
    id: page

    required property string symbol
    required property string title
    property string text: ""
    // Items between the text and the buttons.
    property alias details: between.data
    default property alias actions: buttons.data

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: title

    EmptyState {
        anchors.centerIn: parent
        symbol: page.symbol
        title: L10n.isolated(page.title)
        plainTitle: page.title
        text: page.text

        Column {
            id: between

            width: parent.width
            visible: children.length > 0
        }

        Row {
            id: buttons

            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 6
            spacing: 12
        }
    }
}
