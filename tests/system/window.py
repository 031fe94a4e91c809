# SPDX-License-Identifier: GPL-3.0-or-later
"""The base of tests of the program's window. They find items through the accessibility interface."""
import os
import pathlib
import re
import subprocess
import tempfile
import urllib.parse

import clip_folder
import desktop
import other_program
import screen_reader


class WindowTest(desktop.DesktopTest):
    def setUp(self):
        self.reader = screen_reader.ScreenReader()
        self.addCleanup(self.reader.close)
        self.folder = self.new_folder("clips")
        # The pointer must not be over anything that opens.
        screen_reader.move_pointer(1, 1)

    def new_folder(self, name):
        folder = pathlib.Path(tempfile.mkdtemp(dir=desktop.TEST_FOLDER)) / name
        folder.mkdir()
        return folder

    def put(self, stem, age=0, **size):
        return clip_folder.put_clip(self.folder, stem, age, **size)

    def window(self, environment=None, **settings):
        """Starts the program without recording, and waits for its window."""
        settings.setdefault("saveFolder", str(self.folder))
        program = self.quelto(environment, autoStart=False, **settings)
        self.addCleanup(self.assert_no_qml_errors, program)
        program.wait_for_state("idle")
        self.wait_for_window()
        return program

    def wait_for_window(self):
        """Waits until the window is active."""
        self.reader.find("frame", "Quelto", 10)
        desktop.wait_until(lambda: "active" in self.reader.find("frame", "Quelto").states, 5, "the window to become active")

    def assert_no_qml_errors(self, program):
        """The log is the only place where QML reports its errors."""
        self.assertNotIn("qrc:", program.log.read_text())

    def other_program(self, script, *arguments):
        program = other_program.OtherProgram(script, *arguments)
        self.addCleanup(program.stop)
        return program

    def command_in_path(self, name):
        """Replaces a command by one that writes its arguments to a file. Returns the environment for it and the file."""
        folder = self.new_folder("bin")
        notes = folder / "notes"
        script = folder / name
        script.write_text(f'#!/bin/sh\nprintf "%s\\n" "$*" >>"{notes}"\n')
        script.chmod(0o755)
        return {"PATH": f"{folder}:{os.environ['PATH']}"}, notes

    def drag(self, item, target, other):
        """Drags the item there and drops it when the other program reports the drag."""
        screen_reader.move_pointer(*item.middle)
        desktop.run("xdotool", "mousedown", 1)
        try:
            steps = [tuple(start + (end - start) * step // 12 for start, end in zip(item.middle, target)) for step in range(1, 13)]
            for place in steps:
                screen_reader.move_pointer(*place)

            def is_noticed():
                # A drag that has just begun finds the window at the next movement.
                for shift in (3, -3):
                    desktop.run("xdotool", "mousemove_relative", "--sync", "--", shift, 0)
                return other.printed("over")

            desktop.wait_until(is_noticed, 5, "the other program to notice the drag")
        finally:
            desktop.run("xdotool", "mouseup", 1)

    def assert_is_file(self, addresses, path):
        """The list holds the URI of this file only, and the URI is valid."""
        self.assertEqual(len(addresses), 1)
        self.assertRegex(addresses[0], r"^file://[A-Za-z0-9/%._~!$&'()*+,;=:@-]+$")
        self.assertEqual(urllib.parse.unquote(addresses[0]), f"file://{path}")

    def clipboard(self, form):
        return desktop.run("xclip", "-selection", "clipboard", "-o", "-t", form)

    def wait_for_count(self, place, count, seconds=5):
        """Waits until the sidebar's row for that place shows the count."""
        # Reading the parts of every card too would take longer than the program needs.
        return self.reader.find("push button", f"{place}, {count}", seconds, closed=("list item",))

    def frame(self):
        """The bounds of the window without its decoration."""
        return self.reader.find("frame", "Quelto").bounds

    def settled(self, size=None):
        """The window's bounds, or None while program and X server disagree or the size is another one."""
        bounds = self.frame()
        return bounds if size in (None, bounds[2:]) and self.frame_on_server() == bounds else None

    def frame_on_server(self):
        text = desktop.run("xwininfo", "-id", self.window_number())
        return tuple(int(re.search(rf"{what}: +(-?\d+)", text)[1])
                     for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def put_window(self, x, y, width, height):
        number = self.window_number()
        desktop.run("xdotool", "windowsize", "--sync", number, width, height)
        desktop.run("xdotool", "windowmove", "--sync", number, x, y)
        return desktop.wait_until(lambda: self.settled((width, height)), 5, "the window at its new place")

    def wait_for_width(self, width):
        """Waits until the window has settled at that width, and returns its bounds."""
        def found():
            bounds = self.reader.find("frame", "Quelto", 10) and self.settled()
            return bounds if bounds and bounds[2] == width else None

        return desktop.wait_until(found, 10, f"a window {width} wide")

    @staticmethod
    def set_maximised(is_maximised):
        desktop.run("wmctrl", "-r", "Quelto", "-b", f"{'add' if is_maximised else 'remove'},maximized_vert,maximized_horz")

    @staticmethod
    def window_number():
        return desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 5, "the window on the screen")[0]

    def restart(self, program):
        """Starts the program again and returns its window's bounds."""
        program.start()
        program.wait_for_state("idle")
        self.wait_for_window()
        return desktop.wait_until(self.settled, 5, "the window to settle")

    def saved_frame(self, program):
        found = re.search(r"QueltoMain=@Rect\((.*)\)", program.settings_file.read_text())
        return tuple(map(int, found[1].split())) if found else None

    def save_frame(self, program, *frame):
        """Replaces the frame that the program saved when it ended."""
        text = program.settings_file.read_text()
        changed = re.sub(r"QueltoMain=.*", f"QueltoMain=@Rect({' '.join(map(str, frame))})", text)
        self.assertNotEqual(changed, text, "no frame was saved")
        program.settings_file.write_text(changed)

    def wait_for_focus(self, name):
        def found():
            item = self.reader.focused()
            return item if item and re.fullmatch(name, item.name) else None

        try:
            return desktop.wait_until(found, 5, f"the focus on “{name}”")
        except AssertionError as error:
            raise AssertionError(f"{error}; it is on {self.reader.focused()}; the window has\n{self.reader.tree()}") from None

    def press_tab(self, before, key="Tab"):
        """Presses the key and returns the item that then has the focus instead of `before`."""
        def moved():
            item = self.reader.focused()
            return item if item and (not before or item.address != before.address) else None

        desktop.press(key)
        return desktop.wait_until(moved, 3, f"the focus to leave {before}")

    def tab_to(self, role, name, key="Tab"):
        """Presses Tab, or Shift+Tab, until an item with that role and name has the focus."""
        passed = []
        item = self.reader.focused()
        for _ in range(35):
            if item and item.role == role and re.fullmatch(name, item.name):
                return item
            passed.append(str(item))
            item = self.press_tab(item, key)
        raise AssertionError(f"{key} does not reach {role} “{name}”; it passed {passed}")

    def mount(self, *words):
        """Mounts until the test's end. The last word is the mount point."""
        if os.geteuid():
            self.skipTest("needs root, to mount")
        result = subprocess.run(["mount", *map(str, words)], capture_output=True, text=True)
        if result.returncode:
            self.skipTest(f"cannot mount: {result.stderr.strip()}")
        # Lazy, because a program may still have files open there.
        self.addCleanup(subprocess.run, ["umount", "--lazy", words[-1]], capture_output=True)
