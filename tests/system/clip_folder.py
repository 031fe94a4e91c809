# SPDX-License-Identifier: GPL-3.0-or-later
"""Save folders full of clips, without the time that recording them would take."""
import functools
import os
import pathlib
import shutil
import tempfile
import time

import desk


@functools.cache
def _film(width, height):
    """The path of a film of two seconds."""
    path = pathlib.Path(tempfile.mkdtemp(dir=desk.TEST_FOLDER)) / "film.mp4"
    desk.run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=size={width}x{height}:rate=30:duration=2", "-c:v",
             "libx264", "-preset", "ultrafast", "-crf", "40", path)
    return path


def put_clip(folder, stem, age=0, width=640, height=360):
    """One film under that name, as old as so many seconds. Its way into the folder is a rename, as the recorder's."""
    path = folder / f"{stem}.mp4"
    hidden = folder / ".coming"
    shutil.copyfile(_film(width, height), hidden)
    os.utime(hidden, (time.time() - age,) * 2)
    return hidden.rename(path)


def put_broken_clip(folder, stem, age=0):
    path = folder / f"{stem}.mp4"
    path.write_bytes(b"no film")
    os.utime(path, (time.time() - age,) * 2)
    return path


def put_many(folder, count):
    """Films of three games, an hour apart."""
    folder.mkdir(parents=True, exist_ok=True)
    film = _film(64, 36)
    now = time.time()
    for index in range(count):
        made = now - 3600 * index
        stamp = time.strftime("%Y-%m-%d %H.%M.%S", time.localtime(made))
        game = ("Dota 2", "League of Legends", "World of Warcraft")[index % 3]
        path = folder / f"{game} - {stamp}{' [ORTA 45] Triple Kill' if index % 2 else ''}.mp4"
        shutil.copyfile(film, path)
        os.utime(path, (made,) * 2)
