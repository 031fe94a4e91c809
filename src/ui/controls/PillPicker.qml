// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls

// A choice between several options, as a row of pills, or several rows where the width allows only a part of them. It shows the selection that it is bound to and emits picked()
// for the owner to change it. It is one tab stop; the arrow keys move the choice.
FocusScope {
    id: picker

    required property var options
    property var selection
    // The text of an option.
    property var labelOf: option => String(option)
    // The accessible name.
    property string name: ""
    readonly property int selectedIndex: options.indexOf(selection)

    signal picked(var option)

    function textOf(option: var): string {
        const label = picker.labelOf;
        return label(option);
    }

    function widthOfOneRow(): real {
        let width = 0;
        for (let i = 0; i < pills.count; ++i) {
            width += (i > 0 ? rows.spacing : 0) + (pills.itemAt(i)?.implicitWidth ?? 0);
        }
        return width;
    }

    function pickAt(index: int) {
        const within = Math.max(0, Math.min(index, options.length - 1));
        pills.itemAt(within)?.forceActiveFocus(Qt.TabFocusReason);
        if (within !== selectedIndex) {
            picker.picked(options[within]);
        }
    }

    implicitWidth: widthOfOneRow()
    implicitHeight: rows.implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Keys.onPressed: event => {
        const steps = {[Qt.Key_Left]: -1, [Qt.Key_Up]: -1, [Qt.Key_Right]: 1, [Qt.Key_Down]: 1};
        const ends = {[Qt.Key_Home]: 0, [Qt.Key_End]: picker.options.length - 1};
        event.accepted = event.key in steps || event.key in ends;
        if (event.accepted) {
            picker.pickAt(ends[event.key] ?? picker.selectedIndex + steps[event.key]);
        }
    }

    Flow {
        id: rows

        width: picker.width
        spacing: 5

        Repeater {
            id: pills

            model: picker.options

            Pill {
                required property var modelData
                required property int index

                text: picker.textOf(modelData)
                isSelected: index === picker.selectedIndex
                isTabStop: index === Math.max(0, picker.selectedIndex)
                onClicked: picker.pickAt(index)
            }
        }
    }
}
