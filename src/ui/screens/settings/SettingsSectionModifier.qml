// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Theme

// The place of a section's card on the page. Draws a ring around it while the section is highlighted.
Item {
    id: anchor

    required property SettingsScroll scroll
    required property int section
    default property alias card: slot.data

    width: parent?.width ?? 0
    height: slot.height
    states: State {
        name: "highlighted"
        when: anchor.scroll.highlight === anchor.section

        PropertyChanges {
            ring.opacity: 1
        }
    }
    transitions: [
        Transition {
            to: "highlighted"

            NumberAnimation {
                property: "opacity"
                duration: Theme.duration.ringEnter
                easing.type: Easing.OutQuad
            }
        },
        Transition {
            from: "highlighted"

            NumberAnimation {
                property: "opacity"
                duration: Theme.duration.ringLeave
                easing.type: Easing.OutQuad
            }
        }
    ]

    // Behind the card, so that only the part around it is visible.
    Item {
        anchors.fill: parent
        visible: ring.visible
        opacity: ring.opacity

        Shadow {
            radius: 8
            cornerRadius: Theme.radius.panel
            color: Qt.alpha(Theme.accent, 0.6)
        }
    }

    Item {
        id: slot

        width: parent.width
        height: childrenRect.height
    }

    Rectangle {
        id: ring

        anchors.fill: parent
        opacity: 0
        visible: opacity > 0
        radius: Theme.radius.panel
        color: "transparent"
        border.width: 2
        border.color: Theme.accent
    }
}
