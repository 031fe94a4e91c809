# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for playback, against mpv with the same file, the same size of the video and drawing by the processor: the
time to the first frame, the time of a seek, CPU time, and the frames that a recording loses meanwhile."""
import json
import os
import pathlib
import random
import shutil
import socket
import statistics
import subprocess
import time

import clip
import desktop
import screen
from mpv_window import MpvWindow
from rows import SILENT, Recording, Row, cpu_seconds, lost_frames, wait_for_rest

# Places on the screen, in the window of the default size that the window manager centres.
CARD = (760, 370)
VIDEO = (624, 261, 599, 337)
CLIP_SECONDS = 30
SEEKS = 50
PLAYED_SECONDS = 10
FPS = 60
# A quarter of the time of a frame.
WATCH_SECONDS = 1 / (4 * FPS)
TIMEOUT_SECONDS = 20


def _clip(options):
    """A recording of the moving scene with all tracks, alone in a folder."""
    if not hasattr(options, "played_clip"):
        folder = desktop.TEST_FOLDER / "played"
        folder.mkdir()
        with Recording("--tone", 440, "--mic-tone", 700, clipLength=CLIP_SECONDS) as running:
            time.sleep(CLIP_SECONDS + 2)
            options.played_clip = pathlib.Path(shutil.move(running.program.save(), folder))
    return options.played_clip


class _Program:
    """The program with one clip, before the click on its card."""

    def __init__(self, path, **settings):
        self.program = desktop.Quelto(**{"saveFolder": str(path.parent), "autoStart": False, **SILENT, **settings})
        self._input = screen.Input()

    def __enter__(self):
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), TIMEOUT_SECONDS, "the window")
        self._input.move(*CARD)
        wait_for_rest(self.program.process.pid)
        return self

    def __exit__(self, *_):
        self._input.close()
        self.program.stop()
        desktop.wait_until(lambda: screen.counter(VIDEO) is None, 5, "the window to close")

    def open_clip(self):
        """Seconds from the click to the first frame on the screen."""
        assert screen.counter(VIDEO) is None
        clicked = time.monotonic()
        self._input.click()
        return screen.wait_for_counter(VIDEO, lambda _: True, TIMEOUT_SECONDS) - clicked

    def close_clip(self):
        desktop.press("Escape")
        desktop.wait_until(lambda: screen.counter(VIDEO) is None, 5, "the clip to close")
        wait_for_rest(self.program.process.pid)


def _mpv_first_frame(path):
    with MpvWindow(VIDEO, path) as mpv:
        return mpv.first_frame(TIMEOUT_SECONDS)


def _medians(runs):
    return [statistics.median(values) for values in zip(*runs)]


def first_frame(options):
    path = _clip(options)
    runs = []
    # The first run loads the programs into the page cache and does not count.
    for _ in range(1 + max(5, options.runs)):
        with _Program(path) as running:
            first = running.open_clip()
            running.close_clip()
            again = running.open_clip()
        theirs = _mpv_first_frame(path)
        runs.append((first, again, theirs, first / theirs))
    first, again, theirs, ratio = _medians(runs[1:])
    return Row("First frame of a clip, 30 s of 1080p60", f"{1000 * first:.0f} ms after the click, {1000 * again:.0f} ms for the second clip",
               f"{1000 * theirs:.0f} ms after its start", f"{ratio:.2f}", "1.0", ratio <= 1)


def _targets(path):
    """Times of random frames and their counters, no frame twice in a row."""
    frames = {}
    for counter, at in clip.Clip(path).shown:
        frames.setdefault(counter, at)
    chance = random.Random(1)
    return [(frames[counter], counter) for counter in chance.sample(sorted(frames), SEEKS)]


def _our_seeks(options, path, targets):
    program = options.build / "benchmarks/playback/bench_seek"
    words = [program, path, f"{VIDEO[2]}x{VIDEO[3]}", *(f"{at}:{counter}" for at, counter in targets)]
    return statistics.median(json.loads(subprocess.run(words, check=True, capture_output=True, text=True).stdout))


def _mpv_seeks(path, targets):
    """Median milliseconds to the event for a finished seek, and to the right picture on the screen."""
    address = desktop.TEST_FOLDER / "mpv.socket"
    with MpvWindow(VIDEO, path, "--pause", "--hr-seek=yes", f"--input-ipc-server={address}") as mpv:
        mpv.first_frame(TIMEOUT_SECONDS)
        with socket.socket(socket.AF_UNIX) as connection:
            connection.connect(str(address))
            connection.settimeout(TIMEOUT_SECONDS)
            events, shown = [], []
            with connection.makefile("r") as lines:
                for at, counter in targets:
                    started = time.monotonic()
                    connection.sendall(json.dumps({"command": ["seek", at, "absolute+exact"]}).encode() + b"\n")
                    while json.loads(lines.readline()).get("event") != "playback-restart":
                        pass
                    events.append(1000 * (time.monotonic() - started))
                    found = screen.wait_for_counter(VIDEO, lambda number, wanted=counter: number == wanted, TIMEOUT_SECONDS)
                    shown.append(1000 * (found - started))
    address.unlink(missing_ok=True)
    return statistics.median(events), statistics.median(shown)


def _seek_row(options, path, work):
    targets = _targets(path)
    runs = []
    for _ in range(options.runs):
        ours = _our_seeks(options, path, targets)
        theirs, shown = _mpv_seeks(path, targets)
        runs.append((ours, theirs, shown, ours / theirs))
    ours, theirs, shown, ratio = _medians(runs)
    return Row(work, f"{ours:.0f} ms", f"{theirs:.0f} ms, on the screen {shown:.0f} ms", f"{ratio:.2f}", "1.1", ratio <= 1.1)


def seek(options):
    path = _clip(options)
    sparse = desktop.TEST_FOLDER / "sparse.mp4"
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", path, "-map", "0", "-c", "copy", "-c:v", "libx264", "-preset", "ultrafast",
                    "-crf", "23", "-g", "300", "-bf", "0", "-sc_threshold", "0", "-fps_mode", "passthrough", sparse], check=True)
    rows = [_seek_row(options, path, f"Exact seek in 1080p60, median of {SEEKS}"),
            _seek_row(options, sparse, "The same with a key frame every 300 frames")]
    sparse.unlink()
    return rows


def _group_cpu_seconds(pid):
    """User and system time of a process and all that it started and that still run, with the time of those that ended."""
    parents = {}
    for entry in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            fields = entry.read_text().rsplit(")", 1)[1].split()
        except OSError:
            continue
        parents[int(entry.parent.name)] = (int(fields[1]), sum(map(int, fields[11:15])) / os.sysconf("SC_CLK_TCK"))
    group, size = {pid}, 0
    while len(group) > size:
        size = len(group)
        group |= {process for process, (parent, _) in parents.items() if parent in group}
    return sum(parents[process][1] for process in group if process in parents)


def _play(seconds):
    """Watches the playing clip for that time. Returns the share of the frames of that time that appeared on the screen."""
    seen = {screen.counter(VIDEO)}
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        time.sleep(WATCH_SECONDS)
        seen.add(screen.counter(VIDEO))
    shown = len(seen - {None}) / (seconds * FPS + 1)
    if shown < 0.5:
        raise RuntimeError(f"the screen shows only {100 * shown:.0f} % of the frames")
    return shown


def _wait_until_played(seconds):
    """Until the shown clip is that far from where it is now."""
    goal = screen.counter(VIDEO) + FPS * seconds
    screen.wait_for_counter(VIDEO, lambda number: number >= goal, TIMEOUT_SECONDS)


def _play_for_cpu(process):
    """CPU seconds a second of the player, and of the X server meanwhile, and the share of frames shown."""
    server = int(os.environ["QUELTO_TEST_X_PID"])
    _wait_until_played(2)
    before = _group_cpu_seconds(process.pid), cpu_seconds(server)
    shown = _play(PLAYED_SECONDS)
    after = _group_cpu_seconds(process.pid), cpu_seconds(server)
    return *((end - start) / PLAYED_SECONDS for start, end in zip(before, after)), shown


def playback_cpu(options):
    path = _clip(options)
    runs = []
    for _ in range(options.runs):
        with _Program(path) as running:
            running.open_clip()
            ours = _play_for_cpu(running.program.process)
        with MpvWindow(VIDEO, path) as mpv:
            mpv.first_frame(TIMEOUT_SECONDS)
            theirs = _play_for_cpu(mpv.process)
        runs.append((*ours, *theirs, ours[0] / theirs[0]))
    *figures, ratio = _medians(runs)
    ours, theirs = (f"{cpu:.2f} CPU s/s, X server {server:.2f}, {100 * shown:.0f} % of frames shown"
                    for cpu, server, shown in (figures[:3], figures[3:]))
    return Row("Playback of 1080p60", ours, theirs, f"{ratio:.2f}", "1.2", ratio <= 1.2)


def playback_recording(options):
    """A 30 fps recording on the same two cores, by the program that plays."""
    with _Program(_clip(options), clipLength=CLIP_SECONDS, fps=30) as running:
        program = running.program
        scene = desktop.Scene("--fps", 30)
        program.call("Start")
        program.wait_for_state("recording")
        # The scene is above other windows too.
        desktop.run("wmctrl", "-r", "Quelto", "-b", "add,above")
        program.activate()
        desktop.wait_until(lambda: desktop.active_window() == "Quelto", 5, "the window above the scene")
        running.open_clip()
        shown = _play(CLIP_SECONDS - 5)
        recorded = program.save()
        scene.stop()
        counters = clip.Clip(recorded).counters()
        recorded.unlink()
    lost = lost_frames(counters, scene)
    return Row("Frames lost by a 1080p30 recording during playback", f"{lost} of {len(counters)}", "",
               f"{lost}; {100 * shown:.0f} % of the played frames shown", "0", lost == 0)


ALL = {row.__name__.replace("_", "-"): row for row in (first_frame, seek, playback_cpu, playback_recording)}
