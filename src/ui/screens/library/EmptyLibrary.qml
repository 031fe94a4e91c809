// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared
import Quelto.Theme

// Stands where the cards would be, and says how to get some.
Column {
    id: empty

    property bool isSearch: false

    spacing: 14

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 96
        height: 96
        radius: 48
        color: Theme.panel

        SymbolIcon {
            anchors.centerIn: parent
            symbol: "film.stack"
            side: 38
            color: Theme.accent
        }
    }

    Text {
        width: parent.width
        text: empty.isSearch ? L10n.T("Sonuç bulunamadı") : L10n.T("Henüz klip yok")
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: 18
        font.weight: Font.Bold
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        width: parent.width
        visible: !empty.isSearch
        text: L10n.T("Kayıt açıkken {0} tuşlarına basarak son {1} saniyeyi kaydedin.",
                     [AppSettings.hotkeyDisplay, AppSettings.clipLength])
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.muted
        font.pixelSize: 13
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
