# SPDX-License-Identifier: GPL-3.0-or-later
"""The base of tests of a clip's page: clips with sound and a sidecar, and what users do on the page."""
import functools
import hashlib
import json
import pathlib
import re
import tempfile

import desktop
import window

STEM = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE (Axe)"
TITLE = "RAMPAGE (Axe)"
SECONDS = 8
# Those at 1 and 6 are exactly at the ends of the range that the tests keep.
EVENTS = [{"t": 0.5, "name": "kill"}, {"t": 1, "name": "solo_kill"}, {"t": 3.5, "name": "multikill_3"}, {"t": 6, "name": "tower"},
          {"t": 7.5, "name": "my_death"}]
META = {"game": "Dota 2", "label": TITLE, "tier": "EFSANE", "score": 170, "events": EVENTS}

RENAME = "Yeniden adlandır"
TRIM = "Kırp"
SAVE_TRIM = "Kırpılmış kopyayı kaydet"
EXPORT = "Yeni oranla dışa aktar"
SHRINK = "Discord için küçült \\(1 MB\\)"
FRAME = "Kareyi Kaydet"
TRASH = "Çöp Kutusuna Taşı"
COPY = "Dosyayı Kopyala"
ACTIONS = (TRIM, EXPORT, SHRINK, FRAME, TRASH, COPY)
BACK = "shift+Tab"


@functools.cache
def _video(width, height, rate, seconds):
    """The path of a generated video with sound, larger than one megabyte. At 48 kHz, whole AAC frames fill 8 seconds."""
    path = pathlib.Path(tempfile.mkdtemp(dir=desktop.TEST_FOLDER)) / "video.mp4"
    desktop.run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=size={width}x{height}:rate={rate},noise=alls=20:allf=t",
                "-f", "lavfi", "-i", "sine=440:sample_rate=48000", "-t", seconds, "-c:v", "libx264", "-preset", "ultrafast", "-g",
                rate, "-b:v", "2M", "-pix_fmt", "yuv420p", "-c:a", "aac", "-movflags", "+faststart", path)
    return path


def sidecar_of(clip):
    return clip.parent / f".{clip.name}.json"


def events_of(clip):
    return json.loads(sidecar_of(clip).read_text())["events"]


def length_of(clip):
    return float(desktop.run("ffprobe", "-v", "error", "-of", "csv=p=0", "-show_entries", "format=duration", clip))


def size_of(clip):
    return tuple(map(int, desktop.run("ffprobe", "-v", "error", "-of", "csv=p=0", "-select_streams", "v:0", "-show_entries",
                                      "stream=width,height", clip).strip().split(",")))


class ClipPageTest(window.WindowTest):
    def put_clip(self, folder=None, stem=STEM, meta=META, width=320, height=180, rate=30, seconds=SECONDS):
        """Adds a clip, with this sidecar if it is not None, and returns its path."""
        clip = (folder or self.folder) / f"{stem}.mp4"
        if meta is not None:
            sidecar_of(clip).write_text(json.dumps(meta))
        hidden = clip.with_name(".coming")
        hidden.write_bytes(_video(width, height, rate, seconds).read_bytes())
        return hidden.rename(clip)

    def open_clip(self, title=TITLE):
        """Opens the clip from the library, with the keyboard, when there is only one."""
        self.tab_to("list item", re.escape(title) + ", .*")
        desktop.press("Return")
        self.wait_for_page(title)
        self.wait_for_focus("Klip oynatıcı")

    def wait_for_page(self, title, seconds=10):
        return self.reader.find("heading", re.escape(title), seconds)

    def press_button(self, name, key="Tab", action="space"):
        """Goes to the button with the Tab key and presses it."""
        self.tab_to("push button", name, key)
        desktop.press(action)

    def wait_for_toast(self, text, seconds=10):
        """Waits for the toast with this text, and returns all of it."""
        return self.reader.find(None, text, seconds).name

    def wait_until_enabled(self, *names):
        """Waits until the buttons whose names match the patterns are enabled, also those that are scrolled away."""
        def are_enabled():
            buttons = [item for item in self.reader.everything() if item.role == "push button"]
            found = [[item for item in buttons if re.fullmatch(name, item.name)] for name in names]
            return all(found) and all("enabled" in item.states for items in found for item in items)

        desktop.wait_until(are_enabled, 5, f"{names} to be enabled")

    def names_in(self, folder=None):
        """The names of all files in the folder, hidden ones too."""
        return sorted(path.name for path in (folder or self.folder).iterdir())

    def snapshot(self, folder):
        """The name, and a checksum of the contents, of each file in the folder, hidden ones too."""
        return {path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in folder.iterdir()}
