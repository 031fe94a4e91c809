// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import Quelto.Controls
import Quelto.Library
import Quelto.SettingsPage
import Quelto.Shared
import Quelto.Theme

// The settings: a sidebar of sections, and one long page of cards. Every control writes its setting at once.
FocusScope {
    id: page

    readonly property real sidebarWidth: 196
    readonly property real topMargin: 38
    readonly property real widest: 900
    // Lets the card of the last section scroll to the top, also in a high window.
    readonly property real roomAtEnd: Math.max(420, view.height - general.height - column.spacing)

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: L10n.T("Ayarlar")
    Keys.onPressed: event => {
        const steps = {[Qt.Key_PageUp]: -1, [Qt.Key_PageDown]: 1};
        event.accepted = event.key in steps;
        if (event.accepted) {
            internal.scrollBy(steps[event.key] * (view.height - internal.overlap));
        }
    }

    SettingsScroll {
        id: scroll

        onFadeOutRequested: {
            fadeIn.stop();
            fadeOut.start();
        }
        onJumpRequested: section => {
            fadeOut.stop();
            wheel.stop();
            view.cancelFlick();
            view.contentY = Math.min(internal.topOf(section), view.lastY);
            shift.y = internal.shiftBelow;
            column.opacity = 0;
            fadeIn.start();
        }
    }

    QtObject {
        id: internal

        // How far the cards move while they fade out, and from where they come back. Units: logical pixels.
        readonly property real shiftAbove: -6
        readonly property real shiftBelow: 10
        readonly property list<Item> anchors: [appearance, clip, recording, autoClip, match, audio, shortcut, storage, general]

        // What stays in view when a key scrolls by a page.
        readonly property real overlap: 60

        function scrollBy(distance: real) {
            wheel.stop();
            view.contentY = Math.max(0, Math.min(view.contentY + distance, view.lastY));
        }

        function topOf(section: int): real {
            return column.y + anchors[section].y;
        }

        function report() {
            const offsets = [];
            for (let section = 0; section < anchors.length; ++section) {
                offsets.push(topOf(section) - view.contentY);
            }
            scroll.report(offsets);
        }
    }

    SettingsPlace {
        id: place

        view: view
        column: column
        sidebar: sidebar
        cards: internal.anchors
        focusedItem: page.Window.activeFocusItem
    }

    SettingsSidebar {
        id: sidebar

        width: page.sidebarWidth
        height: page.height
        active: scroll.activeSection
        animated: !place.isRestoring
        onSelect: section => scroll.select(section)
    }

    Rectangle {
        id: line

        x: sidebar.width
        width: 1
        height: page.height
        color: Theme.border
    }

    FocusFlickable {
        id: view

        x: line.x + line.width
        width: page.width - x
        height: page.height
        contentHeight: column.y + column.height
        scope: column
        onContentYChanged: internal.report()

        SmoothWheelHandler {
            id: wheel

            view: view
        }

        Column {
            id: column

            x: Theme.spacing.page
            y: page.topMargin
            width: Math.min(view.width, page.widest) - 2 * Theme.spacing.page
            spacing: Theme.spacing.section
            transform: Translate {
                id: shift
            }
            onPositioningComplete: {
                place.restore();
                internal.report();
            }

            SettingsHeading {
                width: parent.width
            }

            SettingsSectionModifier {
                id: appearance

                scroll: scroll
                section: SettingsSection.Appearance

                ThemeCard {}
            }

            SettingsSectionModifier {
                id: clip

                scroll: scroll
                section: SettingsSection.Clip

                ClipSettingsCard {}
            }

            SettingsSectionModifier {
                id: recording

                scroll: scroll
                section: SettingsSection.Recording

                RecordingCard {}
            }

            SettingsSectionModifier {
                id: autoClip

                scroll: scroll
                section: SettingsSection.AutoClip

                AutoClipCard {}
            }

            SettingsSectionModifier {
                id: match

                scroll: scroll
                section: SettingsSection.Match

                MatchSettingsCard {}
            }

            SettingsSectionModifier {
                id: audio

                scroll: scroll
                section: SettingsSection.Audio

                AudioSettingsCard {}
            }

            SettingsSectionModifier {
                id: shortcut

                scroll: scroll
                section: SettingsSection.Shortcut

                ShortcutCard {}
            }

            SettingsSectionModifier {
                id: storage

                scroll: scroll
                section: SettingsSection.Storage

                StorageCard {}
            }

            SettingsSectionModifier {
                id: general

                scroll: scroll
                section: SettingsSection.General

                GeneralCard {}
            }

            Item {
                width: 1
                height: page.roomAtEnd
            }
        }
    }

    ParallelAnimation {
        id: fadeOut

        NumberAnimation {
            target: column
            property: "opacity"
            to: 0
            duration: Theme.duration.jumpFade
            easing.type: Easing.InQuad
        }

        NumberAnimation {
            target: shift
            property: "y"
            to: internal.shiftAbove
            duration: Theme.duration.jumpFade
            easing.type: Easing.InQuad
        }
    }

    ParallelAnimation {
        id: fadeIn

        SpringMove {
            target: column
            property: "opacity"
            to: 1
            response: Theme.duration.jumpSpring
        }

        SpringMove {
            target: shift
            property: "y"
            to: 0
            response: Theme.duration.jumpSpring
        }
    }
}
