// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A modal question before an action, or between two actions. The cancel button has the initial focus. Escape, like any
// other way to close the dialog, means no action.
ThemedDialog {
    id: dialog

    required property string title
    required property string confirmText
    required property string cancelText
    property string alternativeText: ""
    property string message: ""
    // For screen readers, where `message` has characters that are only for drawing.
    property string plainMessage: message
    property bool destructive: false

    signal confirmed
    signal alternativeChosen
    signal cancelled
    signal dismissed

    onAboutToShow: internal.answer = ConfirmationContent.None
    onClosed: internal.signals[internal.answer]()

    QtObject {
        id: internal

        property int answer: ConfirmationContent.None
        readonly property var signals: ({
                [ConfirmationContent.None]: dialog.dismissed,
                [ConfirmationContent.Cancel]: dialog.cancelled,
                [ConfirmationContent.Alternative]: dialog.alternativeChosen,
                [ConfirmationContent.Confirm]: dialog.confirmed
            })
    }

    contentItem: ConfirmationContent {
        width: dialog.availableWidth
        title: dialog.title
        message: dialog.message
        plainMessage: dialog.plainMessage
        confirmText: dialog.confirmText
        alternativeText: dialog.alternativeText
        cancelText: dialog.cancelText
        destructive: dialog.destructive
        isAsking: dialog.opened
        onAnswered: answer => {
            internal.answer = answer;
            dialog.close();
        }
    }
}
