// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.SettingsPage
import Quelto.Theme

// A heading of the settings' sidebar with its sections.
Column {
    id: group

    required property string heading
    required property var sections
    required property int active
    required property int tabStop

    signal rowLit(SettingsSidebarItem row)
    signal rowFocused(int section)
    signal select(int section)

    // Null if the section is in another group.
    function rowOf(section: int): SettingsSidebarItem {
        for (let i = 0; i < items.count; ++i) {
            if (sections[i] === section) {
                return items.itemAt(i) as SettingsSidebarItem;
            }
        }
        return null;
    }

    Text {
        width: group.width
        topPadding: 14
        bottomPadding: Theme.spacing.badge
        leftPadding: Theme.spacing.sidebar
        text: TextCase.upper(group.heading)
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.dim
        font.pixelSize: Theme.fontSize.note
        font.weight: Font.Bold
        font.letterSpacing: 0.8
        Accessible.role: Accessible.Heading
        Accessible.name: group.heading
    }

    Column {
        id: rows

        width: group.width
        spacing: 2

        Repeater {
            id: items

            model: group.sections

            SettingsSidebarItem {
                id: row

                required property int modelData

                width: rows.width
                topEdge: group.y + rows.y + y
                text: SettingsSection.title(modelData)
                symbol: SettingsSection.icon(modelData)
                active: modelData === group.active
                isTabStop: modelData === group.tabStop
                Component.onCompleted: if (active) {
                    group.rowLit(row);
                }
                onActiveChanged: if (active) {
                    group.rowLit(row);
                }
                onActiveFocusChanged: if (activeFocus) {
                    group.rowFocused(modelData);
                }
                onClicked: group.select(modelData)
            }
        }
    }
}
