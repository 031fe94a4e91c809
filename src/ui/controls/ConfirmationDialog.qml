// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// A modal question before an action. The cancel button has the initial focus. Escape and any other way to close the
// dialog only dismiss it, which is no answer.
T.Popup {
    id: dialog

    required property string title
    required property string confirmText
    required property string cancelText
    property string message: ""
    // For screen readers, where `message` has characters that are only for drawing.
    property string plainMessage: message
    property bool destructive: false
    readonly property real widest: 420

    signal confirmed
    signal cancelled
    signal dismissed

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(widest, parent.width - 40) : widest
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: Theme.spacing.dialog
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: internal.isAnswered = false
    onClosed: !internal.isAnswered ? dismissed() : internal.isConfirmed ? confirmed() : cancelled()

    QtObject {
        id: internal

        property bool isAnswered: false
        property bool isConfirmed: false
    }

    T.Overlay.modal: Rectangle {
        color: Qt.alpha(Theme.bg, 0.7)
    }

    background: Rectangle {
        radius: Theme.radius.panel
        color: Theme.panel
        border.width: 1
        border.color: Theme.border

        Shadow {
            radius: 28
            offset: 10
            cornerRadius: Theme.radius.panel
            color: Qt.alpha(Theme.shadow, 0.5)
        }
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
