// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The way to every page, with live counts, and the recorder below.
Rectangle {
    id: sidebar

    // The version that waits to be installed; empty for none.
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

        SidebarPlaces {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
        }

        UpdateRow {
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.topMargin: 10
            visible: version !== ""
            version: sidebar.availableUpdate
            onClicked: sidebar.updateRequested()
        }

        CaptureCard {
            Layout.fillWidth: true
            Layout.margins: 10
        }

        NavItem {
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.bottomMargin: 10
            symbol: "gearshape.fill"
            text: L10n.T("Ayarlar")
            active: !Navigation.hasSelected && Navigation.pageKind === Pages.Settings
            onClicked: Navigation.showSettings()
        }
    }
}
