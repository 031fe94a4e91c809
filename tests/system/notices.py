# SPDX-License-Identifier: GPL-3.0-or-later
"""Listens to what is notified over the session bus, and clicks on it."""
import dataclasses
import re
import subprocess
import threading
import time

import desk


@dataclasses.dataclass
class Notice:
    title: str
    body: str
    actions: list
    time: float


class Notices:
    """Every notification since it was made; what was shown before is gone."""

    MARK = "member=Notify"

    def __init__(self):
        desk.run("dunstctl", "close-all")
        self.all = []
        self._monitor = subprocess.Popen(
            ["dbus-monitor", "--session", "type='method_call',interface='org.freedesktop.Notifications',member='Notify'"],
            stdout=subprocess.PIPE, text=True)
        # It says so when it listens.
        self._monitor.stdout.readline()
        self._listener = threading.Thread(target=self._listen, daemon=True)
        self._listener.start()

    def _listen(self):
        lines = None
        for line in self._monitor.stdout:
            if self.MARK in line:
                lines = []
            elif lines is not None:
                lines.append(line)
                # The timeout comes last.
                if re.match(r"   int32 ", line):
                    self.all.append(self._notice(lines))
                    lines = None

    @staticmethod
    def _notice(lines):
        top = [found[1] for found in (re.match(r'   string "(.*)"$', line) for line in lines) if found]
        start = next(index for index, line in enumerate(lines) if re.match(r"   array \[", line))
        end = next(index for index, line in enumerate(lines) if index > start and re.match(r"   \]", line))
        actions = [found[1] for found in (re.match(r'      string "(.*)"$', line) for line in lines[start:end]) if found]
        _, _, title, body = top[:4]
        return Notice(title, body, actions, time.monotonic())

    def wait(self, seconds):
        """The first notice, once it has come."""
        return desk.wait_until(lambda: self.all and self.all[0], seconds, "a notification")

    @staticmethod
    def click():
        """The default action of the notice that is on the screen."""
        desk.wait_until(lambda: desk.run("dunstctl", "count", "displayed").strip() != "0", 3, "a notice on the screen")
        desk.run("dunstctl", "action", "0")

    def stop(self):
        if self._monitor.poll() is None:
            self._monitor.terminate()
            self._monitor.wait()
            self._listener.join()
            self._monitor.stdout.close()
