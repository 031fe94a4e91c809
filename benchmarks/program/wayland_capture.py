#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures captures of the screen in a Wayland session, by Quelto and by GStreamer in turn. Prints one JSON object per run.
wayland_rows.py starts it on a private Wayland desktop."""
import argparse
import json
import os
import pathlib
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/system"))

import clip  # noqa: E402
import desktop  # noqa: E402
import peers  # noqa: E402
import portal_client  # noqa: E402
import rows  # noqa: E402
import wayland  # noqa: E402

TOKEN = pathlib.Path(os.environ["XDG_STATE_HOME"]) / "Quelto/screen.token"
# After the start of the scene and the recording, before the measurement.
WARM_UP_SECONDS = 2


def _cpu_a_second(pid, seconds):
    """CPU seconds of a process for each second, from now on."""
    # The clock of the process, as of clock_getcpuclockid. /proc counts in hundredths of a second, which is too coarse for a
    # still screen.
    clock = ~pid << 3 | 2
    before, started = time.clock_gettime(clock), time.monotonic()
    time.sleep(seconds)
    return (time.clock_gettime(clock) - before) / (time.monotonic() - started)


def _quelto(seconds, *scene_options):
    """CPU seconds of the program for each second, its clip, and the scene."""
    TOKEN.parent.mkdir(parents=True, exist_ok=True)
    TOKEN.write_text(wayland.new_token())
    program = desktop.Quelto(clipLength=seconds, autoClipEnabled=False, **rows.SILENT)
    program.wait_for_state("recording")
    # Afterwards, so that it is above the program's window.
    scene = desktop.Scene("--wayland", "--silent", *scene_options)
    time.sleep(WARM_UP_SECONDS)
    used = _cpu_a_second(program.process.pid, seconds)
    saved = program.save()
    program.stop()
    scene.stop()
    return used, saved, scene


def _gstreamer(seconds):
    """The same of a GStreamer pipeline, which captures through a portal session of its own."""
    client = portal_client.Client()
    cast = portal_client.ScreenCast(client, wayland.new_token())
    node, *_ = cast.started()
    stream, saved = desktop.TEST_FOLDER / "peer.h264", desktop.TEST_FOLDER / "peer.mp4"
    remote = cast.open_remote()
    process = subprocess.Popen(peers.screen_cast_pipeline(remote, node, stream), pass_fds=[remote],
                               stdout=subprocess.DEVNULL)
    os.close(remote)
    scene = desktop.Scene("--wayland", "--silent")
    time.sleep(WARM_UP_SECONDS)
    used = _cpu_a_second(process.pid, seconds)
    process.send_signal(signal.SIGINT)
    if process.wait(10):
        raise RuntimeError(f"{process.args[0]} failed with exit code {process.returncode}")
    client.close()
    scene.stop()
    peers.copy_to_mp4(stream, saved)
    return used, saved, scene


def _lost(saved, scene):
    """(number of frames that are missing in the clip, number of different frames in it)"""
    counters = [counter for counter in clip.Clip(saved).counters() if counter is not None]
    return rows.lost_frames(counters, scene), len(set(counters))


def _run(seconds):
    ours, saved, scene = _quelto(seconds)
    lost, frames = _lost(saved, scene)
    theirs, saved, scene = _gstreamer(seconds)
    peer_lost, peer_frames = _lost(saved, scene)
    still, *_ = _quelto(seconds, "--still")
    return {"ours": ours, "lost": lost, "frames": frames, "theirs": theirs, "peerLost": peer_lost,
            "peerFrames": peer_frames, "still": still}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runs", type=int, required=True)
    parser.add_argument("--seconds", type=int, required=True)
    options = parser.parse_args()
    for _ in range(options.runs):
        print(json.dumps(_run(options.seconds)), flush=True)


if __name__ == "__main__":
    main()
