// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A modal question before an action. The cancel button has the initial focus. Escape and any other way to close the
// dialog only dismiss it, which is no answer.
ThemedDialog {
    id: dialog

    required property string title
    required property string confirmText
    required property string cancelText
    property string message: ""
    // For screen readers, where `message` has characters that are only for drawing.
    property string plainMessage: message
    property bool destructive: false

    signal confirmed
    signal cancelled
    signal dismissed

    onAboutToShow: internal.isAnswered = false
    onClosed: !internal.isAnswered ? dismissed() : internal.isConfirmed ? confirmed() : cancelled()

    QtObject {
        id: internal

        property bool isAnswered: false
        property bool isConfirmed: false
    }

    contentItem: ConfirmationContent {
        width: dialog.availableWidth
        title: dialog.title
        message: dialog.message
        plainMessage: dialog.plainMessage
        confirmText: dialog.confirmText
        cancelText: dialog.cancelText
        destructive: dialog.destructive
        isAsking: dialog.opened
        onAnswered: yes => {
            internal.isAnswered = true;
            internal.isConfirmed = yes;
            dialog.close();
        }
    }
}
