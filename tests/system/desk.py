# SPDX-License-Identifier: GPL-3.0-or-later
"""What every system test needs: the real program, the test scene, and waiting without fixed sleeps.

Tests run on the private desktop that tools/private-desktop starts; QUELTO_PROGRAM and QUELTO_SCENE name the programs.
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import threading
import time
import unittest

TEST_FOLDER = pathlib.Path(os.environ["QUELTO_TEST_DIR"])
SKIPPED = 77
# Of the scene's frames; more than these late, and the machine has other things to do.
BUSY_SHARE = 0.02


def wait_until(condition, seconds, what):
    """The condition's first true value; fails after so many seconds."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds} s in vain for {what}")
        time.sleep(0.02)


def run(*words, **options):
    """Runs a command and gives back what it printed."""
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True, **options).stdout


def press(keys="alt+shift+c"):
    run("xdotool", "key", keys)


def visible_windows(title):
    """Their numbers."""
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], capture_output=True,
                          text=True).stdout.split()


def active_window():
    """Its title; empty while none is."""
    return subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout.strip()


def close_window():
    """Quelto's window goes, as by its own button; the program stays."""
    wait_until(lambda: visible_windows("Quelto"), 5, "the window")
    # The window manager may not know it yet.
    wait_until(lambda: not subprocess.run(["wmctrl", "-F", "-c", "Quelto"]).returncode, 5, "the window to be closed")
    wait_until(lambda: not visible_windows("Quelto"), 5, "the window to go")


def sound_server(order):
    """kill | stop | start | restart | pause | resume"""
    run(os.environ["QUELTO_TEST_SOUND"], order)


class Scene:
    """The test scene. Frame n is shown n sixtieths of a second after `start`, a time of time.monotonic(). Once it has
    stopped it knows which frames it missed or drew late, and during which a processor stood still."""

    LEAD = 0.2

    def __init__(self, *options):
        self.process = subprocess.Popen([os.environ["QUELTO_SCENE"], *map(str, options)], stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, text=True)
        line = self.process.stdout.readline()
        if line.strip() != "scene ready":
            raise AssertionError("the scene did not start: " + self.process.stderr.read())
        self.start = time.monotonic() + self.LEAD
        self.missed, self.late, self.standstill = set(), set(), set()

    def stop(self):
        if self.process.returncode is not None:
            return
        self.process.terminate()
        _, report = self.process.communicate(timeout=10)
        found = re.search(r"missed:([\d ]*); late:([\d ]*); standstill:([\d ]*)", report)
        if found:
            self.missed, self.late, self.standstill = ({int(word) for word in part.split()} for part in found.groups())

    def excused(self):
        """Frames that a recording need not have, whatever recorded them."""
        # A frame that was drawn late shares its time with the next one.
        late = {frame + shift for frame in self.missed | self.late for shift in (-1, 0, 1)}
        # What was seen before it waits for its processor, and so does what comes while that is made up for.
        return late | {frame + shift for frame in self.standstill for shift in range(-2, 4)}


