// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.ClipPage
import Quelto.Controls

// Asks for a new title.
ThemedDialog {
    id: dialog

    readonly property RenameContent content: contentItem as RenameContent

    signal accepted(string title)

    function ask(title: string) {
        content.title = title;
        open();
    }

    onOpened: content.start()

    contentItem: RenameContent {
        width: dialog.availableWidth
        onCancelled: dialog.close()
        onAccepted: {
            dialog.close();
            dialog.accepted(title);
        }
    }
}
