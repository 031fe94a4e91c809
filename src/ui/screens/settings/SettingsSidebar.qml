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
    onActiveChanged: internal.tabStop = active
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

        property int tabStop: sidebar.active
        property SettingsSidebarItem activeRow: null

        function reach(section: int) {
            for (let i = 0; i < groups.count; ++i) {
                (groups.itemAt(i) as SettingsSidebarGroup).rowOf(section)?.forceActiveFocus(Qt.TabFocusReason);
            }
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
            visible: internal.activeRow !== null
            x: column.x
            y: internal.activeRow ? column.y + internal.activeRow.topEdge : 0
            width: column.width
            height: internal.activeRow?.height ?? 0
            radius: Theme.radius.control
            color: Theme.card

            Behavior on y {
                enabled: sidebar.animated

                SpringMove {
                    response: Theme.duration.selectionSpring
                }
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
                    onRowLit: row => internal.activeRow = row
                    onRowFocused: section => internal.tabStop = section
                    onSelect: section => sidebar.select(section)
                }
            }
        }
    }
}
