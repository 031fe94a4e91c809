# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads a clip: its tracks with ffprobe, and the test scene's counters, flashes and beeps."""
import functools
import json
import subprocess

import numpy

RATE = 48000
WIDTH, HEIGHT = 480, 270
CELLS = 27
BITS = 24
SCENE_RATE = 60
FRAMES_A_FLASH = 60


def _output(*words):
    result = subprocess.run([str(word) for word in words], capture_output=True)
    if result.returncode or result.stderr:
        raise AssertionError(f"{words[0]}: {result.stderr.decode()[-500:]}")
    return result.stdout


def read_counter(strip):
    """Reads the counter from the scene's strip, an array of grey rows of any width. None if contrast or parity is wrong."""
    width = strip.shape[1]
    cells = [strip[:, int(width * (cell + 0.25) / CELLS):int(width * (cell + 0.75) / CELLS)].mean()
             for cell in range(CELLS)]
    white, black = cells[:2]
    ones = [value > (white + black) / 2 for value in cells[2:]]
    if white - black < 100 or sum(ones) % 2:
        return None
    return int("".join("01"[int(one)] for one in ones[:BITS]), 2)


class Clip:
    def __init__(self, path):
        self.path = path
        info = json.loads(_output("ffprobe", "-v", "error", "-of", "json", "-show_streams", "-show_format", path))
        self.length = float(info["format"]["duration"])
        self.video = [stream for stream in info["streams"] if stream["codec_type"] == "video"]
        self.audio = [stream for stream in info["streams"] if stream["codec_type"] == "audio"]
        self._pictures = None

    def packets(self):
        """(time in seconds, is a key frame) of each picture."""
        info = json.loads(_output("ffprobe", "-v", "error", "-of", "json", "-select_streams", "v:0", "-show_entries",
                                  "packet=pts_time,flags", self.path))
        return [(float(packet["pts_time"]), "K" in packet["flags"]) for packet in info["packets"]]

    def pictures(self):
        """All pictures, scaled down and grey: an array of frames × HEIGHT × WIDTH. With a fixed input rate, ffmpeg neither
        drops nor repeats pictures. packets() has their times."""
        if self._pictures is None:
            raw = _output("ffmpeg", "-v", "error", "-r", "60", "-i", self.path, "-map", "0:v:0", "-vf",
                          f"scale={WIDTH}:{HEIGHT}:flags=area", "-pix_fmt", "gray", "-f", "rawvideo", "-")
            self._pictures = numpy.frombuffer(raw, numpy.uint8).reshape(-1, HEIGHT, WIDTH)
            if len(self._pictures) != len(self.packets()):
                raise AssertionError(f"{len(self.packets())} packets give {len(self._pictures)} pictures")
        return self._pictures

    def counters(self):
        return [read_counter(picture[HEIGHT // 64:HEIGHT * 3 // 64]) for picture in self.pictures()]

    @functools.cached_property
    def shown(self):
        """(counter, time) of each picture."""
        return [(counter, time) for counter, (time, _) in zip(self.counters(), self.packets())]

    def time_of_flash(self, number):
        """The time of a flash, computed from the first picture from then on, because the scene may have missed the frame of
        the flash itself. None if the clip does not include it."""
        first = number * FRAMES_A_FLASH
        for counter, time in self.shown:
            if counter is not None and first <= counter < first + FRAMES_A_FLASH // 2:
                begin = time - (counter - first) / SCENE_RATE
                return begin if begin >= 0 else None
        return None

    def flashes(self):
        """(number, time) of each flash in the clip."""
        numbers = sorted({counter // FRAMES_A_FLASH for counter, _ in self.shown if counter})
        times = [(number, self.time_of_flash(number)) for number in numbers]
        return [(number, time) for number, time in times if time is not None]

    def sound(self, track):
        """One audio track as frames × 2 channels. Frame 0 is at the clip's time 0."""
        raw = _output("ffmpeg", "-v", "error", "-i", self.path, "-map", f"0:a:{track}", "-af",
                      f"aresample={RATE}:async=1:first_pts=0", "-ac", "2", "-f", "f32le", "-")
        return numpy.frombuffer(raw, numpy.float32).reshape(-1, 2)

    def beeps(self, track, channel=1):
        """The start time of each beep, in a channel that has no other sound."""
        loud = numpy.flatnonzero(numpy.abs(self.sound(track)[:, channel]) > 0.1)
        starts = loud[numpy.insert(numpy.diff(loud) > RATE // 10, 0, True)] if len(loud) else loud
        return [start / RATE for start in starts]

    def sound_lead(self, track):
        """Seconds by which each beep comes before its flash. Ignores events at the ends of the clip, which may be cut."""
        beeps = numpy.array(self.beeps(track))
        leads = []
        for _, flash in self.flashes():
            if 0.2 < flash < self.length - 0.2 and len(beeps):
                leads.append(flash - beeps[numpy.abs(beeps - flash).argmin()])
        return leads


def tone_level(sound, hertz):
    """The peak level of a steady tone in one channel. The frequency is a multiple of 10 Hz. Uses the median over tenths of
    a second, so that a single phase jump has no effect."""
    step = RATE // 10
    parts = sound[:len(sound) // step * step].astype(numpy.float64).reshape(-1, step)
    turns = numpy.exp(-2j * numpy.pi * hertz * numpy.arange(step) / RATE)
    return numpy.median(2 * abs((parts * turns).mean(axis=1)))
