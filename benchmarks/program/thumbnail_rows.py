# SPDX-License-Identifier: GPL-3.0-or-later
"""The row for thumbnails: the time to read one from a clip."""
import statistics
import subprocess
import time

import desktop
import peers
from rows import Row

REPETITIONS = 20


def _seconds(run, *words):
    started = time.monotonic()
    run(*words)
    return time.monotonic() - started


def thumbnail(options):
    program = options.build / "benchmarks/thumbnails/bench_thumbnail"
    folder = desktop.TEST_FOLDER
    clip = folder / "thirty-seconds.mp4"
    peers.make_clip(clip, 30)

    def read(count):
        return subprocess.run([program, clip, folder / "ours.png", str(count)], check=True, capture_output=True, text=True).stdout

    ours, theirs, inside = [], [], []
    for _ in range(max(5, options.runs)):
        ours.append(_seconds(read, 1))
        theirs.append(_seconds(peers.thumbnail, clip, folder / "theirs.png"))
        inside.append(float(read(REPETITIONS)))
    clip.unlink()
    ratio = statistics.median(a / b for a, b in zip(ours, theirs))
    return Row("Thumbnail of a clip, 30 s of 1080p60", f"{1000 * statistics.median(ours):.0f} ms as a process, "
               f"{statistics.median(inside):.1f} ms within a process", f"{1000 * statistics.median(theirs):.0f} ms", f"{ratio:.2f}", "", True)


ALL = {"thumbnail": thumbnail}
