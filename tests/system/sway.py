# SPDX-License-Identifier: GPL-3.0-or-later
"""A Wayland compositor without a screen, windows on it, and what it shows."""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading

import desktop

WINDOW = pathlib.Path(__file__).parent.parent / "platform" / "wayland" / "wayland_window.py"
CONFIGURATION = """xwayland disable
focus_on_window_activation focus
"""
NOBODY = 65534


def is_installed():
    return all(shutil.which(name) for name in ("sway", "swaymsg", "grim", "wtype"))


class Sway:
    """A running compositor. `environment` makes a program use it."""

    def __init__(self):
        # Outside the test's folder, which only its owner may enter.
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="quelto-sway-"))
        (self._folder / "config").write_text(CONFIGURATION)
        command = ["setpriv", "--pdeathsig", "KILL"]
        if os.geteuid() == 0:
            # It refuses to run as root.
            os.chown(self._folder, NOBODY, NOBODY)
            command += [f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        command += ["sway", "-c", str(self._folder / "config")]
        environment = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment.update(XDG_RUNTIME_DIR=str(self._folder), WLR_BACKENDS="headless", WLR_RENDERER="pixman",
                           WLR_LIBINPUT_NO_DEVICES="1")
        self._keyboard = None
        self._log = open(desktop.TEST_FOLDER / "logs" / "sway", "w")
        self._process = subprocess.Popen(command, env=environment, stdout=self._log, stderr=self._log)
        desktop.wait_until(lambda: self._sockets("sway-ipc.*.sock") and self._sockets("wayland-*"), 30, "the compositor")
        self.environment = {"WAYLAND_DISPLAY": str(self._sockets("wayland-*")[0]), "QT_QPA_PLATFORM": "wayland",
                            "XDG_SESSION_TYPE": "wayland"}

    def _sockets(self, pattern):
        return [path for path in self._folder.glob(pattern) if path.suffix != ".lock"]

    def stop(self):
        if self._keyboard:
            self._keyboard.terminate()
            self._keyboard.wait(10)
        self._process.kill()
        self._process.wait(10)
        self._log.close()
        shutil.rmtree(self._folder, ignore_errors=True)

    def message(self, *words):
        return desktop.run("swaymsg", "-r", "-s", self._sockets("sway-ipc.*.sock")[0], *words)

    def press_keys(self):
        """Presses Space in the focused window from time to time: a window can miss the first key of a new keyboard. There
        is no keyboard before, and it stays until stop()."""
        self._keyboard = subprocess.Popen(["wtype", *["-s", "200", "-k", "space"] * 20, "-s", "100000"],
                                          env={**os.environ, **self.environment})

    def windows(self):
        """The application ids of all windows, with whether they have the focus."""
        found = {}

        def visit(node):
            if node.get("app_id"):
                found[node["app_id"]] = node["focused"]
            for child in node["nodes"] + node["floating_nodes"]:
                visit(child)

        visit(json.loads(self.message("-t", "get_tree")))
        return found

    def wait_for_focus(self, application):
        desktop.wait_until(lambda: self.windows().get(application), 10, f"the focus of {application}; {self.windows()}")

    def pixel(self, x, y):
        """The colour at this place of the screen, as red, green and blue."""
        picture = subprocess.run(["grim", "-t", "ppm", "-g", f"{x},{y} 1x1", "-"], check=True, capture_output=True,
                                 env={**os.environ, **self.environment}).stdout
        return tuple(picture[-3:])

    def size(self):
        """The width and height of the screen."""
        mode = json.loads(self.message("-t", "get_outputs"))[0]["rect"]
        return mode["width"], mode["height"]


class Window:
    """A window of another program."""

    def __init__(self, compositor, application, title):
        self._compositor = compositor
        self._process = subprocess.Popen([sys.executable, "-B", WINDOW, "wayland", application, title], text=True,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         env={**os.environ, **compositor.environment})
        self._lines = []
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self._wait_for("shown")

    def _read(self):
        for line in self._process.stdout:
            self._lines.append(line.rstrip("\n"))

    def _wait_for(self, word):
        """The rest of the first line that begins with that word."""
        return desktop.wait_until(lambda: [line[len(word):].strip() for line in list(self._lines) if line.startswith(word)],
                                  20, f"“{word}” from the window, which said {self._lines}")[0]

    def activation_token(self):
        """A token with which the compositor lets a program raise its window. It gives one only for a key press."""
        self._compositor.press_keys()
        self._wait_for("key")
        self._process.stdin.write("?token\n")
        self._process.stdin.flush()
        return self._wait_for("token")

    def close(self):
        self._process.stdin.close()
        self._process.wait(10)
        self._reader.join()
        self._process.stdout.close()