class Quelto:
    """The program under test, steered over its D-Bus interface."""

    NAME = "app.quelto.Quelto"
    PATH = "/app/quelto/Quelto"
    PROGRAM = os.environ.get("QUELTO_PROGRAM", "")

    def __init__(self, environment=None, **settings):
        """Settings are written before the start; one that is None stays out of the file."""
        self.folder = pathlib.Path(settings.setdefault("saveFolder", str(TEST_FOLDER / f"clips-{time.monotonic_ns()}")) or TEST_FOLDER / "Videos/Quelto")
        settings.setdefault("clipLength", 15)
        settings.setdefault("playSound", False)
        settings.setdefault("language", "tr")
        # The notice would stand in the picture whose frames are counted.
        settings.setdefault("showOverlay", False)
        self.write_settings(settings)
        self.log = TEST_FOLDER / "logs" / f"quelto-{time.monotonic_ns()}"
        self._environment = {**os.environ, **(environment or {})}
        self.saved, self.failed = [], []
        self._monitor = subprocess.Popen(["gdbus", "monitor", "--session", "--dest", self.NAME, "--object-path", self.PATH],
                                         stdout=subprocess.PIPE, text=True)
        self._listener = threading.Thread(target=self._listen, daemon=True)
        self._listener.start()
        self.start()

    def start(self):
        """Once more, after its end, with the settings as they stand in the file."""
        with open(self.log, "a") as log:
            self.started = time.monotonic()
            self.process = subprocess.Popen([self.PROGRAM], stdout=log, stderr=log, env=self._environment)

    settings_file = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "Quelto" / "Quelto.conf"

    @classmethod
    def write_settings(cls, settings):
        def text(value):
            return str(value).lower() if isinstance(value, bool) else str(value)

        cls.settings_file.parent.mkdir(parents=True, exist_ok=True)
        lines = [f"{key}={text(value)}\n" for key, value in settings.items() if value is not None]
        cls.settings_file.write_text("[General]\n" + "".join(lines))

    def _listen(self):
        for line in self._monitor.stdout:
            found = re.search(r"\.(ClipSaved|SaveFailed) \(['\"](.*)['\"],\)", line)
            if found:
                (self.saved if found[1] == "ClipSaved" else self.failed).append(found[2])

    def _gdbus(self, method, *arguments):
        return subprocess.run(["gdbus", "call", "--session", "--dest", self.NAME, "--object-path", self.PATH, "--method",
                               method, *map(str, arguments)], capture_output=True, text=True)

    def call(self, method, *arguments):
        result = self._gdbus(f"{self.NAME}.{method}", *arguments)
        if result.returncode:
            raise AssertionError(f"{method}: {result.stderr.strip()}; {self.said()}")

    def get(self, name):
        """A published property; None while the program does not answer."""
        result = self._gdbus("org.freedesktop.DBus.Properties.Get", self.NAME, name)
        found = re.match(r"\(<(.*)>,\)$", result.stdout.strip(), re.DOTALL)
        if not found:
            return None
        value = found[1]
        if value in ("true", "false"):
            return value == "true"
        return value[1:-1] if value[:1] in "'\"" else float(value)

    def set(self, key, value):
        if isinstance(value, bool):
            value = str(value).lower()
        elif isinstance(value, str):
            value = f"'{value}'"
        self.call("SetSetting", key, f"<{value}>")

    def said(self):
        return f"the program said: {self.log.read_text()[-2000:]}"

    def wait_for_state(self, wanted, seconds=15):
        def is_there():
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}; {self.said()}")
            state = self.get("State")
            if state == "error" and wanted != "error":
                raise AssertionError(f"state error: {self.get('Message')}; {self.said()}")
            return state == wanted

        wait_until(is_there, seconds, f"state {wanted}; {self.said()}")
        return time.monotonic()

    def record(self, seconds):
        """Waits until so much has been recorded. The one wait that is a length of time by its nature."""
        self.wait_for_state("recording")
        time.sleep(seconds)

    def wait_for_clips(self, count, seconds=20):
        """The paths of the clips that were announced so far, in order, once there are so many."""
        def has_come():
            if self.failed:
                raise AssertionError(f"a save failed: {self.failed}")
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}; {self.said()}")
            return len(self.saved) >= count

        wait_until(has_come, seconds, f"{count} clips, of which {len(self.saved)} came; {self.said()}")
        return [pathlib.Path(path) for path in self.saved]

    def save(self):
        """One clip, asked for over D-Bus."""
        count = len(self.saved)
        self.call("SaveClip")
        return self.wait_for_clips(count + 1)[count]

    def visible_clips(self):
        return sorted(path for path in self.folder.glob("*") if not path.name.startswith("."))

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                self.kill()
                raise AssertionError("the program does not end when it is told to")

    def stop(self):
        self.end()
        if self._monitor.poll() is None:
            self._monitor.terminate()
            self._monitor.wait()
            self._listener.join()
            self._monitor.stdout.close()


class DeskTest(unittest.TestCase):
    """Starts scene and program for one test and ends them after it."""

    def scene(self, *options):
        scene = Scene(*options)
        self.addCleanup(scene.stop)
        return scene

    def quelto(self, environment=None, **settings):
        program = Quelto(environment, **settings)
        self.addCleanup(program.stop)
        return program

    def x_server(self, size):
        """A second X server, of that size, which may die: its process and its name."""
        read, write = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{size}x24", "-nolisten", "tcp"],
                                  pass_fds=[write], stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        os.close(write)
        with os.fdopen(read) as number:
            return server, ":" + number.readline().strip()

    def assert_no_frame_lost(self, record):
        """`record` starts a scene, records it, stops it and gives back the scene and the clip's counters. Every frame
        that the scene showed in time has to be in the clip, once and in order.

        Where a processor stood still, what is missing elsewhere in that recording may come from it too, and it is tried
        again: what the program does by itself it does each time. Where the scene itself, an ordinary process with little
        to do, could not keep time, the machine was too busy to blame anybody: it is tried again as well, and in the end
        the test says so and does not count.
        """
        for _ in range(3):
            scene, counters = record()
            self.assertNotIn(None, counters, "a counter could not be read")
            steps = [(before, after) for before, after in zip(counters, counters[1:]) if after != before + 1]
            self.assertFalse([step for step in steps if step[1] < step[0]], "counters go backwards")
            excused = scene.excused()
            lost = [frame for before, after in steps for frame in range(before + 1, after) if frame not in excused]
            # Its first picture the scene shows twice: until it is ready, and with the first flash.
            repeated = [after for before, after in steps if after == before != 0 and after not in excused]
            own, still = len(scene.missed) + len(scene.late), len(scene.standstill)
            told = (f"{len(counters)} frames, lost {lost}, repeated {repeated}, late or missed by the scene {own}, "
                    f"a processor stood still during {still}")
            print(told)
            if not lost and not repeated:
                return
            is_busy = own > len(counters) * BUSY_SHARE
            if not is_busy and not still:
                break
        if is_busy:
            self.skipTest(f"the machine is too busy: {told}")
        self.fail(told)


def main():
    """unittest.main, with an exit code of its own where every test was skipped, so that ctest counts it as skipped."""
    program = unittest.main(exit=False, verbosity=2)
    result = program.result
    if result.wasSuccessful() and result.testsRun and len(result.skipped) == result.testsRun:
        sys.exit(SKIPPED)
    sys.exit(not result.wasSuccessful())
