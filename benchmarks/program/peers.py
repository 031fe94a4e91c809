# SPDX-License-Identifier: GPL-3.0-or-later
"""The tools that the figures are compared with, with the settings that Quelto uses: the ffmpeg command line, and that of
GStreamer for screen casts, which ffmpeg cannot read."""
import os
import subprocess

BITRATE = 13_685_760
WIDTH, HEIGHT, FPS = 1920, 1080, 60
# That of the picture of tools/private-wayland.
WAYLAND_BITRATE = 2_000_000


def grab(seconds):
    """Captures and encodes the screen. Returns the CPU seconds of all threads."""
    return _cpu_seconds(
        "ffmpeg", "-v", "fatal", "-f", "x11grab", "-framerate", FPS, "-video_size", f"{WIDTH}x{HEIGHT}",
        "-i", os.environ["DISPLAY"], "-t", seconds, "-pix_fmt", "yuv420p", "-c:v", "libx264", "-preset", "ultrafast",
        "-profile:v", "high", "-aq-mode", "1", "-b:v", BITRATE, "-maxrate", BITRATE * 5 // 4, "-bufsize", BITRATE // 4,
        "-g", FPS, "-bf", "0", "-threads", "2", "-x264-params",
        "8x8dct=1:cabac=1:deblock=0,0:rc-lookahead=0:sync-lookahead=0:scenecut=0:sliced-threads=1:open-gop=0",
        "-f", "null", "-")


def screen_cast_pipeline(remote, node, target):
    """The words of a command that captures and encodes a screen cast of 640×360, until SIGINT. At a constant rate, because
    the encoder computes the bits of a frame from it."""
    return [
        "gst-launch-1.0", "-q", "pipewiresrc", f"fd={remote}", f"path={node}", "!", "video/x-raw,format=BGRx", "!",
        "videorate", "!", f"video/x-raw,framerate={FPS}/1", "!",
        "videoconvert", "!", "video/x-raw,format=NV12,colorimetry=bt709", "!",
        "x264enc", "speed-preset=ultrafast", f"bitrate={WAYLAND_BITRATE // 1000}", "vbv-buf-capacity=250",
        f"key-int-max={FPS}", "bframes=0", "threads=1",
        "option-string=aq-mode=1:8x8dct=1:cabac=1:deblock=0,0:rc-lookahead=0:sync-lookahead=0:scenecut=0", "!",
        "video/x-h264,profile=high,stream-format=byte-stream", "!", "filesink", f"location={target}"]


def copy_to_mp4(stream, target):
    """Puts H.264 without a container into a file with one."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-r", str(FPS), "-i", stream, "-c", "copy", target], check=True)


def _cpu_seconds(*words):
    process = subprocess.Popen([str(word) for word in words])
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        raise RuntimeError(f"{words[0]} failed with exit code {process.returncode}")
    return usage.ru_utime + usage.ru_stime


def decode_mix(clip, target):
    """Decodes the clip's mix to PCM, the input of a save."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", clip, "-map", "0:a:0", target], check=True)


def copy_and_encode_mix(clip, mix, target):
    """Copies the video and encodes one audio track: the minimum work for a clip."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", clip, "-i", mix, "-map", "0:v:0", "-map", "1:a:0", "-c:v", "copy",
                    "-c:a", "aac", "-b:a", "192k", target], check=True)


def make_clip(target, seconds):
    """Makes a clip of moving video with one key frame per second, at the bit rate of a recording."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"testsrc2=s={WIDTH}x{HEIGHT}:r={FPS}:d={seconds}",
                    "-c:v", "libx264", "-preset", "ultrafast", "-b:v", str(BITRATE), "-g", str(FPS), "-pix_fmt", "yuv420p",
                    "-movflags", "faststart", target], check=True)


def thumbnail(clip, target):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-ss", "1", "-i", clip, "-frames:v", "1", "-vf", "scale=640:-1", target],
                   check=True)
