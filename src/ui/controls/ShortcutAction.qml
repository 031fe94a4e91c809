// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T

// The action of a menu entry with a shortcut. Unlike `Action.shortcut`, holding the keys triggers it only once.
T.Action {
    id: action

    // In portable form, such as "Ctrl+O".
    property string keys: ""
    readonly property Shortcut shortcutOfKeys: Shortcut {
        sequence: action.keys
        autoRepeat: false
        enabled: action.enabled
        onActivated: action.trigger()
    }
}
