// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Why the last save failed, and the button that removes the notice.
RowLayout {
    id: notice

    spacing: Theme.spacing.badge
    visible: SaveFailure.message !== ""

    WarningText {
        readonly property real lineHeight: implicitHeight / lineCount

        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop
        // The cross is in line with the first line.
        Layout.topMargin: Math.max(0, (cross.height - lineHeight) / 2)
        color: Theme.live
        text: SaveFailure.message
    }

    DismissButton {
        id: cross

        Layout.alignment: Qt.AlignTop
        text: L10n.T("Uyarıyı kaldır")
        onClicked: {
            // The button disappears with the notice, so the focus moves on.
            if (cross.activeFocus) {
                cross.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
            }
            SaveFailure.dismiss();
        }
    }
}
