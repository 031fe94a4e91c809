# SPDX-License-Identifier: GPL-3.0-or-later
"""Helper programs that stand for other programs on the desktop. They print what they receive."""
import pathlib
import subprocess
import sys
import threading

import desktop


class OtherProgram:
    """A running helper program that has printed `ready`. `lines` holds its output so far."""

    def __init__(self, script, *arguments):
        self.lines = []
        self._process = subprocess.Popen(
            [sys.executable, "-B", pathlib.Path(__file__).parent / script, *map(str, arguments)], stdout=subprocess.PIPE,
            text=True)
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.wait_for("ready", 10)

    def _read(self):
        for line in self._process.stdout:
            self.lines.append(line.rstrip("\n"))

    def printed(self, word):
        """The rest of each line that begins with that word."""
        return [line[len(word) + 1:] for line in list(self.lines) if line.split(" ", 1)[0] == word]

    def wait_for(self, word, seconds=5):
        return desktop.wait_until(lambda: self.printed(word), seconds, f"“{word}” from the other program, which printed {self.lines}")

    def stop(self):
        if self._process.poll() is None:
            self._process.terminate()
            self._process.wait(10)
            self._reader.join()
            self._process.stdout.close()
