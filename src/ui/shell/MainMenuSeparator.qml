// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Quelto.Theme

MenuSeparator {
    padding: 4
    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.border
    }
}
