// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quelto.Theme

// Fills the screen with its content while it is open. A popup, so that Escape closes it and Tab stays inside.
T.Popup {
    id: stage

    parent: T.Overlay.overlay
    width: parent?.width ?? 0
    height: parent?.height ?? 0
    modal: true
    focus: true
    padding: 0
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: {
        internal.window = stage.parent.Window.window;
        internal.visibilityBefore = internal.window.visibility;
        internal.window.showFullScreen();
    }
    onAboutToHide: internal.leave()
    Component.onDestruction: internal.leave()

    QtObject {
        id: internal

        property Window window: null
        property int visibilityBefore: Window.Windowed

        function leave() {
            // The desktop may have ended the full screen before.
            if (window && window.visibility === Window.FullScreen) {
                window.visibility = visibilityBefore;
            }
            window = null;
        }
    }

    Connections {
        target: internal.window

        function onVisibilityChanged(visibility: int) {
            if (visibility === Window.Windowed || visibility === Window.Maximized) {
                stage.close();
            }
        }
    }

    background: Rectangle {
        color: Theme.shadow
    }

    contentItem: FocusScope {
        focus: true
    }
}
