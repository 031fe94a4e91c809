// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Controls
import Quelto.Icons
import Quelto.Theme

// A choice of one of several values from a menu. It shows the selection that it is bound to, also one that is not among
// the choices, and emits picked() for the owner to change it. While the menu is closed no key changes the choice: the
// first one opens the menu.
T.ComboBox {
    id: control

    // Each has a `text` and a `value`.
    required property var choices
    property var selection
    // The accessible name.
    property string name: ""
    // Screen readers read it after the choice; may be empty.
    property string explanation: ""
    // -1 if the selection is not among the choices.
    readonly property int selectedIndex: indexOf(selection)
    readonly property int arrowSide: 12
    readonly property string shownText: selectedIndex < 0 ? "—" : choices[selectedIndex].text

    signal picked(var value)

    function indexOf(value: var): int {
        for (let i = 0; i < choices.length; ++i) {
            if (choices[i].value === value) {
                return i;
            }
        }
        return -1;
    }

    // The menu is closed first, so that the focus is back when the owner acts.
    function pick(index: int) {
        popup.close();
        showSelection();
        if (index >= 0 && index !== selectedIndex) {
            picked(choices[index].value);
        }
    }

    // The base class sets the index itself, by a click and with a new model.
    function showSelection() {
        currentIndex = Qt.binding(() => control.selectedIndex);
    }

    function isActionKey(key: int): bool {
        return key === Qt.Key_Space || key === Qt.Key_Return || key === Qt.Key_Enter;
    }

    // Whether the base class must not get the key.
    function handle(event: KeyEvent): bool {
        const wasOpen = popup.visible;
        const isAction = isActionKey(event.key);
        const isArrow = event.key === Qt.Key_Up || event.key === Qt.Key_Down;
        const isEnd = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        const isLetter = event.text > " " && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier));
        if (!wasOpen && !event.isAutoRepeat && (isAction || isArrow || isEnd || isLetter)) {
            popup.open();
        } else if (wasOpen && isAction && !event.isAutoRepeat) {
            pick(highlightedIndex);
        }
        return isAction || (isArrow && !wasOpen);
    }

    implicitWidth: 220
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    leftPadding: Theme.spacing.control
    rightPadding: Theme.spacing.control
    verticalPadding: 7
    font.pixelSize: Theme.fontSize.label
    font.weight: Font.Medium
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    model: choices
    textRole: "text"
    valueRole: "value"
    currentIndex: selectedIndex
    onModelChanged: showSelection()
    onActivated: index => pick(index)
    Accessible.name: name
    Accessible.description: explanation === "" ? shownText : shownText + "\n" + explanation
    // As by a click, the keys of the menu need the focus.
    Accessible.onPressAction: {
        forceActiveFocus(Qt.OtherFocusReason);
        popup.visible ? popup.close() : popup.open();
    }
    Keys.onPressed: event => event.accepted = control.handle(event)
    Keys.onReleased: event => event.accepted = control.isActionKey(event.key)

    delegate: ThemedDropDownItem {
        required property int index

        width: ListView.view?.width ?? 0
        isSelected: index === control.selectedIndex
        highlighted: index === control.highlightedIndex
    }

    contentItem: Text {
        rightPadding: control.arrowSide + Theme.spacing.row
        text: control.shownText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font: control.font
    }

    indicator: SymbolIcon {
        x: control.width - width - Theme.spacing.control
        y: (control.height - height) / 2
        symbol: "chevron.down"
        side: control.arrowSide
        color: Theme.muted
    }

    background: Rectangle {
        radius: Theme.radius.control
        color: control.down || control.hovered ? Theme.cardHover : Theme.bg
        border.width: 1
        border.color: Theme.border

        FocusRing {
            active: control.visualFocus
        }
    }

    popup: ThemedDropDownMenu {
        y: control.height + Theme.spacing.badge
        width: control.width
        title: control.name
        entries: control.delegateModel
        highlightedIndex: control.highlightedIndex
    }

    ThemedToolTip {
        text: (control.contentItem as Text).truncated && !control.popup.visible ? control.shownText : ""
    }
}
