#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The shortcut's card on the settings page: recording a new shortcut, and what keeps one from working."""
import shlex
import subprocess
import time

import desktop
import window

BUTTON = "Klip kaydet kısayolu"
TAKEN = "Başka bir program bu kısayolu kullanıyor.*"


class Shortcut(window.WindowTest):
    def open_card(self, **settings):
        program = self.quelto(clipLength=1, saveFolder=str(self.folder), **settings)
        self.wait_for_window()
        desktop.wait_until(self.settled, 5, "the window to stand still")
        self.reader.click("push button", "Ayarlar")
        self.reader.click(None, "Kısayol")
        # Until the jump of the page has ended.
        self.wait_until_still(BUTTON)
        return program

    def wait_until_still(self, name):
        places = []

        def is_still():
            places.append(self.reader.find("push button", name).bounds)
            time.sleep(0.1)
            return len(places) > 3 and len(set(places[-3:])) == 1

        desktop.wait_until(is_still, 10, f"“{name}” to stand still")

    def description(self):
        # The explanation follows on the next line.
        return self.reader.descriptions("push button", BUTTON)[0].split("\n")[0]

    def wait_for_description(self, text):
        desktop.wait_until(lambda: self.description() == text, 5, f"the shortcut “{text}”, not “{self.description()}”")

    def record(self, keys):
        self.reader.click("push button", BUTTON)
        self.wait_for_description("Tuş kombinasyonuna basın…")
        desktop.press(keys)

    def stored(self):
        lines = desktop.Quelto.settings_file.read_text().splitlines()
        return sorted(line for line in lines if line.startswith("hotkey"))

    def test_new_shortcut_saves_a_clip_while_another_window_has_the_focus(self):
        program = self.open_card()
        self.wait_for_description("Alt+Shift+C")
        self.record("ctrl+shift+k")
        self.wait_for_description("Ctrl+Shift+K")
        desktop.wait_until(lambda: self.stored() == ["hotkeyCode=40", "hotkeyKeyName=K", "hotkeyModifiers=4608"], 5,
                           "the stored shortcut")
        desktop.close_window()
        # Covers the screen, as a game does.
        self.scene("--motion", "low")
        program.record(1.5)
        self.assertNotEqual(desktop.active_window(), "Quelto")
        desktop.press("ctrl+shift+k")
        program.wait_for_clips(1)
        desktop.press("alt+shift+c")
        time.sleep(1)
        self.assertEqual(len(program.saved), 1, "the old shortcut saved a clip")

    def test_no_key_does_anything_else_while_the_shortcut_is_recorded(self):
        program = self.open_card()
        program.record(1.5)
        # Neither the old shortcut nor one of the menu nor Tab.
        self.record("k")
        desktop.press("Tab")
        self.assertEqual(self.description(), "Tuş kombinasyonuna basın…")
        desktop.press("Escape")
        self.wait_for_description("Alt+Shift+C")
        self.assertIn("focused", self.reader.find("push button", BUTTON).states)
        self.record("ctrl+q")
        self.wait_for_description("Ctrl+Q")
        self.assertEqual(program.get("State"), "recording", "the shortcut of the menu ended the program")
        self.record("alt+shift+c")
        self.wait_for_description("Alt+Shift+C")
        self.assertEqual(program.saved, [], "the old shortcut saved a clip")
        desktop.press()
        program.wait_for_clips(1)

    def test_tells_that_another_program_holds_the_shortcut_until_it_lets_go(self):
        other = self.other_program("shortcut_holder.py")
        program = self.open_card()
        self.reader.find("alert message", TAKEN)
        self.record("F9")
        self.wait_for_description("F9")
        self.reader.wait_until_gone("alert message", TAKEN)
        self.record("alt+shift+k")
        self.wait_for_description("Alt+Shift+K")
        self.record("F9")
        self.wait_for_description("F9")
        program.set("hotkeyModifiers", 2560)
        program.set("hotkeyCode", 8)
        self.reader.find("alert message", TAKEN)
        other.stop()
        self.reader.wait_until_gone("alert message", TAKEN)
        program.record(1.5)
        desktop.press()
        program.wait_for_clips(1)

    def test_command_for_the_desktop_saves_a_clip(self):
        program = self.open_card(environment={"QUELTO_PLATFORM": "x11", "XDG_SESSION_TYPE": "wayland"})
        field = self.reader.find("text", "Komut")
        program.record(1.5)
        subprocess.run(shlex.split(self.reader.text(field)), check=True, stdout=subprocess.DEVNULL)
        program.wait_for_clips(1)


if __name__ == "__main__":
    desktop.main()
