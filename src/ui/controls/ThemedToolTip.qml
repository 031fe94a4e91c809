// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A tool tip for its parent. Its popup exists only while the pointer is there, because most items of a list never show
// theirs.
Item {
    id: area

    property string text: ""

    anchors.fill: parent

    HoverHandler {
        id: pointer
    }

    Loader {
        active: pointer.hovered && area.text !== ""
        source: "ToolTipPopup.qml"
        onLoaded: {
            const popup = item as ToolTipPopup;
            popup.parent = area;
            popup.text = Qt.binding(() => area.text);
            popup.open();
        }
    }
}
