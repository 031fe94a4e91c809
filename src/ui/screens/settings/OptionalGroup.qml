// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// Items in a column that are shown under a condition. When they disappear while one of them has the keyboard focus, the
// fallback gets it.
FocusScope {
    id: group

    required property bool isShown
    required property Item fallback
    property alias spacing: column.spacing
    default property alias content: column.data

    function handFocusOver() {
        const reason = (Window.activeFocusItem as T.Control)?.focusReason ?? Qt.OtherFocusReason;
        fallback.forceActiveFocus(reason);
    }

    implicitWidth: column.implicitWidth
    implicitHeight: column.implicitHeight
    visible: isShown
    onIsShownChanged: {
        if (!isShown && activeFocus) {
            handFocusOver();
        }
    }

    Column {
        id: column

        width: group.width
        spacing: Theme.spacing.section
    }
}
