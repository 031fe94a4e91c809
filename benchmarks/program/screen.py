# SPDX-License-Identifier: GPL-3.0-or-later
"""What the screen shows, read from the X server as any program can, and input from mouse and keyboard."""
import subprocess
import time

import gi
import numpy

import clip

gi.require_version("Gdk", "3.0")
from gi.repository import Gdk  # noqa: E402

POLL_SECONDS = 0.001


def pixels(x, y, width, height):
    """This area of the screen as an array of rows of red, green and blue."""
    pixbuf = Gdk.pixbuf_get_from_window(Gdk.get_default_root_window(), x, y, width, height)
    stride, depth = pixbuf.get_rowstride(), pixbuf.get_n_channels()
    # The last row may end without the padding of the others.
    raw = pixbuf.get_pixels().ljust(stride * height, b"\0")
    return numpy.frombuffer(raw, numpy.uint8).reshape(height, stride)[:, :width * depth].reshape(height, width, depth)


def counter(video):
    """The scene's counter in a video that fills this area of the screen; None if it cannot be read."""
    x, y, width, height = video
    return clip.read_counter(pixels(x, y + height // 32, width, 1).mean(axis=2))


def wait_for_counter(video, is_wanted, seconds):
    """Waits until the video shows a counter that is wanted, and returns the time of time.monotonic() then."""
    deadline = time.monotonic() + seconds
    while True:
        shown = counter(video)
        now = time.monotonic()
        if shown is not None and is_wanted(shown):
            return now
        if now > deadline:
            raise RuntimeError(f"the screen does not show the wanted picture within {seconds} s, but {shown}")
        time.sleep(POLL_SECONDS)


class Input:
    """Mouse and keys, without the start of a process for each."""

    def __init__(self):
        self._process = subprocess.Popen(["xdotool", "-"], stdin=subprocess.PIPE, text=True)

    def close(self):
        self._process.stdin.close()
        self._process.wait(5)

    def _do(self, words):
        self._process.stdin.write(words + "\n")
        self._process.stdin.flush()

    def move(self, x, y):
        self._do(f"mousemove {x} {y}")

    def click(self):
        self._do("click 1")

    def press(self, key):
        self._do(f"key {key}")
