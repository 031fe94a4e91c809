# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for matches: the next clip in a review, against mpv with a playlist of the same clips, the page of a match with
many clips, and the memory that reviews keep."""
import json
import os
import pathlib
import random
import shutil
import statistics
import subprocess
import time

import numpy

import clip
import desktop
import screen
from mpv_window import MpvWindow
from rows import SILENT, Recording, Row, memory, wait_for_rest

MATCH = "00000000-0000-4000-8000-000000000001"
# Places on the screen, in the window of the default size that the window manager centres.
MATCHES_ENTRY = (425, 321)
FIRST_ROW = (1000, 312)
VIDEO = (772, 264, 617, 347)
POSITION = (1480, 185, 75, 30)
CARDS = (600, 380, 955, 540)
CARD_COLOUR = (0x22, 0x22, 0x2B)
CARD_SHARE = 0.05

CLIPS = 60
CLIP_SECONDS = 6
# Between a clip and the next one. Shares no divisor with CLIPS; and a clip ends long before the first frame of the next.
STRIDE = 23
STEPS = 50
BUDGET_RATIO = 0.5
BUDGET_GAP_SECONDS = 0.05
# A person looks at a clip for about that long.
PAUSE_SECONDS = (0.8, 1.2)
REPEATS_PER_SECOND = 30
# These frames of a clip tell that it is this one: the others start at least half a second earlier or later.
FIRST_FRAMES = 30
PAGE_CLIPS = 200
PAGE_CLIP_SECONDS = 2
DISTINCT_PAGE_CLIPS = 24
OPENINGS = 50
BUDGET_MIB = 20
TIMEOUT_SECONDS = 20


def _cut(recording, start, seconds, target):
    """Copies a part of the recording that begins with the key frame at that time."""
    subprocess.run(["ffmpeg", "-v", "error", "-ss", f"{start + 0.001:.6f}", "-i", recording, "-t", str(seconds), "-map", "0",
                    "-c", "copy", target], check=True)


def _first_counter(path):
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-map", "0:v:0", "-frames:v", "1", "-vf",
                          f"scale={clip.WIDTH}:{clip.HEIGHT}:flags=area", "-pix_fmt", "gray", "-f", "rawvideo", "-"],
                         check=True, capture_output=True).stdout
    height = len(raw) // clip.WIDTH
    picture = numpy.frombuffer(raw, numpy.uint8).reshape(height, clip.WIDTH)
    return clip.read_counter(picture[height // 64:height * 3 // 64])


def _recording(options):
    """A recording of the moving scene with all tracks, and the times of key frames a second apart."""
    if not hasattr(options, "match_recording"):
        with Recording("--tone", 440, "--mic-tone", 700, clipLength=CLIPS + CLIP_SECONDS + 5) as running:
            time.sleep(CLIPS + CLIP_SECONDS + 6)
            path = pathlib.Path(shutil.move(running.program.save(), desktop.TEST_FOLDER / "match-recording.mp4"))
        starts = []
        for at, is_key in clip.Clip(path).packets():
            if is_key and (not starts or at >= starts[-1] + 0.9):
                starts.append(at)
        options.match_recording = path, starts
    return options.match_recording


class _Match:
    """A folder with the clips of one match, and the list of matches that holds it."""

    def __init__(self, name):
        self.clips = desktop.TEST_FOLDER / f"{name}-clips"
        self.data = desktop.TEST_FOLDER / f"{name}-data"
        self.paths = []
        self.clips.mkdir()
        self.data.mkdir()

    def name_of(self, number):
        return self.clips / f"League of Legends - 2026-03-01 {20 + number // 60:02}.{number % 60:02}.00 [ORTA 45] Triple Kill.mp4"

    def finish(self, paths):
        """Writes the list. The clips are a minute apart, in this order."""
        self.paths = paths
        start = time.time() - 60 * (len(paths) + 5)
        for number, path in enumerate(paths):
            os.utime(path, (start + 60 * number,) * 2)
        since_2001 = start - 978307200
        session = {"id": MATCH, "game": "League of Legends", "hero": "Ahri", "start": since_2001, "end": since_2001 + 60 * len(paths),
                   "clips": [str(path) for path in paths]}
        (self.data / "matches.json").write_text(json.dumps([session]))


def _review_match(options):
    """A match whose clips differ in their frames, and the counter in the first frame of each."""
    if not hasattr(options, "review_match"):
        recording, starts = _recording(options)
        match, paths, counters = _Match("review"), [], []
        for number in range(CLIPS):
            paths.append(match.name_of(number))
            _cut(recording, starts[number * STRIDE % CLIPS], CLIP_SECONDS, paths[-1])
            counters.append(_first_counter(paths[-1]))
        assert len(set(counters)) == CLIPS and None not in counters, counters
        match.finish(paths)
        options.review_match = match, counters
    return options.review_match


class _Program:
    """The program on the page of the match. Its button for the review has the keyboard focus."""

    def __init__(self, match):
        self.program = desktop.Quelto({"QUELTO_DATA_DIR": str(match.data)}, saveFolder=str(match.clips), autoStart=False,
                                      autoClipEnabled=False, **SILENT)
        self.input = screen.Input()

    def __enter__(self):
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), TIMEOUT_SECONDS, "the window")
        self.rest()
        self.input.move(*MATCHES_ENTRY)
        self.input.click()
        desktop.wait_until(lambda: self.program.get("Page") == "matches", 5, "the list of matches")
        self.input.move(*FIRST_ROW)
        self.rest()
        return self

    def __exit__(self, *_):
        self.input.close()
        self.program.stop()
        desktop.wait_until(lambda: screen.counter(VIDEO) is None, 5, "the window to close")

    def rest(self):
        wait_for_rest(self.program.process.pid)

    def open_match(self):
        """Returns when the click was made."""
        clicked = time.monotonic()
        self.input.click()
        return clicked

    def open_review(self):
        self.input.press("Return")
        screen.wait_for_counter(VIDEO, lambda _: True, TIMEOUT_SECONDS)

    def leave_review(self):
        """Returns when the key was pressed."""
        pressed = time.monotonic()
        self.input.press("Escape")
        return pressed


def _starts_at(counter):
    return lambda shown: shown is not None and counter <= shown < counter + FIRST_FRAMES


def _step(press, is_next):
    """Presses the key for the next clip. Returns the seconds until the video shows it, and the longest time without a new
    picture around that."""
    begun = changed = time.monotonic()
    seen, pressed, found, longest = None, None, None, 0
    while found is None or time.monotonic() < found + 0.3:
        shown, now = screen.counter(VIDEO), time.monotonic()
        if shown not in (None, seen):
            longest = max(longest, now - changed) if pressed else 0
            seen, changed = shown, now
        if found is None and is_next(shown):
            if pressed is None:
                raise RuntimeError("the video shows the next clip before the key press")
            found = now
        if pressed is None and now > begun + 0.1:
            pressed = time.monotonic()
            press()
        if now > begun + TIMEOUT_SECONDS:
            raise RuntimeError(f"the screen shows {shown} and not the next clip")
        time.sleep(screen.POLL_SECONDS)
    return found - pressed, longest


def _steps(press, counters):
    """The results of all steps from the first clip, with pauses as a person makes them."""
    chance = random.Random(1)
    results = []
    for counter in counters[1:STEPS + 1]:
        time.sleep(chance.uniform(*PAUSE_SECONDS) - 0.4)
        results.append(_step(press, _starts_at(counter)))
    return results


def _held_key(press, counters):
    """Presses as fast as a key that is held repeats, up to the last clip. Returns the seconds from the last press until the
    video shows the last clip, and until its position is shown."""
    time.sleep(1)
    begun = time.monotonic()
    for number in range(len(counters) - 1):
        time.sleep(max(0.0, begun + number / REPEATS_PER_SECOND - time.monotonic()))
        pressed = time.monotonic()
        press()
    is_last = _starts_at(counters[-1])
    found, position, changed = None, None, pressed
    while found is None or time.monotonic() < found + 0.3:
        text = screen.pixels(*POSITION).tobytes()
        now = time.monotonic()
        if text != position:
            position, changed = text, now
        if found is None and is_last(screen.counter(VIDEO)):
            found = time.monotonic()
        if now > pressed + TIMEOUT_SECONDS:
            raise RuntimeError("the screen does not show the last clip")
        time.sleep(screen.POLL_SECONDS)
    return found - pressed, changed - pressed


def _mpv_steps(match, counters):
    # With the cache a clip is read to its end at once, and the next one is opened when that is done.
    keyboard = screen.Input()
    with MpvWindow(VIDEO, "--prefetch-playlist=yes", "--cache=yes", *match.paths) as mpv:
        mpv.first_frame(TIMEOUT_SECONDS)
        results = _steps(lambda: keyboard.press("Return"), counters)
    keyboard.close()
    return results


def _our_steps(match, counters):
    with _Program(match) as running:
        running.open_match()
        running.rest()
        running.open_review()
        steps = _steps(lambda: running.input.press("k"), counters)
        running.leave_review()
        running.rest()
        running.open_review()
        return steps, _held_key(lambda: running.input.press("k"), counters)


def next_clip(options):
    match, counters = _review_match(options)
    runs = []
    for _ in range(options.runs):
        ours, held = _our_steps(match, counters)
        theirs = _mpv_steps(match, counters)
        times, gaps = zip(*ours)
        peer_times, peer_gaps = zip(*theirs)
        runs.append((statistics.median(times), max(times), statistics.median(gaps), max(gaps), *held,
                     statistics.median(peer_times), max(peer_times), max(peer_gaps)))
    ours, worst, gap, worst_gap, last, position, theirs, their_worst, their_gap = map(statistics.median, zip(*runs))
    ratio = statistics.median(run[0] / run[6] for run in runs)
    return [Row(f"Next clip in a review, median of {STEPS}",
                f"{1000 * ours:.0f} ms, slowest {1000 * worst:.0f} ms; longest time without a new picture {1000 * gap:.0f} ms, "
                f"slowest {1000 * worst_gap:.0f} ms",
                f"{1000 * theirs:.0f} ms, slowest {1000 * their_worst:.0f} ms; slowest without a new picture {1000 * their_gap:.0f} ms",
                f"{ratio:.2f}", f"{BUDGET_RATIO}, slowest {1000 * BUDGET_GAP_SECONDS:.0f} ms without a new picture",
                ratio <= BUDGET_RATIO and worst_gap <= BUDGET_GAP_SECONDS),
            Row(f"Last of {CLIPS} clips after {CLIPS - 1} presses at {REPEATS_PER_SECOND} Hz", f"{1000 * last:.0f} ms", "",
                f"its position after {1000 * position:.0f} ms", "", True)]


def _page_match(options):
    """A match with many short clips."""
    if not hasattr(options, "page_match"):
        recording, starts = _recording(options)
        match, paths = _Match("page"), []
        for number in range(PAGE_CLIPS):
            paths.append(match.name_of(number))
            if number < DISTINCT_PAGE_CLIPS:
                _cut(recording, starts[number], PAGE_CLIP_SECONDS, paths[-1])
            else:
                shutil.copyfile(paths[number - DISTINCT_PAGE_CLIPS], paths[-1])
        match.finish(paths)
        options.page_match = match
    return options.page_match


def _page_times(since):
    """Seconds until the cards are shown, and until their pictures are."""
    cards, last, changed = None, b"", since
    while time.monotonic() < changed + 1:
        area = screen.pixels(*CARDS)
        now = time.monotonic()
        if cards is None and (area == CARD_COLOUR).all(axis=2).mean() > CARD_SHARE:
            cards = now
        if area.tobytes() != last:
            last, changed = area.tobytes(), now
        time.sleep(screen.POLL_SECONDS)
    return cards - since, changed - since


def match_open(options):
    match = _page_match(options)
    runs = []
    for _ in range(1 + max(5, options.runs)):
        with _Program(match) as running:
            first = _page_times(running.open_match())
            running.rest()
            running.open_review()
            running.rest()
            runs.append((*first, *_page_times(running.leave_review())))
    cards, pictures, cards_again, pictures_again = (1000 * statistics.median(times) for times in zip(*runs[1:]))
    return Row(f"Page of a match of {PAGE_CLIPS} clips", f"cards after {cards:.0f} ms, their pictures after {pictures:.0f} ms", "",
               f"from its review {cards_again:.0f} and {pictures_again:.0f} ms", "", True)


def review_memory(options):
    match, _ = _review_match(options)
    chance = random.Random(1)
    with _Program(match) as running:
        pid = running.program.process.pid

        def open_reviews(count):
            for _ in range(count):
                running.open_review()
                time.sleep(chance.uniform(0, 0.06))
                running.leave_review()
                desktop.wait_until(lambda: screen.counter(VIDEO) is None, 5, "the review to close")
            running.rest()
            # Freed memory is returned a second later.
            time.sleep(2)
            return memory(pid, "VmRSS")

        running.open_match()
        running.rest()
        before = open_reviews(20)
        after = open_reviews(OPENINGS)
    return Row(f"Memory after {OPENINGS} reviews", f"{after:.0f} MiB", f"{before:.0f} MiB after the first 20",
               f"{after - before:+.1f} MiB", f"{BUDGET_MIB} MiB more", after - before <= BUDGET_MIB)


ALL = {row.__name__.replace("_", "-"): row for row in (next_clip, match_open, review_memory)}
