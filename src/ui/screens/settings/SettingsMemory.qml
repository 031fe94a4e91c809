// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton
import QtQuick

// What a page leaves for the page that is built in its place.
QtObject {
    // Null for nothing.
    property var place: null
}
