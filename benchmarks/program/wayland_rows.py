# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows for the capture of a Wayland session, against GStreamer with the same screen cast. They are measured on a
private Wayland desktop."""
import json
import pathlib
import statistics
import subprocess

from rows import Row

ROOT = pathlib.Path(__file__).resolve().parents[2]


def _runs(options):
    program = pathlib.Path(__file__).with_name("wayland_capture.py")
    output = subprocess.run(
        [ROOT / "tools/private-wayland", "--", "/usr/bin/python3", "-B", program, "--runs", str(options.runs), "--seconds",
         str(options.seconds)], check=True, stdout=subprocess.PIPE, text=True).stdout
    return [json.loads(line) for line in output.splitlines()]


def wayland_capture(options):
    runs = _runs(options)
    ours, theirs, still = (statistics.median(run[name] for run in runs) for name in ("ours", "theirs", "still"))
    ratio, still_ratio = (statistics.median(run[name] / run[base] for run in runs)
                          for name, base in (("ours", "theirs"), ("still", "ours")))
    lost, frames, peer_lost = (sum(run[name] for run in runs) for name in ("lost", "frames", "peerLost"))
    return [Row("Capture and encode on Wayland, moving 640×360 at 60 fps", f"{ours:.3f} CPU s/s",
                f"{theirs:.3f} CPU s/s, {peer_lost} frames lost", f"{ratio:.2f}, {lost} of {frames} frames lost",
                "0.85, none lost", ratio <= 0.85 and lost == 0),
            Row("Capture and encode on Wayland, still 640×360", f"{still:.4f} CPU s/s", f"{ours:.3f} CPU s/s when moving",
                f"{still_ratio:.3f}", "0.1", still_ratio <= 0.1)]


ALL = {"wayland-capture": wayland_capture}
