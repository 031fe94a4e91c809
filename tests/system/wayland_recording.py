# SPDX-License-Identifier: GPL-3.0-or-later
"""The base of the tests of recordings on the desktop of tools/private-wayland."""
import os
import pathlib

import desktop
import portal_dialogs
import wayland

SIZE = (640, 360)
TOKEN_FILE = pathlib.Path(os.environ["XDG_STATE_HOME"]) / "Quelto/screen.token"


class WaylandRecordingTest(desktop.DesktopTest):
    def setUp(self):
        self.forget_the_screen()

    @staticmethod
    def forget_the_screen():
        TOKEN_FILE.unlink(missing_ok=True)

    @staticmethod
    def permit_the_screen():
        """What remains of a dialog that the user answered earlier."""
        TOKEN_FILE.parent.mkdir(parents=True, exist_ok=True)
        TOKEN_FILE.write_text(wayland.new_token())
        TOKEN_FILE.chmod(0o600)

    def english(self, **settings):
        return self.quelto(language="en", **settings)

    def recording(self, **settings):
        """The program, recording without a dialog. A scene that starts now covers its window."""
        self.permit_the_screen()
        program = self.english(**settings)
        program.wait_for_state("recording")
        return program

    @staticmethod
    def wait_for_end_of_dialog():
        desktop.wait_until(lambda: not portal_dialogs.is_screen_cast_asked(), 5, "the end of the dialog")

    def assert_silent(self, program):
        """The program records without asking."""
        program.wait_for_state("recording")
        self.assertFalse(portal_dialogs.is_screen_cast_asked())
