# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for the watchers: CPU use without a game, and the cost of processing a game's data."""
import json
import os
import pathlib
import re
import statistics
import subprocess
import time

import desktop
import games
from rows import Row, SILENT, cpu_seconds

IDLE_SECONDS = 60
SETTLING_SECONDS = 3


def _home():
    """A home folder with Dota 2, World of Warcraft and an old combat log."""
    home = desktop.TEST_FOLDER / f"home-{time.monotonic_ns()}"
    games.install_dota(home)
    log = games.WowLog(games.install_wow(home))
    log.write_noise(10_000)
    os.utime(log.path, (time.time() - 86_400,) * 2)
    return home


def thread_seconds(pid):
    """CPU seconds by thread name, summed over threads of the same name."""
    seconds = {}
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        try:
            name = (task / "comm").read_text().strip()
            seconds[name] = seconds.get(name, 0) + int((task / "schedstat").read_text().split()[0]) / 1e9
        except FileNotFoundError:
            continue
    return seconds


class _HiddenProgram:
    """The program with its recorder stopped and its window hidden."""

    def __init__(self, **settings):
        self.program = desktop.Quelto({"HOME": str(_home())}, autoStart=False, showOverlay=False, **SILENT, **settings)
        self.program.wait_for_state("idle")
        desktop.wait_until(lambda: "Quelto" in desktop.run("wmctrl", "-l"), 5, "the window")
        desktop.close_window()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.program.stop()

    def share(self, seconds):
        """The CPU share of one core over a period, in total and by thread."""
        pid = self.program.process.pid
        before, threads = cpu_seconds(pid), thread_seconds(pid)
        time.sleep(seconds)
        after = thread_seconds(pid)
        return ((cpu_seconds(pid) - before) / seconds,
                {name: (after[name] - threads.get(name, 0)) / seconds for name in after})


def watchers_idle(options):
    shares = {True: [], False: []}
    threads = []
    with _HiddenProgram() as hidden:
        for _ in range(options.runs):
            for is_on in (True, False):
                hidden.program.set("autoClipEnabled", is_on)
                time.sleep(SETTLING_SECONDS)
                share, by_thread = hidden.share(IDLE_SECONDS)
                shares[is_on].append(share)
                if is_on:
                    threads.append(by_thread)
    on, off = (100 * statistics.median(shares[is_on]) for is_on in (True, False))
    by_watcher = ", ".join(f"{name} {100 * statistics.median(each[f'quelto.{name}'] for each in threads):.3f}"
                     for name in ("league", "dota", "wow"))
    return Row("Three watchers, no game", f"{on:.2f} % of a core ({by_watcher})", f"{off:.2f} % without them", f"{on - off:.2f} %",
               "0.3 %", on - off <= 0.3)


def _output(options, program, *words):
    return subprocess.run([options.build / "benchmarks/moments" / program, *map(str, words)], capture_output=True, text=True,
                          check=True).stdout


def combat_log(options):
    output = _output(options, "bench_log_throughput", "--runs", max(5, options.runs))
    ours, theirs, ratio = re.match(r"quelto (\d+) MB/s, grep (\d+) MB/s, ratio ([\d.]+)", output).groups()
    return Row("Combat log", f"{ours} MB/s", f"grep -F: {theirs} MB/s", ratio, "at least 0.25", float(ratio) >= 0.25)


def league_poll(options):
    output = _output(options, "bench_league_poll", "--benchmark_format=json", "--benchmark_repetitions=5",
                     "--benchmark_report_aggregates_only=true")
    medians = {each["run_name"]: each["cpu_time"] for each in json.loads(output)["benchmarks"]
               if each["aggregate_name"] == "median"}
    return Row("League poll of 300 KB", f"{medians['onePoll']:.1f} ms", f"Qt's JSON parser: {medians['parserAlone']:.1f} ms",
               f"{medians['onePoll'] / medians['parserAlone']:.2f}", "", True)


def dota_posts(options):
    output = _output(options, "bench_dota_posts", "--runs", max(5, options.runs))
    share, size, delay = re.match(r"([\d.]+) % of a core for ten posts of (\d+) bytes a second; response after ([\d.]+) ms",
                                  output).groups()
    return Row(f"Ten Dota posts of {int(size) // 1000} KB a second", f"{share} % of a core", "", f"response after {delay} ms",
               "", True)


ALL = {row.__name__.replace("_", "-"): row for row in (watchers_idle, combat_log, league_poll, dota_posts)}
