// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Player
import Quelto.Shared
import Quelto.Theme

// The playback speed, as a button that opens the choice.
GhostButton {
    id: button

    required property ClipPlayer model
    readonly property bool isOpen: menu.visible

    horizontalPadding: 7
    verticalPadding: 5
    font.pixelSize: Theme.fontSize.label
    text: model.rateText(model.rate)
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: L10n.T("Oynatma hızı") + ", " + text
    onClicked: menu.popup(button, 0, -menu.implicitHeight)

    ThemedToolTip {
        text: L10n.T("Oynatma hızı")
    }

    ThemedMenu {
        id: menu

        title: L10n.T("Oynatma hızı")

        Instantiator {
            model: button.model.rates
            onObjectAdded: (index, object) => menu.insertItem(index, object as ThemedMenuItem)
            onObjectRemoved: (index, object) => menu.removeItem(object as ThemedMenuItem)

            ThemedMenuItem {
                required property real modelData

                text: (modelData === button.model.rate ? "✓ " : "") + button.model.rateText(modelData)
                onTriggered: button.model.rate = modelData
            }
        }
    }
}
