# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for the library screen: scrolling through 10,000 clips and its memory, without a GPU."""
import datetime
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import tempfile

from rows import Row

CLIPS = 10_000
DISTINCT_CLIPS = 24
BUDGET_FPS = 60
BUDGET_MB = 60


def _make_clips(folder):
    """Copies a few small real clips under many names and with many dates."""
    sources = pathlib.Path(folder, ".sources")
    sources.mkdir()
    files = []
    for number in range(DISTINCT_CLIPS):
        files.append(sources / f"{number}.mp4")
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=s=640x360:rate=2,hue=h={number * 15}",
                        "-t", "1", "-c:v", "libx264", "-crf", "38", "-pix_fmt", "yuv420p", files[-1]], check=True)
    tiers = ["", " [EFSANE 170] PENTAKILL", " [ORTA 45] Triple Kill", " [BASIT 15] Solo Kill"]
    start = datetime.datetime(2026, 3, 1, 23, 0, 0)
    for number in range(CLIPS):
        date = start - datetime.timedelta(minutes=41 * number)
        path = pathlib.Path(folder, f"Dota 2 - {date:%Y-%m-%d %H.%M.%S}{tiers[number % 4]}{' (9x16)' * (number % 50 == 7)}.mp4")
        shutil.copy(files[number % DISTINCT_CLIPS], path)
        os.utime(path, (date.timestamp(), date.timestamp()))


def _runs(options):
    if not hasattr(options, "library_screen_runs"):
        program = options.build / "benchmarks/library_screen/bench_library_screen"
        with tempfile.TemporaryDirectory() as folder:
            _make_clips(folder)
            options.library_screen_runs = [
                json.loads(subprocess.run([program, folder], check=True, capture_output=True, text=True).stdout)
                for _ in range(options.runs)]
    assert all(run["clips"] == CLIPS for run in options.library_screen_runs)
    return options.library_screen_runs


def _median(runs, *names):
    def value(run):
        for name in names:
            run = run[name]
        return run
    return statistics.median(value(run) for run in runs)


def library_fling(options):
    runs = _runs(options)
    fps = min(_median(runs, kind, "fps") for kind in ("fling", "drag"))
    figures = "; ".join(f"{word} {_median(runs, kind, 'fps'):.0f} frames/s, 99th percentile {_median(runs, kind, 'percentile99'):.0f} ms"
                     for kind, word in (("fling", "fling"), ("drag", "drag from end to end in 6 s")))
    return Row(f"Scrolling {CLIPS:,} clips, software rendering", figures, "", f"{fps:.0f} frames/s", f"{BUDGET_FPS} frames/s",
               fps >= BUDGET_FPS)


def library_memory(options):
    runs = _runs(options)
    empty, filled, after = (_median(runs, name) for name in ("empty", "filled", "after"))
    return Row(f"Memory of the window with {CLIPS:,} clips", f"{filled:.0f} MiB", f"{empty:.0f} MiB without clips",
               f"{filled - empty:.0f} MiB more; after scrolling {after:.0f} MiB", f"{BUDGET_MB} MiB more",
               filled - empty <= BUDGET_MB)


ALL = {"library-fling": library_fling, "library-memory": library_memory}
