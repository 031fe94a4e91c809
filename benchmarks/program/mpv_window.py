# SPDX-License-Identifier: GPL-3.0-or-later
"""The player that playback is compared with."""
import subprocess
import time

import desktop
import screen


class MpvWindow:
    """mpv in a window that fills this area of the screen, as large as the video in the program and at its place."""

    def __init__(self, video, *words):
        x, y, width, height = video
        self.video = video
        self.started = time.monotonic()
        self.process = subprocess.Popen(
            ["mpv", "--no-config", "--vo=x11", "--no-border", f"--geometry={width}x{height}+{x}+{y}", "--really-quiet", *words])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(10)
        desktop.wait_until(lambda: screen.counter(self.video) is None, 5, "the window to close")

    def first_frame(self, seconds):
        """Seconds from the start of the process to the first frame on the screen."""
        return screen.wait_for_counter(self.video, lambda _: True, seconds) - self.started
