#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The save shortcut of an installed program in a Wayland session whose desktop binds global shortcuts, as GNOME does
from version 48 on."""
import os
import pathlib
import re
import time

import desktop
import portal_dialogs
import screen_reader
import wayland
import wayland_recording

SHORTCUT = "Klip kaydet kısayolu"
KEYS = ("alt", "shift", "c")
APPLICATION = "app.quelto.Quelto"
ENTRY = f"{APPLICATION}.desktop"
PACKAGING = pathlib.Path(__file__).parents[2] / "packaging"


def install():
    """Installs the program's desktop entry, by which the portal knows its name."""
    folder = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "applications"
    folder.mkdir(parents=True, exist_ok=True)
    # The portal ignores an entry whose program is not there.
    text = (PACKAGING / ENTRY).read_text().replace("Exec=quelto", f"Exec={desktop.Quelto.PROGRAM}")
    (folder / ENTRY).write_text(text)
    return folder / ENTRY


class ShortcutCard:
    """The card of the shortcut on the settings page, operated as a screen reader does."""

    def __init__(self):
        self._reader = screen_reader.ScreenReader()

    def close(self):
        self._reader.close()

    def open(self):
        for name in ("Ayarlar", "Kısayol"):
            self._reader.act(desktop.wait_until(lambda: self._pressable(name), 10, f"“{name}”"), "Press")
        self.wait_for(SHORTCUT)

    def _pressable(self, name):
        return next((item for item in self._reader.everything()
                     if item.name == name and "Press" in self._reader.actions(item)), None)

    def wait_for(self, pattern):
        self._reader.find(None, pattern, 10)

    def shortcut(self):
        # The explanation follows on the next line.
        return self._reader.description(self._reader.find("push button", SHORTCUT)).split("\n")[0]

    def shows(self, pattern):
        return bool(self._reader.showing(None, pattern))


class WaylandShortcut(wayland_recording.WaylandRecordingTest):
    def setUp(self):
        super().setUp()
        self.entry = install()
        self.activations = wayland.ShortcutActivations()
        self.addCleanup(self.activations.close)
        self.user = self.enterContext(wayland.Input())
        self.scene("--motion", "low")

    def first_start(self):
        """Starts the program as after its installation, and shares the screen."""
        wayland.forget_shortcuts(APPLICATION)
        program = self.quelto(clipLength=1)
        portal_dialogs.share_screen()
        return program

    def agreed_start(self):
        """The first start, with all dialogs answered."""
        program = self.first_start()
        portal_dialogs.add_shortcuts()
        program.record(1.5)
        return program

    def shortcut_card(self):
        card = ShortcutCard()
        self.addCleanup(card.close)
        card.open()
        return card

    def press(self):
        """Presses the shortcut until the desktop tells of it, which it does from the moment on at which it is bound."""
        count = self.activations.count

        def is_told():
            self.user.press(*KEYS)
            try:
                desktop.wait_until(lambda: self.activations.count > count, 0.5, "the desktop to notice the keys")
            except AssertionError:
                return False
            return True

        desktop.wait_until(is_told, 10, "the shortcut to be bound")

    def assert_no_dialog(self):
        self.assertFalse(portal_dialogs.is_screen_cast_asked())
        self.assertFalse(portal_dialogs.is_shortcut_asked())

    def test_later_starts_ask_nothing_and_each_press_saves_one_clip(self):
        program = self.agreed_start()
        self.press()
        program.wait_for_clips(1)
        for start in (2, 3):
            program.end()
            program.start()
            program.record(1.5)
            self.assert_no_dialog()
            self.press()
            program.wait_for_clips(start)
            time.sleep(1)
            self.assertEqual(len(program.saved), start)
            self.assertEqual(self.activations.count, start)
        self.assert_no_dialog()

    def test_held_keys_save_one_clip(self):
        program = self.agreed_start()
        self.user.hold(*KEYS)
        desktop.wait_until(lambda: self.activations.count > 20, 10, "the desktop to repeat the held keys")
        self.user.release(*KEYS)
        program.wait_for_clips(1)
        time.sleep(1)
        self.assertEqual(len(program.saved), 1)
        self.press()
        program.wait_for_clips(2)

    def test_permission_to_record_belongs_to_the_installed_program(self):
        self.agreed_start()
        file = wayland_recording.TOKEN_FILE
        token = desktop.wait_until(lambda: file.exists() and file.read_text(), 5, "the stored token")
        self.assertEqual(wayland.applications_of_token(token), {APPLICATION})

    def test_settings_show_the_keys_that_the_desktop_has_bound(self):
        program = self.agreed_start()
        card = self.shortcut_card()
        self.assertEqual(card.shortcut(), "Alt+Shift+C")
        self.assertFalse(card.shows("Komut"))
        # The desktop keeps the keys to which the user has agreed.
        for key, value in (("hotkeyKeyName", "K"), ("hotkeyModifiers", 4608), ("hotkeyCode", 40)):
            program.set(key, value)
        card.wait_for(r".*Ctrl\+Shift\+K.*Alt\+Shift\+C.*")
        self.assertEqual(card.shortcut(), "Alt+Shift+C")
        self.assert_no_dialog()
        self.press()
        program.wait_for_clips(1)

    def assert_settings_offer_the_command(self, program):
        program.wait_for_state("recording")
        card = self.shortcut_card()
        card.wait_for("Komut")
        program.save()
        self.user.press(*KEYS)
        time.sleep(1)
        self.assertEqual((self.activations.count, len(program.saved)), (0, 1))

    def test_settings_offer_a_command_if_the_user_refuses_the_shortcut(self):
        program = self.first_start()
        portal_dialogs.cancel_shortcuts()
        self.assert_settings_offer_the_command(program)

    def test_settings_offer_a_command_if_the_program_is_not_installed(self):
        self.entry.unlink()
        program = self.first_start()
        self.assert_settings_offer_the_command(program)
        self.assertFalse(portal_dialogs.is_shortcut_asked())


if __name__ == "__main__":
    desktop.main()
