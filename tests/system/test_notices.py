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


if __name__ == "__main__":
    desktop.main()
