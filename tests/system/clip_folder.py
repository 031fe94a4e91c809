# SPDX-License-Identifier: GPL-3.0-or-later
"""Fills save folders with generated clips, which is faster than recording them."""
import functools
import os
import pathlib
import shutil
import tempfile
import time

import desktop


@functools.cache
def _video(width, height):
    """The path of a generated video of two seconds."""
    path = pathlib.Path(tempfile.mkdtemp(dir=desktop.TEST_FOLDER)) / "video.mp4"
    desktop.run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=size={width}x{height}:rate=30:duration=2", "-c:v",
             "libx264", "-preset", "ultrafast", "-crf", "40", path)
    return path


def put_clip(folder, stem, age=0, width=640, height=360):
    """Adds a clip with that name and age in seconds. Renames it into place, as the recorder does."""
    path = folder / f"{stem}.mp4"
    hidden = folder / ".coming"
    shutil.copyfile(_video(width, height), hidden)
    os.utime(hidden, (time.time() - age,) * 2)
    return hidden.rename(path)


def put_broken_clip(folder, stem, age=0):
    path = folder / f"{stem}.mp4"
    path.write_bytes(b"no video")
    os.utime(path, (time.time() - age,) * 2)
    return path


def put_many(folder, count):
    """Adds clips of three games, one hour apart."""
    folder.mkdir(parents=True, exist_ok=True)
    video = _video(64, 36)
    now = time.time()
    for index in range(count):
        made = now - 3600 * index
        stamp = time.strftime("%Y-%m-%d %H.%M.%S", time.localtime(made))
        game = ("Dota 2", "League of Legends", "World of Warcraft")[index % 3]
        path = folder / f"{game} - {stamp}{' [ORTA 45] Triple Kill' if index % 2 else ''}.mp4"
        shutil.copyfile(video, path)
        os.utime(path, (made,) * 2)
