// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// The toast: a short text at the bottom of the page.
Item {
    id: toast

    readonly property real padding: 18
    // From the edges of the page.
    readonly property real distance: 24

    anchors.fill: parent
    clip: true

    QtObject {
        id: internal

        readonly property bool isShown: Navigation.toast !== ""
        // The last text, which stays while the toast leaves.
        property string text: ""
    }

    Binding {
        target: internal
        property: "text"
        value: Navigation.toast
        when: internal.isShown
        restoreMode: Binding.RestoreNone
    }

    Rectangle {
        id: capsule

        width: Math.min(label.implicitWidth + 2 * toast.padding, toast.width - 2 * toast.distance)
        height: label.height + 22
        radius: height / 2
        anchors.horizontalCenter: parent.horizontalCenter
        y: internal.isShown ? toast.height - height - toast.distance : toast.height
        opacity: internal.isShown ? 1 : 0
        visible: opacity > 0
        color: Theme.card
        border.width: 1
        border.color: Qt.alpha(Theme.accent, 0.6)

        Shadow {
            radius: 12
            offset: 4
            color: Qt.alpha(Theme.shadow, 0.5)
            cornerRadius: capsule.radius
        }

        Behavior on y {
            NumberAnimation {
                duration: Theme.duration.reveal
                easing.type: Easing.OutQuad
            }
        }
        Behavior on opacity {
            NumberAnimation {
                duration: Theme.duration.reveal
                easing.type: Easing.OutQuad
            }
        }

        Text {
            id: label

            anchors.centerIn: parent
            width: Math.min(implicitWidth, capsule.width - 2 * toast.padding)
            text: L10n.isolated(internal.text)
            color: Theme.onAccent
            font.pixelSize: Theme.fontSize.body
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: internal.text
        }
    }
}
