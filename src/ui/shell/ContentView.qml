// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Quelto.Shared
import Quelto.Shell
import Quelto.Theme

// The window's inside: menus above, the capture card in the middle.
Item {
    id: content

    readonly property bool isReview: Navigation.pageKind === Pages.Review

    Backdrop {
        anchors.fill: parent
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        MainMenu {
            Layout.fillWidth: true
            onAboutRequested: about.open()
            onSettingsRequested: settingsNotice.open()
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            Column {
                anchors.centerIn: parent
                width: 440
                visible: !content.isReview
                spacing: 26

                Brand {
                    anchors.horizontalCenter: parent.horizontalCenter
                }

                CaptureCard {
                    width: parent.width
                }

                LastSave {
                    width: parent.width
                }
            }

            ReviewPage {
                anchors.centerIn: parent
                width: 560
                visible: content.isReview
                focus: visible
            }

            Toast {}
        }
    }

    Notice {
        id: about

        title: "Quelto " + WindowCommands.version
        text: L10n.T("Linux için anlık tekrar kaydedici. GNU GPL 3 veya sonraki sürümüyle özgür yazılımdır.")
    }

    Notice {
        id: settingsNotice

        title: L10n.T("Ayarlar")
        text: L10n.T("Ayarlar sayfası bir sonraki sürümde geliyor. Şimdilik Quelto'den çıkın, bu dosyayı düzenleyip Quelto'yi yeniden açın:") + "\n\n" + WindowCommands.settingsPath
    }

    Connections {
        target: WindowCommands

        function onSettingsRequested() {
            settingsNotice.open();
        }
    }
}
