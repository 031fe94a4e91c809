# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for the library: the time of a reload, compared with a tool that lists names, sizes and dates, and the time
of a letter typed in the search field."""
import json
import statistics
import subprocess
import tempfile
import time

from rows import Row

COUNTS = (1_000, 10_000, 100_000)
BUDGET_COUNT = 10_000
BUDGET_MS = 100
TYPING_COUNT = 100_000
TYPING_BUDGET_MS = 16


def _find_ms(folder):
    started = time.monotonic()
    subprocess.run(["find", folder, "-maxdepth", "1", "-type", "f", "-printf", r"%f %s %T@ %B@\n"], check=True,
                   stdout=subprocess.DEVNULL)
    return 1000 * (time.monotonic() - started)


def library_reload(options):
    program = options.build / "benchmarks/library/bench_library_reload"
    ours, theirs, stall, first = {}, {}, {}, {}
    for count in COUNTS:
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([program, "make", folder, str(count)], check=True)
            runs, peers = [], []
            for _ in range(options.runs):
                runs.append(json.loads(subprocess.run([program, "run", folder], check=True, capture_output=True, text=True).stdout))
                peers.append(_find_ms(folder))
            assert all(run["clips"] == count for run in runs)
            ours[count] = statistics.median(run["one change"] for run in runs)
            stall[count] = statistics.median(run["one change main"] for run in runs)
            first[count] = statistics.median(run["first"] for run in runs)
            theirs[count] = statistics.median(peers)

    def joined(values):
        return " / ".join(f"{values[count]:.1f}" for count in COUNTS)

    return Row("Reload of " + " / ".join(f"{count:,}" for count in COUNTS) + " clips",
               f"{joined(ours)} ms, first load {joined(first)} ms", f"find {joined(theirs)} ms", f"main thread {joined(stall)} ms",
               f"{BUDGET_MS} ms at {BUDGET_COUNT:,}", ours[BUDGET_COUNT] <= BUDGET_MS)


def library_typing(options):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([options.build / "benchmarks/library/bench_library_reload", "make", folder, str(TYPING_COUNT)], check=True)
        program = options.build / "benchmarks/library_screen/bench_library_typing"
        runs = [json.loads(subprocess.run([program, folder], check=True, capture_output=True, text=True).stdout)
                for _ in range(options.runs)]
    assert all(run["clips"] == TYPING_COUNT for run in runs)

    def median(action, figure):
        return statistics.median(run[action][figure] for run in runs)

    worst = median("keys", "worst")
    return Row(f"Letter typed in the search of {TYPING_COUNT:,} clips",
               f"main thread {median('keys', 'median'):.1f} ms, slowest {worst:.1f} ms; shown after {median('keys', 'shown'):.0f} ms, "
               f"slowest {median('keys', 'worst shown'):.0f} ms", "", f"new clip: main thread {median('new clip', 'median'):.1f} ms",
               f"{TYPING_BUDGET_MS} ms, slowest", worst <= TYPING_BUDGET_MS)


ALL = {"library-reload": library_reload, "library-typing": library_typing}
