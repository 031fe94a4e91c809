#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The program as its user sees it in a GNOME session on Wayland: its window, its shortcut, the choice of the screen, and
notices. The monitor is 1280x800, so the window fills it and its title bar ends 62 pixels below the screen's edge."""
import os
import pathlib
import re
import subprocess
import time

import clip_folder
import desktop
import notifications
import other_program
import portal_dialogs
import screen_reader
import wayland
import wayland_recording

ORIGIN = 3, 62
SHORTCUT = "Klip kaydet kısayolu"


class WaylandProgram(wayland_recording.WaylandRecordingTest):
    def setUp(self):
        super().setUp()
        self.reader = screen_reader.ScreenReader()
        self.addCleanup(self.reader.close)
        self.folder = desktop.TEST_FOLDER / f"clips-{time.monotonic_ns()}"
        self.folder.mkdir()

    def start(self, **settings):
        """Starts the program as the desktop does, and waits for its window."""
        program = self.quelto({"QT_QPA_PLATFORM": ""}, saveFolder=str(self.folder), **settings)
        self.wait_for_window()
        return program

    def recording(self, **settings):
        self.permit_the_screen()
        program = self.start(**settings)
        program.wait_for_state("recording")
        return program

    def is_active(self):
        return any("active" in item.states for item in self.reader.showing("frame", "Quelto"))

    def wait_for_window(self):
        desktop.wait_until(self.is_active, 10, "the window to be active")

    def press(self, role, name):
        item = self.reader.find_anywhere(role, name)
        self.reader.act(item, "Press")

    def tab_to(self, user, role, name):
        """Presses Tab until such an item has the focus."""
        for _ in range(60):
            before = self.reader.focused()
            if before and before.role == role and re.fullmatch(name, before.name):
                return

            def has_moved():
                now = self.reader.focused()
                return now and (not before or now.address != before.address)

            # The first key of a new keyboard may be lost.
            user.press_until(has_moved, "tab", interval=0.5)
        raise AssertionError(f"Tab does not reach {role} “{name}”; the focus is on {self.reader.focused()}")

    def open_settings(self, section):
        self.press("push button", "Ayarlar")
        self.press("page tab", section)

    def clipboard(self, form):
        """Through the X server, to which the compositor passes the clipboard on."""
        return subprocess.run(["xclip", "-selection", "clipboard", "-o", "-t", form], capture_output=True, text=True,
                              timeout=10).stdout

    def test_window_is_not_one_of_the_x_server(self):
        program = self.start(autoStart=False)
        self.assertEqual(desktop.visible_windows("Quelto"), [])
        maps = pathlib.Path(f"/proc/{program.process.pid}/maps").read_text()
        self.assertIn("libqwayland", maps)

    def test_copied_clip_can_be_pasted(self):
        path = clip_folder.put_clip(self.folder, "Dota 2 - Ace")
        self.start(autoStart=False)
        # Wayland lets a program fill the clipboard only after a key press or click.
        with wayland.Input() as user:
            self.tab_to(user, "list item", "Ace.*")
            user.press("ctrl", "c")
            desktop.wait_until(lambda: self.clipboard("text/uri-list").strip() == path.as_uri(), 5, "the clip in the clipboard")

    def test_dragged_clip_can_be_dropped(self):
        path = clip_folder.put_clip(self.folder, "Dota 2 - Ace")
        # The drop's window has to stay above the window where the drag begins.
        desktop.run("gsettings", "set", "org.gnome.desktop.wm.preferences", "raise-on-click", "false")
        self.addCleanup(desktop.run, "gsettings", "reset", "org.gnome.desktop.wm.preferences", "raise-on-click")
        self.start(autoStart=False)
        x, y = self.reader.find("list item", "Ace.*").middle
        os.environ["GDK_BACKEND"] = "wayland"
        self.addCleanup(os.environ.pop, "GDK_BACKEND")
        with wayland.Input() as user:
            # The compositor puts it at the top left.
            files = other_program.OtherProgram("file_window.py", 0, 0, 250, 200)
            self.addCleanup(files.stop)

            def is_over():
                # A button that is pressed before the compositor has noticed the pointer there starts no drag.
                user.point(x + ORIGIN[0], y + ORIGIN[1])
                time.sleep(0.2)
                user.hold_button()
                for _ in range(20):
                    user.move((150 - x) / 20, (110 - y) / 20)
                    time.sleep(0.03)
                return files.printed("over") or user.release_button()

            desktop.wait_until(is_over, 10, "the drag to reach the window")
            user.release_button()
            self.assertEqual(files.wait_for("dropped"), [path.as_uri()])
        self.assertTrue(path.exists())

    def test_shortcut_card_gives_the_command_that_saves_a_clip(self):
        # This version of GNOME has no shortcuts for programs.
        program = self.recording(clipLength=1)
        program.record(1.5)
        self.assertEqual(self.reader.descriptions("push button", "Klip Kaydet"), [""])
        self.open_settings("Kısayol")
        button = self.reader.find("push button", SHORTCUT)
        self.assertEqual(self.reader.description(button), "Alt+Shift+C\nDeğiştirmek için tıklayın, Esc ile iptal.")
        command = f"{program.PROGRAM} --save-clip"
        self.assertEqual(self.reader.text(self.reader.find("text", "Komut")), command)
        with wayland.Input() as user:
            self.tab_to(user, "push button", "Kopyala")
            user.press("space")
            desktop.wait_until(lambda: self.clipboard("UTF8_STRING") == command, 5, "the command in the clipboard")
        subprocess.run(["sh", "-c", command], check=True, timeout=20)
        program.wait_for_clips(1)

    def test_another_screen_is_chosen_while_the_recording_goes_on(self):
        program = self.recording(clipLength=3)
        program.record(3)
        self.open_settings("Kayıt")
        before = wayland_recording.TOKEN_FILE.read_text()
        self.press("push button", "Yeniden Seç")
        portal_dialogs.wait_for_screen_cast()
        self.assertEqual(program.get("State"), "recording")
        portal_dialogs.cancel_screen_cast()
        self.wait_for_end_of_dialog()
        self.assertEqual(wayland_recording.TOKEN_FILE.read_text(), before)
        self.assertNotIn("starting", program.states[1:], "the buffer was lost")
        program.save()
        self.press("push button", "Yeniden Seç")
        portal_dialogs.share_screen()
        desktop.wait_until(lambda: program.states.count("recording") == 2, 10, "a recording of the other screen")
        self.assertNotEqual(wayland_recording.TOKEN_FILE.read_text(), before)
        self.assertFalse(portal_dialogs.is_screen_cast_asked(), "the user was asked twice")
        program.record(1)
        program.save()

    def test_screen_can_be_chosen_after_a_cancelled_dialog(self):
        program = self.quelto({"QT_QPA_PLATFORM": ""}, saveFolder=str(self.folder))
        # The dialog is in front of the window.
        portal_dialogs.cancel_screen_cast()
        program.wait_for_state("error")
        self.assertIn("Masaüstü sorduğunda ekranı paylaşmaya izin verin", program.get("Message"))
        self.open_settings("Kayıt")
        self.press("push button", "Yeniden Seç")
        portal_dialogs.share_screen()
        desktop.wait_until(lambda: program.get("State") == "recording", 10, "a recording")

    def test_notification_raises_the_closed_window(self):
        program = self.start(autoStart=False, **{"windows/ToldAboutBackground": False})
        shell = screen_reader.ScreenReader("gnome-shell")
        self.addCleanup(shell.close)
        with wayland.Input() as user:
            user.press_until(lambda: not self.reader.showing("frame", "Quelto"), "alt", "f4", interval=1)
            # Opens the desktop's list of notifications. The newest gets the focus there.
            user.press("super", "v")
            shell.find(None, "Quelto çalışmaya devam ediyor", 10)
            user.press_until(lambda: self.reader.showing("frame", "Quelto"), "enter", interval=1)
            # Closes the list.
            user.press_until(self.is_active, "escape", interval=1)
        self.assertIsNone(program.process.poll())

    def test_notification_raises_the_window_from_behind_another(self):
        # The desktop sends no activation token with a click on a notification.
        program = self.start(autoStart=False, **{"windows/ToldAboutBackground": False})
        shell = screen_reader.ScreenReader("gnome-shell")
        self.addCleanup(shell.close)
        with wayland.Input() as user:
            user.press_until(lambda: not self.reader.showing("frame", "Quelto"), "alt", "f4", interval=1)
            program.activate()
            self.wait_for_window()
            os.environ["GDK_BACKEND"] = "wayland"
            self.addCleanup(os.environ.pop, "GDK_BACKEND")
            other = other_program.OtherProgram("file_window.py", 0, 0, 250, 200)
            self.addCleanup(other.stop)
            other.wait_for("focused")
            user.press("super", "v")
            shell.find(None, "Quelto çalışmaya devam ediyor", 10)
            user.press_until(lambda: not shell.showing(None, "Quelto çalışmaya devam ediyor"), "enter", interval=1)
            user.press_until(self.is_active, "escape", interval=1)

    def test_saved_clip_is_told_by_a_notice_that_ends(self):
        monitor = notifications.CallMonitor()
        self.addCleanup(monitor.stop)
        program = self.recording(clipLength=1, showOverlay=True, language="de")
        program.record(1.5)
        program.save()
        moment, notice = desktop.wait_until(lambda: monitor.calls("Notify"), 5, "the notice")[0]
        _, _, _, title, text, actions, hints, life = notice
        self.assertEqual(title, "Clip gespeichert")
        self.assertRegex(text, r"\d\d\.\d\d\.\d\d$")
        self.assertEqual(actions, [], "nothing is to be done about it")
        self.assertTrue(hints["transient"])
        end, _ = desktop.wait_until(lambda: monitor.calls("CloseNotification"), life / 1000 + 3, "the end of the notice")[0]
        self.assertGreater(end - moment, life / 1000 - 0.2)


if __name__ == "__main__":
    desktop.main()
