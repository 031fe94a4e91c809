// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Shared

// What a page leaves for the page that is built in its place.
QtObject {
    id: memory

    // Null for nothing.
    property var place: null

    // The user has left the page before it was built again.
    readonly property Connections leaving: Connections {
        target: Navigation

        function onPageChanged() {
            memory.place = null;
        }
    }
}
