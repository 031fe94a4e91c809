# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests of the program's window, in which things are found as a screen reader finds them."""
import os
import pathlib
import re
import subprocess
import tempfile

import clip_folder
import desk
import neighbour
import screen_reader


class WindowTest(desk.DeskTest):
    def setUp(self):
        self.reader = screen_reader.ScreenReader()
        self.addCleanup(self.reader.close)
        self.folder = self.new_folder("clips")
        # Where nothing that opens by keyboard comes to stand below it.
        screen_reader.move_pointer(1, 1)

    def new_folder(self, name):
        folder = pathlib.Path(tempfile.mkdtemp(dir=desk.TEST_FOLDER)) / name
        folder.mkdir()
        return folder

    def put(self, stem, age=0, **size):
        return clip_folder.put_clip(self.folder, stem, age, **size)

    def window(self, environment=None, **settings):
        """The program with its recorder stopped and its window in front."""
        settings.setdefault("saveFolder", str(self.folder))
        program = self.quelto(environment, autoStart=False, **settings)
        self.addCleanup(self.assert_quiet, program)
        program.wait_for_state("idle")
        self.wait_for_window()
        return program

    def wait_for_window(self):
        """Until it is in front."""
        self.reader.find("frame", "Quelto", 10)
        desk.wait_until(lambda: "active" in self.reader.find("frame", "Quelto").states, 5, "the window in front")

    def assert_quiet(self, program):
        """What the window's description cannot do is only said in the log."""
        self.assertNotIn("qrc:", program.log.read_text())

    def neighbour(self, script, *arguments):
        program = neighbour.Neighbour(script, *arguments)
        self.addCleanup(program.stop)
        return program

    def command_in_path(self, name):
        """An environment in which that command only notes what it was called with, and the file of the notes."""
        folder = self.new_folder("bin")
        notes = folder / "notes"
        script = folder / name
        script.write_text(f'#!/bin/sh\nprintf "%s\\n" "$*" >>"{notes}"\n')
        script.chmod(0o755)
        return {"PATH": f"{folder}:{os.environ['PATH']}"}, notes

    def wait_for_count(self, place, count, seconds=5):
        """The sidebar's row of that place shows so many."""
        # Asking for every card as well would take longer than the program does.
        return self.reader.find("push button", f"{place}, {count}", seconds, closed=("list",))

    def frame(self):
        """The place of the window's contents."""
        return self.reader.find("frame", "Quelto").bounds

    def settled(self, size=None):
        """The window's place, if program and X server agree on it and it has that size."""
        bounds = self.frame()
        return bounds if size in (None, bounds[2:]) and self.frame_on_server() == bounds else None

    def frame_on_server(self):
        text = desk.run("xwininfo", "-id", self.window_number())
        return tuple(int(re.search(rf"{what}: +(-?\d+)", text)[1])
                     for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def put_window(self, x, y, width, height):
        number = self.window_number()
        desk.run("xdotool", "windowsize", "--sync", number, width, height)
        desk.run("xdotool", "windowmove", "--sync", number, x, y)
        return desk.wait_until(lambda: self.settled((width, height)), 5, "the window in its new place")

    def wait_for_width(self, width):
        """The window's place, once it is that wide and stays where it is."""
        def found():
            bounds = self.reader.find("frame", "Quelto", 10) and self.settled()
            return bounds if bounds and bounds[2] == width else None

        return desk.wait_until(found, 10, f"a window {width} wide")

    @staticmethod
    def set_maximised(is_maximised):
        desk.run("wmctrl", "-r", "Quelto", "-b", f"{'add' if is_maximised else 'remove'},maximized_vert,maximized_horz")

    @staticmethod
    def activate(program):
        """Shows the window as a second start of the program does."""
        desk.run("gdbus", "call", "--session", "--dest", program.NAME, "--object-path", program.PATH, "--method",
                 "org.freedesktop.Application.Activate", "{}")

    @staticmethod
    def window_number():
        return desk.wait_until(lambda: desk.visible_windows("Quelto"), 5, "the window on the screen")[0]

    def again(self, program):
        """The window's place at the next start."""
        program.start()
        program.wait_for_state("idle")
        self.wait_for_window()
        return desk.wait_until(self.settled, 5, "the window in its place")

    def saved_frame(self, program):
        found = re.search(r"QueltoMain=@Rect\((.*)\)", program.settings_file.read_text())
        return tuple(map(int, found[1].split())) if found else None

    def save_frame(self, program, *frame):
        """In place of the one that the program saved at its end."""
        text = program.settings_file.read_text()
        changed = re.sub(r"QueltoMain=.*", f"QueltoMain=@Rect({' '.join(map(str, frame))})", text)
        self.assertNotEqual(changed, text, "no frame was saved")
        program.settings_file.write_text(changed)

    def wait_for_focus(self, name):
        def is_there():
            item = self.reader.focused()
            return item if item and re.fullmatch(name, item.name) else None

        try:
            return desk.wait_until(is_there, 5, f"the focus on “{name}”")
        except AssertionError as error:
            raise AssertionError(f"{error}; it is on {self.reader.focused()}; there is\n{self.reader.tree()}") from None

    def tab_to(self, role, name):
        """Goes on with Tab until such an item has the focus."""
        passed = []
        for _ in range(30):
            before = self.reader.focused()
            if before and before.role == role and re.fullmatch(name, before.name):
                return before
            passed.append(str(before))
            desk.press("Tab")
            desk.wait_until(lambda: self.reader.focused() != before, 3, f"the focus to go on from {before}")
        raise AssertionError(f"no {role} “{name}” on the way: {passed}")

    def mount(self, *words):
        """Until the test's end; the last word is the place."""
        if os.geteuid():
            self.skipTest("only root may mount")
        result = subprocess.run(["mount", *map(str, words)], capture_output=True, text=True)
        if result.returncode:
            self.skipTest(f"this machine does not let us mount: {result.stderr.strip()}")
        # Whatever still looks at it, nothing stays mounted.
        self.addCleanup(subprocess.run, ["umount", "--lazy", words[-1]], capture_output=True)
