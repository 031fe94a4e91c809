// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Shared
import Quelto.Theme

// A short text that floats up over the page for a moment.
Item {
    id: toast

    readonly property bool isShown: Navigation.toast !== ""
    // Keeps the words while they leave.
    property string words: ""

    anchors.fill: parent
    clip: true

    Binding {
        target: toast
        property: "words"
        value: Navigation.toast
        when: toast.isShown
        restoreMode: Binding.RestoreNone
    }

    Rectangle {
        id: capsule

        width: Math.min(label.implicitWidth + 36, toast.width - 48)
        height: label.height + 22
        radius: height / 2
        anchors.horizontalCenter: parent.horizontalCenter
        y: toast.isShown ? toast.height - height - 24 : toast.height
        opacity: toast.isShown ? 1 : 0
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
                duration: 200
                easing.type: Easing.OutQuad
            }
        }
        Behavior on opacity {
            NumberAnimation {
                duration: 200
                easing.type: Easing.OutQuad
            }
        }

        Text {
            id: label

            anchors.centerIn: parent
            width: Math.min(implicitWidth, capsule.width - 36)
            text: toast.words
            color: Theme.onAccent
            font.pixelSize: 13
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }
}
