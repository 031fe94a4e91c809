// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Theme

// Asks over the whole window before something is done. Escape, or closing it in any other way, is a no; the keyboard
// begins at the button that does nothing.
T.Popup {
    id: dialog

    required property string title
    required property string confirmText
    required property string cancelText
    property string message: ""
    property bool destructive: false
    property bool isConfirmed: false

    signal confirmed
    signal cancelled

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(420, parent ? parent.width - 40 : 420)
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 24
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: isConfirmed = false
    onClosed: isConfirmed ? confirmed() : cancelled()

    T.Overlay.modal: Rectangle {
        color: Qt.alpha(Theme.bg, 0.7)
    }

    background: Rectangle {
        radius: 10
        color: Theme.panel
        border.width: 1
        border.color: Theme.border

        Shadow {
            radius: 28
            offset: 10
            cornerRadius: 10
            color: Qt.alpha(Theme.shadow, 0.5)
        }
    }

    contentItem: ConfirmationBody {
        width: dialog.availableWidth
        title: dialog.title
        message: dialog.message
        confirmText: dialog.confirmText
        cancelText: dialog.cancelText
        destructive: dialog.destructive
        isAsking: dialog.opened
        onAnswered: yes => {
            dialog.isConfirmed = yes
            dialog.close()
        }
    }
}
