// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// Navigation with live counts, and the recorder below it.
Rectangle {
    id: sidebar

    // The version that can be installed; empty for none.
    property string availableUpdate: ""

    signal updateRequested

    color: Theme.sidebar
    Accessible.role: Accessible.Pane
    Accessible.name: "Quelto"

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Brand {
            Layout.topMargin: 40
            Layout.leftMargin: 18
            Layout.rightMargin: 18
            Layout.bottomMargin: 26
        }

        SidebarList {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Theme.spacing.sidebar
            Layout.rightMargin: Theme.spacing.sidebar
        }

        UpdateRow {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.sidebar
            Layout.rightMargin: Theme.spacing.sidebar
            Layout.topMargin: Theme.spacing.sidebar
            visible: version !== ""
            version: sidebar.availableUpdate
            onClicked: sidebar.updateRequested()
        }

        CaptureCard {
            Layout.fillWidth: true
            Layout.margins: Theme.spacing.sidebar
        }

        NavItem {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.spacing.sidebar
            Layout.rightMargin: Theme.spacing.sidebar
            Layout.bottomMargin: Theme.spacing.sidebar
            symbol: "gearshape.fill"
            text: L10n.T("Ayarlar")
            active: !Navigation.hasSelected && Navigation.pageKind === Pages.Settings
            onClicked: Navigation.showSettings()
        }
    }
}
