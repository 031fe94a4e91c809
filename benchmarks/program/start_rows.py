# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows of the start: from the new process to the first picture in its window, and to `recording`."""
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
# The head of the sidebar with the tile in the accent colour: the window is there only once its contents are.
HEAD = (PLACE[0], PLACE[1], 60, 150)
ACCENT = bytes.fromhex("ff5a1f")
# Where the first cards stand, and what they are made of.
CARDS = (PLACE[0] + 270, PLACE[1] + 250, 300, 300)
CARD = bytes.fromhex("22222b")
CARD_SHARE = 0.05
POLL_SECONDS = 0.003
LONGEST = 60


def _share(area, colour):
    """Of the pixels in that part of the screen, those of exactly that colour."""
    picture = Gdk.pixbuf_get_from_window(Gdk.get_default_root_window(), *area)
    pixels, stride, depth = picture.get_pixels(), picture.get_rowstride(), picture.get_n_channels()
    found = 0
    for row in range(picture.get_height()):
        line = pixels[row * stride:row * stride + picture.get_width() * depth]
        found += sum(line[place:place + 3] == colour for place in range(0, len(line), depth)) if colour in line else 0
    return found / (picture.get_width() * picture.get_height())


def _is_recording(bus):
    try:
        return bus.call_sync(desktop.Quelto.NAME, desktop.Quelto.PATH, "org.freedesktop.DBus.Properties", "Get",
                             GLib.Variant("(ss)", (desktop.Quelto.NAME, "State")), None, 0, 1000)[0] == "recording"
    except GLib.Error:
        return False


def _times(folder, has_clips):
    """Seconds to the first picture, to `recording`, and, where there are clips, to the first cards."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    waits = {"picture": lambda: _share(HEAD, ACCENT) > 0, "recording": lambda: _is_recording(bus)}
    if has_clips:
        waits["cards"] = lambda: _share(CARDS, CARD) > CARD_SHARE
    # A picture of the last run must not be taken for this one's.
    desktop.wait_until(lambda: not _share(HEAD, ACCENT), 5, "the last window to go")
    program = desktop.Quelto(saveFolder=str(folder), **SILENT)
    try:
        times = {}
        while len(times) < len(waits):
            for name, is_there in waits.items():
                if name not in times and is_there():
                    times[name] = time.monotonic() - program.started
            if time.monotonic() - program.started > LONGEST:
                raise RuntimeError(f"not within {LONGEST} s: {set(waits) - set(times)}; {program.log_end()}")
            time.sleep(POLL_SECONDS)
        return times
    finally:
        program.stop()


def _row(options, work, clips):
    with tempfile.TemporaryDirectory(dir=desktop.TEST_FOLDER) as folder:
        clip_folder.put_many(pathlib.Path(folder), clips)
        # The first start reads the program from the disk.
        _times(folder, clips > 0)
        runs = [_times(folder, clips > 0) for _ in range(max(5, options.runs))]
    medians = {name: 1000 * statistics.median(run[name] for run in runs) for name in runs[0]}
    worst = 1000 * max(run["picture"] for run in runs)
    cards = f", first cards after {medians['cards']:.0f} ms" if clips else ""
    return Row(work, f"first picture after {medians['picture']:.0f} ms{cards}", "",
               f"recording after {medians['recording']:.0f} ms; slowest picture {worst:.0f} ms", "", True)


def start(options):
    return _row(options, "Start, no clips", 0)


def start_full(options):
    return _row(options, "Start, 10,000 clips", 10_000)


ALL = {row.__name__.replace("_", "-"): row for row in (start, start_full)}
