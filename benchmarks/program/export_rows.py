# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for exports: time against ffmpeg with the same encoder settings, frames that a recording loses, and how close
shrunk clips get to their limit."""
import json
import math
import pathlib
import random
import statistics
import subprocess
import time

import clip
import desktop
import peers
from rows import SILENT, Recording, Row, lost_frames

SECONDS = 20
LIMIT_MB = 10
VIDEO_SIZE = f"{peers.WIDTH}x{peers.HEIGHT}"


def _seconds(words):
    started = time.monotonic()
    subprocess.run([str(word) for word in words], check=True, capture_output=True)
    return time.monotonic() - started


def _make_clip(target, seconds=SECONDS):
    """Moving video with fine noise, as games have it, and sound, at the bit rate of a recording."""
    subprocess.run([str(word) for word in (
        "ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i",
        f"testsrc2=s={VIDEO_SIZE}:r={peers.FPS}:d={seconds},noise=alls=8:allf=t", "-f", "lavfi", "-i",
        f"anoisesrc=color=pink:r=48000:d={seconds}:amplitude=0.4", "-c:v", "libx264", "-preset", "ultrafast", "-b:v",
        peers.BITRATE, "-g", peers.FPS, "-bf", "0", "-pix_fmt", "yuv420p", "-color_range", "tv", "-colorspace", "bt709",
        "-color_primaries", "bt709", "-color_trc", "bt709", "-c:a", "aac", "-b:a", "192k", "-ac", "2", "-movflags",
        "faststart", target)], check=True)


def _export(options, *words):
    """Seconds, how often progress began anew, and the new file."""
    program = options.build / "benchmarks/export/bench_export"
    output = subprocess.run([str(word) for word in (program, *words)], check=True, capture_output=True, text=True).stdout
    seconds, passes, path = output.rstrip("\n").split(" ", 2)
    return float(seconds), int(passes), path


def _timed_export(options, *words):
    seconds, _, path = _export(options, *words)
    pathlib.Path(path).unlink()
    return seconds


def _pairs(options, ours, theirs):
    pairs = [(ours(), theirs()) for _ in range(options.runs)]
    return (statistics.median(a for a, _ in pairs), statistics.median(b for _, b in pairs),
            statistics.median(a / b for a, b in pairs))


AUDIO = ["-c:a", "aac", "-aac_coder", "fast", "-ac", "2", "-ar", "48000"]
QUALITY = ["-c:v", "libx264", "-profile:v", "high", "-preset", "veryfast", "-tune", "psnr", "-crf", "13.5", "-g", peers.FPS]


def _ffmpeg(source, target, *words, inputs=()):
    return ["ffmpeg", "-v", "error", "-y", *inputs, "-i", source, *words, "-movflags", "faststart", target]


def trim(options):
    folder = desktop.TEST_FOLDER
    source = folder / "export.mp4"
    _make_clip(source)
    ours, theirs, ratio = _pairs(
        options, lambda: _timed_export(options, "trim", source, 5, 15),
        lambda: _seconds(_ffmpeg(source, folder / "peer.mp4", "-map", "0", *QUALITY, *AUDIO, "-b:a", "192k",
                                 inputs=("-ss", 5, "-t", 10))))
    return Row("Trim of 10 s of 1080p60", f"{ours:.1f} s", f"{theirs:.1f} s", f"{ratio:.2f}", "1.1", ratio <= 1.1)


def shrink(options):
    folder = desktop.TEST_FOLDER
    source = folder / "export.mp4"
    _make_clip(source)
    rate = int(LIMIT_MB * 1e6 * 0.9 * 8 / SECONDS - 96000)

    def peer():
        words = ["-vf", "scale=-2:1080:flags=bicubic", "-c:v", "libx264", "-profile:v", "high", "-preset", "medium", "-x264-params", "ratetol=0.1", "-b:v", rate,
                 "-g", 2 * peers.FPS, "-passlogfile", folder / "peer"]
        return (_seconds(["ffmpeg", "-v", "error", "-y", "-i", source, "-an", *words, "-pass", "1", "-f", "null", "-"]) +
                _seconds(_ffmpeg(source, folder / "peer.mp4", *words, "-pass", "2", *AUDIO, "-b:a", "96k")))

    ours, theirs, ratio = _pairs(options, lambda: _timed_export(options, "shrink", source, LIMIT_MB), peer)
    return Row(f"Shrink of {SECONDS} s of 1080p60 below {LIMIT_MB} MB, two passes", f"{ours:.1f} s", f"{theirs:.1f} s",
               f"{ratio:.2f}", "1.1", ratio <= 1.1)


def vertical(options):
    folder = desktop.TEST_FOLDER
    source = folder / "export.mp4"
    _make_clip(source, 8)
    blur = lambda: _timed_export(options, "aspect", source, "9:16", "blur")  # noqa: E731
    blurred, cropped, to_crop = _pairs(options, blur, lambda: _timed_export(options, "aspect", source, "9:16", "crop"))
    graph = ("[0:v]split[a][b];[b]scale=-2:1920,crop=1080:1920,gblur=sigma=38.57,eq=brightness=-0.12:saturation=1.15[c];"
             "[a]scale=1080:608[d];[c][d]overlay=0:656")
    ours, theirs, to_peer = _pairs(
        options, blur, lambda: _seconds(_ffmpeg(source, folder / "peer.mp4", "-filter_complex", graph, *QUALITY, *AUDIO,
                                                "-b:a", "192k")))
    return [Row("9:16 with blur, 8 s of 1080p60, against crop", f"{blurred:.1f} s", f"{cropped:.1f} s with crop", f"{to_crop:.2f}", "1.3",
                to_crop <= 1.3),
            Row("9:16 with blur, against a full-size Gaussian blur", f"{ours:.1f} s", f"{theirs:.1f} s", f"{to_peer:.2f}", "0.5",
                to_peer <= 0.5)]


def recording(options):
    """A 30 fps recording on the same two cores, while exports run one after the other at their priority."""
    folder = desktop.TEST_FOLDER
    source = folder / "export.mp4"
    _make_clip(source)
    program = options.build / "benchmarks/export/bench_export"
    with Recording("--fps", 30, clipLength=30, fps=30, **SILENT) as running:
        time.sleep(2)
        started = time.monotonic()
        exports = 0
        while time.monotonic() < started + 25:
            output = subprocess.run(["nice", "-n", "10", program, "aspect", source, "9:16", "blur"], check=True,
                                    capture_output=True, text=True).stdout
            pathlib.Path(output.rstrip("\n").split(" ", 2)[2]).unlink()
            exports += 1
        counters = clip.Clip(running.program.save()).counters()
    lost = lost_frames(counters, running.scene)
    return Row("Frames lost by a 1080p30 recording during exports", f"{lost} of {len(counters)}", "", f"{lost} in {exports} exports", "0",
               lost == 0)


CONTENTS = {
    "moving": "testsrc2=s={size}:r={fps}:d={seconds}",
    "noisy": "testsrc2=s={size}:r={fps}:d={seconds},noise=alls=16:allf=t",
    "zoom": "mandelbrot=s={size}:r={fps}:maxiter=200:end_scale=0.001:end_pts={frames},trim=duration={seconds}",
    "mostly still": "testsrc=s={size}:r={fps}:d={seconds}",
}
SIZES = [(1920, 1080), (1280, 720), (640, 360)]
# A longer or faster clip gets a smaller size, so that no clip takes minutes. Units: pixels.
MAX_PIXELS = 2e9
RATES = [24, 25, 30, 50, 60, 90, 120, 144]


def _random_clip(source, chance):
    """Length, content and size of one clip, and a limit that it exceeds."""
    seconds = round(math.exp(chance.uniform(math.log(2), math.log(90))), 1)
    content = chance.choice(list(CONTENTS))
    fps = chance.choice(RATES)
    width, height = chance.choice([size for size in SIZES if size[0] * size[1] * fps * seconds <= MAX_PIXELS] or SIZES[-1:])
    size = f"{width}x{height}"
    subprocess.run([str(word) for word in (
        "ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i",
        CONTENTS[content].format(size=size, fps=fps, seconds=seconds, frames=round(fps * seconds)),
        "-f", "lavfi", "-i", f"anoisesrc=color=pink:r=48000:d={seconds}:amplitude=0.4:seed=1", "-c:v", "libx264", "-preset", "ultrafast",
        "-qp", 20, "-g", fps, "-bf", "0", "-pix_fmt", "yuv420p", "-c:a", "aac", "-b:a", "192k", "-ac", "2", source)], check=True)
    megabytes = source.stat().st_size / 1e6
    return seconds, content, size, fps, chance.uniform(0.05, 0.95) * megabytes


def shrink_accuracy(options):
    """Shrinks random clips to random limits. All have to stay below, except those that even the lowest rate exceeds."""
    folder = desktop.TEST_FOLDER
    source = folder / "random.mp4"
    chance = random.Random(1)
    count = 100 if options.long else 12
    results = []
    log = options.build / "shrink-accuracy.jsonl"
    log.write_text("")
    while len(results) < count:
        seconds, content, size, fps, limit = _random_clip(source, chance)
        limit = max(1, round(limit))
        if source.stat().st_size <= limit * 970000:
            continue
        taken, passes, path = _export(options, "shrink", source, limit)
        used = pathlib.Path(path).stat().st_size / (limit * 1e6)
        # 120 kbit/s of video and 96 of sound, with a tenth for the container.
        is_possible = seconds * 216000 / 8 * 1.1 <= limit * 1e6
        results.append({"seconds": seconds, "content": content, "size": size, "fps": fps, "limitMB": limit,
                        "used": round(used, 4), "passes": passes, "time": taken, "isPossible": is_possible})
        pathlib.Path(path).unlink()
        with log.open("a") as lines:
            lines.write(json.dumps(results[-1]) + "\n")
    possible = [result for result in results if result["isPossible"]]
    over = sum(result["used"] > 1 for result in possible)
    near = sum(0.88 <= result["used"] <= 1 for result in possible) / len(possible)
    passes = [sum(result["passes"] == number for result in results) for number in (1, 2, 3)]
    uses = sorted(result["used"] for result in possible)
    return Row(f"Shrink of {count} random clips to random limits", f"{len(possible)} can fit, {over} of them over; {passes[0]}, {passes[1]} and "
               f"{passes[2]} in 1, 2 and 3 passes", "", f"{100 * near:.0f} % within 12 % below; median {statistics.median(uses):.3f}, "
               f"{uses[0]:.3f} to {uses[-1]:.3f} of the limit", "none over, 90 % within", over == 0 and near >= 0.9)


ALL = {"trim": trim, "shrink": shrink, "vertical": vertical, "export-recording": recording, "shrink-accuracy": shrink_accuracy}
