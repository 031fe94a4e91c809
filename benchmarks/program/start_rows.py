# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for the start: from process start to the first frame in the window, and to `recording`."""
import pathlib
import statistics
import tempfile
import time

import gi

import clip_folder
import desktop
from rows import Row, SILENT

gi.require_version("Gdk", "3.0")
gi.require_version("Gio", "2.0")
from gi.repository import Gdk, Gio, GLib  # noqa: E402

PLACE = (340, 150, 1240, 780)
# The top of the sidebar with the tile in the accent colour: the window counts as shown when its contents are drawn.
SIDEBAR_TOP = (PLACE[0], PLACE[1], 60, 150)
ACCENT = bytes.fromhex("ff5a1f")
# The area of the first cards, and the card colour.
CARDS = (PLACE[0] + 270, PLACE[1] + 250, 300, 300)
CARD_COLOUR = bytes.fromhex("22222b")
CARD_SHARE = 0.05
POLL_SECONDS = 0.003
TIMEOUT_SECONDS = 60


def _share(area, colour):
    """The share of pixels in this area of the screen that have exactly this colour."""
    pixbuf = Gdk.pixbuf_get_from_window(Gdk.get_default_root_window(), *area)
    pixels, stride, depth = pixbuf.get_pixels(), pixbuf.get_rowstride(), pixbuf.get_n_channels()
    found = 0
    for row in range(pixbuf.get_height()):
        line = pixels[row * stride:row * stride + pixbuf.get_width() * depth]
        found += sum(line[place:place + 3] == colour for place in range(0, len(line), depth)) if colour in line else 0
    return found / (pixbuf.get_width() * pixbuf.get_height())


def _is_recording(bus):
    try:
        return bus.call_sync(desktop.Quelto.NAME, desktop.Quelto.PATH, "org.freedesktop.DBus.Properties", "Get",
                             GLib.Variant("(ss)", (desktop.Quelto.NAME, "State")), None, 0, 1000)[0] == "recording"
    except GLib.Error:
        return False


def _times(folder, has_clips):
    """Seconds to the first frame, to `recording` and, with clips, to the first cards."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    waits = {"frame": lambda: _share(SIDEBAR_TOP, ACCENT) > 0, "recording": lambda: _is_recording(bus)}
    if has_clips:
        waits["cards"] = lambda: _share(CARDS, CARD_COLOUR) > CARD_SHARE
    # The window of the previous run must be gone.
    desktop.wait_until(lambda: not _share(SIDEBAR_TOP, ACCENT), 5, "the previous window to close")
    program = desktop.Quelto(saveFolder=str(folder), **SILENT)
    try:
        times = {}
        while len(times) < len(waits):
            for name, is_there in waits.items():
                if name not in times and is_there():
                    times[name] = time.monotonic() - program.started
            if time.monotonic() - program.started > TIMEOUT_SECONDS:
                raise RuntimeError(f"not within {TIMEOUT_SECONDS} s: {set(waits) - set(times)}; {program.log_end()}")
            time.sleep(POLL_SECONDS)
        return times
    finally:
        program.stop()


def _row(options, work, clips):
    with tempfile.TemporaryDirectory(dir=desktop.TEST_FOLDER) as folder:
        clip_folder.put_many(pathlib.Path(folder), clips)
        # The first start loads the program into the page cache and does not count.
        _times(folder, clips > 0)
        runs = [_times(folder, clips > 0) for _ in range(max(5, options.runs))]
    medians = {name: 1000 * statistics.median(run[name] for run in runs) for name in runs[0]}
    worst = 1000 * max(run["frame"] for run in runs)
    cards = f", first cards after {medians['cards']:.0f} ms" if clips else ""
    return Row(work, f"first frame after {medians['frame']:.0f} ms{cards}", "",
               f"recording after {medians['recording']:.0f} ms; slowest first frame {worst:.0f} ms", "", True)


def start(options):
    return _row(options, "Start, no clips", 0)


def start_full(options):
    return _row(options, "Start, 10,000 clips", 10_000)


ALL = {row.__name__.replace("_", "-"): row for row in (start, start_full)}
