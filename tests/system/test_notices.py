#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the program tells its user outside of its window: in dialogs and desktop notifications."""
import os
import signal
import subprocess

import desktop
import notifications


class OutOfRangeSetting(desktop.DesktopTest):
    """A number in the settings file that ends the program."""

    def start(self, **environment):
        desktop.Quelto.write_settings({"language": "de", "hotkeyCode": -1})
        settings = {key: value for key, value in {**os.environ, **environment}.items() if value is not None}
        program = subprocess.Popen([desktop.Quelto.PROGRAM], env=settings, stderr=subprocess.PIPE, text=True)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        return program

    def assert_ended(self, program):
        _, errors = program.communicate(timeout=10)
        self.assertEqual(program.returncode, -signal.SIGABRT)
        self.assertIn(f"hotkeyCode=-1 is out of range in {desktop.Quelto.settings_file}", errors)

    def test_is_shown_in_a_dialog(self):
        program = self.start()
        dialog = desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 10, "the dialog")[0]
        self.assertIsNone(program.poll())
        desktop.run("xdotool", "windowactivate", "--sync", dialog, "key", "--clearmodifiers", "Escape")
        self.assert_ended(program)

    def test_is_shown_as_a_notification_without_a_display(self):
        monitor = notifications.NotificationMonitor()
        self.addCleanup(monitor.stop)
        program = self.start(DISPLAY=None, WAYLAND_DISPLAY=None, QT_QPA_PLATFORM=None)
        notification = monitor.wait(10)
        self.assertEqual(notification.title, "Ungültiger Wert in der Einstellungsdatei")
        for part in ("hotkeyCode", "-1", str(desktop.Quelto.settings_file)):
            self.assertIn(part, notification.body)
        self.assertEqual(notification.actions, [])
        self.assert_ended(program)

    def test_may_be_corrected_while_the_dialog_is_open(self):
        self.start()
        dialog = desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 10, "the dialog")[0]
        desktop.Quelto.write_settings({"language": "de", "autoStart": False, "saveFolder": desktop.TEST_FOLDER / "clips"})
        desktop.run("xdotool", "windowactivate", "--sync", dialog, "key", "--clearmodifiers", "Escape")
        desktop.wait_until(lambda: desktop.bus_answers("app.quelto.Quelto", "/app/quelto/Quelto"), 10, "the program")


class ClosedWindow(desktop.DesktopTest):
    """The private desktop has no status area, so nothing shows that the program goes on."""

    def setUp(self):
        self.monitor = notifications.NotificationMonitor()
        self.addCleanup(self.monitor.stop)

    def start(self, **settings):
        program = self.quelto(language="en", **{"windows/ToldAboutBackground": None, **settings})
        program.wait_for_state("recording" if settings.get("autoStart", True) else "idle")
        return program

    def test_is_explained_once(self):
        program = self.start()
        desktop.close_window()
        notification = self.monitor.wait(5)
        self.assertEqual(notification.title, "Quelto keeps recording")
        self.assertIn("Start Quelto again", notification.body)
        self.assertIn("Quit Quelto", notification.body)
        self.assertEqual(notification.actions, ["default", "Open Quelto"])
        self.monitor.click()
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 5, "the window after the click")
        desktop.close_window()
        program.end()
        program.start()
        program.wait_for_state("recording")
        desktop.close_window()
        program.end()
        self.assertEqual(len(self.monitor.all), 1, "it was shown again")

    def test_says_only_that_the_program_runs_if_it_does_not_record(self):
        self.start(autoStart=False)
        desktop.close_window()
        self.assertEqual(self.monitor.wait(5).title, "Quelto keeps running")

    def test_is_not_explained_when_the_program_quits(self):
        program = self.start(autoStart=False)
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 5, "the window")
        program.end()
        self.assertEqual(self.monitor.all, [])


if __name__ == "__main__":
    desktop.main()
