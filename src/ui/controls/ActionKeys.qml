// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

// Gets the keys of a button by its Keys.forwardTo: Enter acts like Space, and a key that is held acts once.
Item {
    signal acted

    function isEnter(event: KeyEvent): bool {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
    }

    // Qt acts on each release of Space, and X11 repeats a key by releases and presses.
    function isRepeatedSpace(event: KeyEvent): bool {
        return event.key === Qt.Key_Space && event.isAutoRepeat;
    }

    Keys.onPressed: event => {
        event.accepted = isEnter(event) || isRepeatedSpace(event);
        if (isEnter(event) && !event.isAutoRepeat) {
            acted();
        }
    }
    Keys.onReleased: event => event.accepted = isRepeatedSpace(event)
}
