// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// All palettes. They are one tab stop: the arrow keys, Home and End move the focus, and Space or Enter selects, because
// a new palette builds the window again.
Grid {
    id: grid

    property string selected: SettingsOptions.paletteInForce(AppSettings.colorTheme)
    readonly property var palettes: SettingsOptions.palettes()
    readonly property real narrowest: 138
    readonly property real cellWidth: (width - (columns - 1) * spacing) / columns

    // The user chose the palette with that id.
    signal picked(string palette)

    function placeOf(palette: string): int {
        for (let i = 0; i < palettes.length; ++i) {
            if (palettes[i].id === palette) {
                return i;
            }
        }
        return 0;
    }

    function reach(place: int) {
        if (place >= 0 && place < swatches.count) {
            swatches.itemAt(place).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    spacing: Theme.spacing.card
    columns: Math.max(1, Math.floor((width + spacing) / (narrowest + spacing)))
    Accessible.role: Accessible.Grouping
    Accessible.name: L10n.T("Renk teması")
    onSelectedChanged: internal.tabStop = placeOf(selected)
    Keys.onPressed: event => {
        const goals = {
            [Qt.Key_Left]: internal.tabStop - 1,
            [Qt.Key_Right]: internal.tabStop + 1,
            [Qt.Key_Up]: internal.tabStop - columns,
            [Qt.Key_Down]: internal.tabStop + columns,
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: swatches.count - 1
        };
        event.accepted = event.key in goals;
        if (event.accepted) {
            reach(goals[event.key]);
        }
    }

    QtObject {
        id: internal

        property int tabStop: grid.placeOf(grid.selected)
    }

    Repeater {
        id: swatches

        model: grid.palettes

        PaletteSwatch {
            required property var modelData
            required property int index

            width: grid.cellWidth
            palette: modelData
            isSelected: modelData.id === grid.selected
            isTabStop: index === internal.tabStop
            onActiveFocusChanged: if (activeFocus) {
                internal.tabStop = index;
            }
            onClicked: grid.picked(modelData.id)
        }
    }
}
