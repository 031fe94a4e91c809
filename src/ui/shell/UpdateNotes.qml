// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// What is new in a version. Notes that do not fit scroll, also by the keyboard.
Rectangle {
    id: box

    required property list<string> notes
    // Of a notch of the wheel and of an arrow key.
    readonly property real step: 40
    readonly property real lastY: Math.max(0, view.contentHeight - view.height)

    implicitHeight: lines.height + 2 * Theme.spacing.card
    radius: Theme.radius.panel
    color: Theme.bg

    Flickable {
        id: view

        function scrollTo(y: real) {
            contentY = Math.max(0, Math.min(y, box.lastY));
        }

        anchors.fill: parent
        anchors.margins: Theme.spacing.card
        // The bar is beside the text.
        anchors.rightMargin: 0
        contentHeight: lines.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: box.lastY > 0
        clip: interactive
        activeFocusOnTab: interactive
        Accessible.role: Accessible.List
        Accessible.name: heading.text
        Keys.onUpPressed: scrollTo(contentY - box.step)
        Keys.onDownPressed: scrollTo(contentY + box.step)
        Keys.onPressed: event => {
            const places = {
                [Qt.Key_PageUp]: contentY - height,
                [Qt.Key_PageDown]: contentY + height,
                [Qt.Key_Home]: 0,
                [Qt.Key_End]: box.lastY
            };
            event.accepted = event.key in places;
            if (event.accepted) {
                scrollTo(places[event.key]);
            }
        }
        onHeightChanged: scrollTo(contentY)

        T.ScrollBar.vertical: ThemedScrollBar {
            policy: box.lastY > 0 ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
        }

        Column {
            id: lines

            width: view.width - Theme.spacing.card
            spacing: Theme.spacing.row

            Text {
                id: heading

                text: L10n.T("Neler yeni")
                color: Theme.muted
                font.pixelSize: Theme.fontSize.label
                font.weight: Font.Bold
                Accessible.ignored: true
            }

            Repeater {
                model: box.notes

                UpdateNote {
                    width: lines.width
                }
            }
        }
    }

    FocusRing {
        active: view.activeFocus
        cornerRadius: box.radius
    }
}
