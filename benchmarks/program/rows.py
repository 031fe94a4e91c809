# SPDX-License-Identifier: GPL-3.0-or-later
"""One function per row of the table. Each measures on the private desktop and returns a Row, or a list of them."""
import dataclasses
import os
import pathlib
import statistics
import subprocess
import time

import clip
import desktop
import peers

SILENT = {"captureAudio": False, "captureMicrophone": False}


@dataclasses.dataclass
class Row:
    work: str
    ours: str
    peer: str
    figure: str
    budget: str
    is_within: bool


def cpu_seconds(pid):
    """User and system time of all threads of a process."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def wait_for_rest(pid):
    """Until the process has shown its pictures and ended its animations: it uses at most 2 % of a core for half a second."""
    used = [0.0]

    def is_at_rest():
        time.sleep(0.5)
        used.append(cpu_seconds(pid))
        return used[-1] - used[-2] <= 0.01

    desktop.wait_until(is_at_rest, 20, "the program to be at rest")


def lost_frames(counters, scene):
    """The number of frames that are missing from the clip between its first and last counter."""
    return len(set(range(counters[0], counters[-1])) - set(counters) - scene.not_shown_in_time())


class Recording:
    """Runs scene and program during one measurement."""

    def __init__(self, *scene_options, **settings):
        self.scene = desktop.Scene(*scene_options)
        self.program = desktop.Quelto(**settings)
        self.program.wait_for_state("recording")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.program.stop()
        self.scene.stop()


def _capture_pair(seconds, *scene_options):
    """CPU seconds of Quelto and of the peer for equal durations of the same scene, and the frames that Quelto lost."""
    with Recording(*scene_options, clipLength=seconds, **SILENT) as recording:
        time.sleep(2)
        before = cpu_seconds(recording.program.process.pid)
        time.sleep(seconds)
        ours = cpu_seconds(recording.program.process.pid) - before
        counters = clip.Clip(recording.program.save()).counters()
    lost = lost_frames(counters, recording.scene)
    scene = desktop.Scene(*scene_options)
    theirs = peers.grab(seconds)
    scene.stop()
    return ours, theirs, lost


def moving_screen(options):
    pairs = [_capture_pair(options.seconds, "--silent") for _ in range(options.runs)]
    ratio = statistics.median(ours / theirs for ours, theirs, _ in pairs)
    lost = sum(lost for *_, lost in pairs)
    return Row("Capture and encode, moving 1080p60", f"{statistics.median(pair[0] for pair in pairs) / options.seconds:.2f} CPU s/s",
               f"{statistics.median(pair[1] for pair in pairs) / options.seconds:.2f} CPU s/s",
               f"{ratio:.2f}, {lost} frames lost", "0.85, none lost", ratio <= 0.85 and lost == 0)


def still_screen(options):
    pairs = [_capture_pair(options.seconds, "--still", "--silent") for _ in range(options.runs)]
    ratio = statistics.median(ours / theirs for ours, theirs, _ in pairs)
    return Row("Capture and encode, still 1080p60", f"{statistics.median(pair[0] for pair in pairs) / options.seconds:.3f} CPU s/s",
               f"{statistics.median(pair[1] for pair in pairs) / options.seconds:.2f} CPU s/s", f"{ratio:.3f}", "0.1",
               ratio <= 0.1)


def _seconds_to_clip(program):
    """From the request to the finished file, minus the delay before a save."""
    count = len(program.visible_clips())
    requested = time.monotonic()
    program.call("SaveClip")
    while len(program.visible_clips()) == count:
        time.sleep(0.002)
    return time.monotonic() - requested - 0.25


def save(options):
    folder = desktop.TEST_FOLDER
    ours, theirs = [], []
    with Recording("--tone", 440, "--mic-tone", 700, clipLength=30) as recording:
        time.sleep(33)
        result = recording.program.save()
        peers.decode_mix(result, folder / "mix.wav")
        for _ in range(max(5, options.runs)):
            ours.append(_seconds_to_clip(recording.program))
            started = time.monotonic()
            peers.copy_and_encode_mix(result, folder / "mix.wav", folder / "peer.mp4")
            theirs.append(time.monotonic() - started)
    ratio = statistics.median(a / b for a, b in zip(ours, theirs))
    return Row("Save of 30 s with all tracks", f"{1000 * statistics.median(ours):.0f} ms",
               f"{1000 * statistics.median(theirs):.0f} ms", f"{ratio:.2f}", "0.7", ratio <= 0.7)


def memory(pid, field):
    """A field of /proc/PID/status. Units: MiB."""
    lines = pathlib.Path(f"/proc/{pid}/status").read_text().splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith(field + ":")) / 1024


def _forget_peak(pid):
    pathlib.Path(f"/proc/{pid}/clear_refs").write_text("5")


def _bytes_written(pid):
    """Bytes that the process passed to write calls of any kind."""
    fields = dict(line.split(": ") for line in pathlib.Path(f"/proc/{pid}/io").read_text().splitlines())
    return int(fields["wchar"])


def long_save(options):
    """The longest clip: time, memory and bytes of saves, when the buffer has been full for a while."""
    folder = desktop.TEST_FOLDER
    ours, theirs, peaks, kept, written = [], [], [], [], []
    with Recording("--tone", 440, "--mic-tone", 700, clipLength=300) as recording:
        pid = recording.program.process.pid
        time.sleep(320)
        result = recording.program.save()
        peers.decode_mix(result, folder / "mix.wav")
        for _ in range(options.runs):
            result.unlink()
            time.sleep(5)
            resident, bytes_before = memory(pid, "VmRSS"), _bytes_written(pid)
            _forget_peak(pid)
            ours.append(_seconds_to_clip(recording.program))
            peaks.append(memory(pid, "VmHWM") - resident)
            result = recording.program.visible_clips()[-1]
            written.append((_bytes_written(pid) - bytes_before) / result.stat().st_size)
            time.sleep(5)
            kept.append(memory(pid, "VmRSS") / resident)
            started = time.monotonic()
            peers.copy_and_encode_mix(result, folder / "mix.wav", folder / "peer.mp4")
            theirs.append(time.monotonic() - started)
    ratio = statistics.median(a / b for a, b in zip(ours, theirs))
    peak, after, share = max(peaks), max(kept), max(written)
    return [Row("Save of 300 s with all tracks", f"{statistics.median(ours):.1f} s", f"{statistics.median(theirs):.1f} s",
                f"{ratio:.2f}", "0.7", ratio <= 0.7),
            Row("Memory during the save", f"{peak:.1f} MiB more, {resident:.0f} MiB before", "", f"{after:.3f} afterwards",
                "16 MiB, 1.05", peak <= 16 and after <= 1.05),
            Row("Bytes written for the file", f"{result.stat().st_size / 2**20:.0f} MiB", "", f"{share:.4f}", "1.02",
                share <= 1.02)]


def memory_of_saves(options):
    with Recording("--tone", 440, "--mic-tone", 700, clipLength=30, autoClipEnabled=False) as recording:
        pid = recording.program.process.pid
        # The library keeps the pictures of new clips in a cache of its own, so another page is open.
        recording.program.activate()
        subprocess.run(["xdotool", "key", "ctrl+comma"], check=True)
        time.sleep(60)
        recording.program.save().unlink()
        before = memory(pid, "VmRSS")
        for _ in range(75):
            recording.program.save().unlink()
        after = memory(pid, "VmRSS")
    return Row("Memory after 75 saves of 30 s", f"{after:.0f} MiB", f"{before:.0f} MiB after the first",
               f"{after / before:.3f}", "1.05", after / before <= 1.05)


def saves_in_a_row(options):
    with Recording(clipLength=10) as recording:
        time.sleep(11)
        for _ in range(20):
            recording.program.save()
        recording.program.set("clipLength", 60)
        counters = clip.Clip(recording.program.save()).counters()
    lost = lost_frames(counters, recording.scene)
    return Row("Frames lost during 20 consecutive saves", f"{lost} of {len(counters)}", "", f"{lost}", "0", lost == 0)


def _drift(points):
    """Milliseconds over the whole length, from a linear regression of (time, lead)."""
    slope, _ = statistics.linear_regression(*zip(*points))
    return 1000 * slope * (points[-1][0] - points[0][0])


def sound_against_picture(options):
    points = []
    with Recording("--tone", 440, clipLength=15) as recording:
        started = time.monotonic()
        # Each clip has about fifteen pairs of flash and beep.
        for moment in range(16, 1801, 60) if options.long else range(16, 61, 15):
            time.sleep(max(0.0, started + moment - time.monotonic()))
            path = recording.program.save()
            points += [(moment, lead) for lead in clip.Clip(path).sound_lead(1)]
            path.unlink()
    leads = [lead for _, lead in points]
    mean, lowest, highest = (1000 * value for value in (statistics.mean(leads), min(leads), max(leads)))
    drift = _drift(points)
    length = f"{points[-1][0] / 60:.1f} min"
    return Row("Audio ahead of video", f"mean {mean:+.1f} ms, {lowest:+.1f} to {highest:+.1f} ms", "",
               f"drift {drift:+.1f} ms over {length}", "mean ±10 ms, −45 to +15 ms",
               abs(mean) <= 10 and lowest >= -45 and highest <= 15)


def buffer_memory(options):
    output = subprocess.run([options.build / "benchmarks/buffer/bench_buffer_memory"], capture_output=True, text=True, check=True)
    taken, held = map(int, output.stdout.split())
    return Row("Buffer memory relative to its samples", f"{taken / 2**20:.1f} MiB", f"{held / 2**20:.1f} MiB of samples",
               f"{taken / held:.3f}", "1.05", taken / held <= 1.05)


ALL = {row.__name__.replace("_", "-"): row
       for row in (moving_screen, still_screen, save, long_save, memory_of_saves, saves_in_a_row, sound_against_picture, buffer_memory)}
