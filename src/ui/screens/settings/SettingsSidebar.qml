// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// The sections of the settings page. They are one tab stop: the arrow keys, Home and End move between them, and Enter
// jumps to one.
Rectangle {
    id: sidebar

    // The section that is lit.
    required property int active
    readonly property real topMargin: 30
    readonly property real bottomMargin: 20

    // The mark of the section that is lit moves there.
    property bool animated: true

    // The user chose a section.
    signal select(int section)

    function takeFocus() {
        internal.reach(internal.tabStop);
    }

    color: Qt.alpha(Theme.sidebar, 0.55)
    onActiveChanged: {
        if (!internal.rowOf(internal.tabStop)?.activeFocus) {
            internal.tabStop = active;
        }
    }
    Keys.onPressed: event => {
        const goals = {
            [Qt.Key_Up]: internal.tabStop - 1,
            [Qt.Key_Down]: internal.tabStop + 1,
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: SettingsSection.General
        };
        event.accepted = event.key in goals;
        if (event.accepted) {
            internal.reach(goals[event.key]);
        }
    }

    QtObject {
        id: internal

        property int tabStop: SettingsSection.Appearance
        property SettingsSidebarItem activeRow: null

        // Null if there is none.
        function rowOf(section: int): SettingsSidebarItem {
            for (let i = 0; i < groups.count; ++i) {
                const row = (groups.itemAt(i) as SettingsSidebarGroup)?.rowOf(section);
                if (row) {
                    return row;
                }
            }
            return null;
        }

        function reach(section: int) {
            rowOf(section)?.forceActiveFocus(Qt.TabFocusReason);
        }

        // Moves the mark there.
        function light(row: SettingsSidebarItem) {
            const start = mark.y;
            const moves = sidebar.animated && activeRow;
            activeRow = row;
            slide.stop();
            mark.distance = moves ? mark.distance + start - mark.y : 0;
            slide.start();
        }
    }

    FocusFlickable {
        id: view

        anchors.fill: parent
        hasScrollBar: false
        contentHeight: column.y + column.height + sidebar.bottomMargin
        scope: column

        // Moves from section to section as one shape.
        Rectangle {
            id: mark

            // From the section that is lit, while the mark moves there.
            property real distance: 0

            visible: internal.activeRow !== null
            x: column.x
            y: column.y + (internal.activeRow?.topEdge ?? 0) + distance
            width: column.width
            height: internal.activeRow?.height ?? 0
            radius: Theme.radius.control
            color: Theme.card

            SpringMove {
                id: slide

                target: mark
                property: "distance"
                to: 0
                response: Theme.duration.selectionSpring
            }
        }

        Column {
            id: column

            x: Theme.spacing.sidebar
            y: sidebar.topMargin
            width: view.width - 2 * Theme.spacing.sidebar
            Accessible.role: Accessible.PageTabList
            Accessible.name: L10n.T("Ayarlar")

            Repeater {
                id: groups

                model: SettingsSection.groups()

                SettingsSidebarGroup {
                    id: group

                    required property var modelData

                    width: column.width
                    heading: modelData.heading
                    sections: modelData.sections
                    active: sidebar.active
                    tabStop: internal.tabStop
                    onRowLit: row => internal.light(row)
                    onRowFocused: section => internal.tabStop = section
                    onSelect: section => sidebar.select(section)
                }
            }
        }
    }
}
