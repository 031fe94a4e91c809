#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The settings page while the program records: the recording and the clips follow what is chosen there."""
import os
import re
import shutil
import subprocess
import time

import clip
import desktop
import frozen_thread
import screen_reader
import settings_page
import test_hud
from settings_page import stored

TONE, MIC_TONE, CHAT_TONE, OTHER_MIC_TONE = 440, 700, 900, 1300
LEVEL = 0.25
MIX, SYSTEM, MICROPHONE, CHAT = range(4)
# The states of a recording that is built again.
RESTART = ["idle", "starting", "recording"]


class TonePlayer:
    """Plays a tone as a program of that name."""

    def __init__(self, name, hertz, *target):
        program = desktop.TEST_FOLDER / "programs" / name
        program.parent.mkdir(exist_ok=True)
        if not program.exists():
            shutil.copy(os.environ["QUELTO_TONE_PLAYER"], program)
        self._process = subprocess.Popen([program, str(hertz), str(hertz), str(LEVEL), *target], stdin=subprocess.PIPE)

    def quit(self):
        self._process.communicate(timeout=10)


class SettingsCapture(settings_page.SettingsPageTest):
    def wait_for_summary(self, *words):
        desktop.wait_until(lambda: self.program.get("State") == "recording" and
                           all(word in self.program.get("CaptureSummary") for word in words), 8,
                           f"a recording with {words}; it is {self.program.get('CaptureSummary')}")

    def wait_for_restart(self, change):
        """Changes something that restarts the recording, and waits until it records again."""
        before = len(self.program.states)
        change()
        desktop.wait_until(lambda: self.program.states[before:] == RESTART, 5, "a restart")

    def test_burst_of_changes_restarts_once_and_the_last_values_count(self):
        self.scene("--motion", "low", "--silent")
        self.program = self.recording_page(clipLength=1, resolution="p1080", quality="high", codec="h264", fps=60)
        steps = [("radio button", "Yerel"), ("radio button", "1440p"), ("radio button", "Düşük"), ("radio button", "120"),
                 ("radio button", "HEVC"), ("check box", "İmleci göster"), ("check box", "Sesli sohbeti ayrı kaydet"),
                 ("check box", "Mikrofonu kaydet"), ("radio button", "30"), ("radio button", "720p")]
        items = [self.reader.find_anywhere(role, name) for role, name in steps]
        before = len(self.program.states)
        begin = time.monotonic()
        for item in items:
            self.reader.act(item, "Press")
        taken = time.monotonic() - begin
        self.wait_for_summary("1280×720", "30 FPS")
        # A second restart would follow within the second after the first.
        time.sleep(2)
        print(f"ten changes in {taken:.2f} s")
        self.assertLess(taken, 0.8)
        self.assertEqual(self.program.states[before:], RESTART)
        result = clip.Clip(self.program.save())
        video = result.video[0]
        self.assertEqual((video["codec_name"], video["width"], video["height"]), ("hevc", 1280, 720))
        self.assert_rate(result, 30)
        self.assertEqual(len(result.audio), 1, "the microphone is still recorded")

    def assert_rate(self, result, rate):
        packets = result.packets()
        self.assertAlmostEqual((len(packets) - 1) / (packets[-1][0] - packets[0][0]), rate, delta=rate / 10)

    def test_length_and_frame_rate_reach_the_clip(self):
        self.scene("--motion", "low", "--silent")
        self.program = self.recording_page(clipLength=300, fps=60)
        self.press("radio button", "30")
        self.press("radio button", "15 sn")
        self.wait_for_summary("30 FPS")
        self.program.record(19)
        result = clip.Clip(self.program.save())
        self.assert_rate(result, 30)
        self.assertGreaterEqual(result.length, 15)
        self.assertLess(result.length, 18)

    def test_cursor_is_in_the_picture_while_it_is_on(self):
        self.program = self.recording_page(clipLength=1, showCursor=False, resolution="p1080")
        self.put_window(100, 60, 1240, 780)
        screen_reader.move_pointer(1700, 960)
        self.assertFalse(self.has_cursor())
        item = self.reader.find_anywhere("check box", "İmleci göster")
        self.wait_for_restart(lambda: self.reader.act(item, "Press"))
        self.assertTrue(self.has_cursor())
        self.wait_for_restart(lambda: self.reader.act(item, "Press"))
        self.assertFalse(self.has_cursor())

    def has_cursor(self):
        """Whether the place of the pointer, on the empty desktop, looks different from the desktop beside it."""
        self.program.record(1.5)
        picture = clip.Clip(self.program.save()).pictures()[-1].astype(int)
        place, beside = picture[236:246, 420:432], picture[236:246, 450:462]
        return bool(abs(place - beside.mean()).max() > 8)

    def test_chosen_display_is_recorded_and_one_that_is_gone_stays_stored(self):
        self.add_monitors()
        self.scene("--motion", "low", "--silent", "--size", "800x1080", "--position", "1120,0")
        self.program = self.recording_page(clipLength=1)
        self.put_window(0, 40, 1100, 700)
        self.jump("Kayıt")
        names, selected = self.open_menu("Ekran")
        self.assertEqual((names, selected), (["Ana ekran", "left", "right"], ["Ana ekran"]))
        desktop.press("Escape")
        self.reader.wait_until_gone("list item", ".*")
        self.wait_for_restart(lambda: self.choose("Ekran", "right"))
        self.program.record(2)
        result = clip.Clip(self.program.save())
        self.assertEqual((result.video[0]["width"], result.video[0]["height"]), (532, 720))
        # The strip would be cut if the picture had any other part of the screen.
        self.assertNotIn(None, result.counters())
        number = stored("displayID")
        self.remove_monitors()
        desktop.wait_until(lambda: self.shown("Ekran") == "—", 5, f"no selected screen; it shows {self.shown('Ekran')}")
        names, selected = self.open_menu("Ekran")
        self.assertEqual((len(names), selected), (2, []))
        desktop.press("Escape")
        self.reader.wait_until_gone("list item", ".*")
        self.assertEqual(stored("displayID"), number)
        self.add_monitors()
        desktop.wait_until(lambda: self.shown("Ekran") == "right", 5, "the screen to return")
        self.assertEqual(stored("displayID"), number)

    def add_monitors(self):
        self.addCleanup(self.remove_monitors)
        desktop.run("xrandr", "--setmonitor", "left", "1120/300x1080/280+0+0", "screen")
        desktop.run("xrandr", "--setmonitor", "right", "800/210x1080/280+1120+0", "none")

    @staticmethod
    def remove_monitors():
        for name in ("right", "left"):
            subprocess.run(["xrandr", "--delmonitor", name], capture_output=True)

    def load(self, *words):
        module = desktop.run("pactl", "load-module", *words).strip()
        self.addCleanup(subprocess.run, ["pactl", "unload-module", module], capture_output=True)
        return module

    def second_microphone(self):
        return self.load("module-remap-source", "master=quelto_other_in.monitor", "source_name=quelto_other",
                         "source_properties='device.description=\"Other microphone\"'")

    def test_chosen_microphone_is_recorded_and_one_that_is_gone_stays_stored(self):
        self.load("module-null-sink", "sink_name=quelto_other_in", "rate=48000", "channels=2")
        module = self.second_microphone()
        other = TonePlayer("other_sound", OTHER_MIC_TONE, "steady", "quelto_other_in")
        self.addCleanup(other.quit)
        self.scene("--mic-tone", MIC_TONE, "--motion", "low")
        self.program = self.recording_page(clipLength=2)
        self.jump("Ses")
        self.wait_for_restart(lambda: self.choose("Mikrofon", "Other microphone"))
        self.assertEqual(self.shown("Mikrofon"), "Other microphone")
        self.program.record(3.5)
        self.assert_tones(self.program.save(), MICROPHONE, {OTHER_MIC_TONE: LEVEL})
        name = stored("microphoneID")
        desktop.run("pactl", "unload-module", module)
        desktop.wait_until(lambda: "Other microphone" not in self.microphones(), 5, "the microphone to be gone from the menu")
        self.assertEqual((self.shown("Mikrofon"), stored("microphoneID")), ("—", name))
        self.assertEqual(self.program.get("State"), "recording")
        self.second_microphone()
        desktop.wait_until(lambda: "Other microphone" in self.microphones(), 5, "the microphone in the menu")
        self.assertEqual((self.shown("Mikrofon"), stored("microphoneID")), ("Other microphone", name))

    def microphones(self):
        """The entries of the menu, which it reads each time it opens."""
        names, _ = self.open_menu("Mikrofon")
        time.sleep(0.3)
        names, _ = self.entries()
        desktop.press("Escape")
        self.reader.wait_until_gone("list item", ".*")
        return names

    def assert_tones(self, path, track, levels):
        """The track has these tones at their levels, and none of the others."""
        channel = clip.Clip(path).sound(track)[:, 0]
        for hertz in (TONE, MIC_TONE, CHAT_TONE, OTHER_MIC_TONE):
            with self.subTest(track=track, hertz=hertz):
                self.assertAlmostEqual(clip.tone_level(channel, hertz), levels.get(hertz, 0), delta=0.015)

    def test_sound_controls_reach_the_clip(self):
        self.scene("--tone", TONE, "--mic-tone", MIC_TONE, "--motion", "low")
        chat = TonePlayer("Discord", CHAT_TONE)
        self.addCleanup(chat.quit)
        self.program = self.recording_page(clipLength=2)
        self.program.record(3.5)
        self.reader.set_value(self.reader.find_anywhere("slider", "Sistem sesi seviyesi"), 0.5)
        self.reader.set_value(self.reader.find_anywhere("slider", "Mikrofon seviyesi"), 1.5)
        self.wait_for_stored("systemVolume", "0.5")
        self.wait_for_stored("micVolume", "1.5")
        path = self.program.save()
        self.assert_tones(path, MIX, {TONE: LEVEL * 0.5, CHAT_TONE: LEVEL * 0.5, MIC_TONE: LEVEL * 1.5})
        self.assert_tones(path, CHAT, {CHAT_TONE: LEVEL})

        self.wait_for_restart(lambda: self.switch("Sesli sohbeti ayrı kaydet", "captureVoiceChat", False))
        self.program.record(3.5)
        self.assert_tones(self.program.save(), CHAT, {})
        self.wait_for_restart(lambda: self.switch("Sistem sesini kaydet", "captureAudio", False))
        self.program.record(3.5)
        path = self.program.save()
        self.assert_tones(path, MIX, {MIC_TONE: LEVEL * 1.5})
        self.wait_for_restart(lambda: self.switch("Mikrofonu kaydet", "captureMicrophone", False))
        self.program.record(2)
        self.assertEqual(len(clip.Clip(self.program.save()).audio), 0)
        self.wait_for_restart(lambda: self.switch("Sistem sesini kaydet", "captureAudio", True))
        self.program.record(3.5)
        path = self.program.save()
        self.assertEqual(len(clip.Clip(path).audio), 1)
        self.assert_tones(path, MIX, {TONE: LEVEL * 0.5, CHAT_TONE: LEVEL * 0.5})

    def test_automatic_start_follows_the_switch_at_the_next_start(self):
        self.program = self.recording_page(autoStart=True)
        self.switch("Açılışta kaydı başlat", "autoStart", False)
        self.program.end()
        self.restart(self.program)
        time.sleep(1)
        self.assertEqual(self.program.get("State"), "idle")
        self.open_page(self.program)
        self.switch("Açılışta kaydı başlat", "autoStart", True)
        self.program.end()
        self.program.start()
        self.program.wait_for_state("recording")

    def test_next_clip_goes_to_the_folder_that_the_dialog_returns(self):
        self.program = self.recording_page(clipLength=1)
        self.program.record(1.5)
        chosen = self.new_folder("other clips")
        self.press("push button", "Değiştir…")
        self.answer_dialog("Escape")
        self.assertEqual(stored("saveFolder"), str(self.folder))
        self.press("push button", "Değiştir…")
        self.answer_dialog(str(chosen), "Return")
        self.wait_for_stored("saveFolder", str(chosen))
        self.assertEqual(self.program.save().parent, chosen)
        self.wait_for_count("Tüm Klipler", 1)
        self.assertEqual(list(self.folder.iterdir()), [])

    def answer_dialog(self, *keys):
        """Types into the dialog: texts that begin with a slash, and names of keys."""
        desktop.wait_until(lambda: desktop.active_window() == "Kayıt klasörü", 10, "the folder dialog")
        for key in keys:
            if key.startswith("/"):
                desktop.press("ctrl+a")
                desktop.run("xdotool", "type", key)
            else:
                desktop.press(key)
        desktop.wait_until(lambda: not desktop.visible_windows("Kayıt klasörü"), 5, "the dialog to close")

    def test_overlay_and_sound_follow_their_switches(self):
        self.program = self.recording_page(clipLength=1, captureAudio=False, captureMicrophone=False)
        self.program.record(1.5)
        self.assertEqual(self.reactions(), (False, False))
        self.switch("Ekranda bildirim göster", "showOverlay", True)
        self.assertEqual(self.reactions(), (True, False))
        self.switch("Ekranda bildirim göster", "showOverlay", False)
        self.switch("Klip kaydedilince ses çal", "playSound", True)
        self.assertEqual(self.reactions(), (False, True))

    def reactions(self):
        """Saves a clip. Returns whether there was a HUD, and whether there was a sound on the speaker."""
        listener = subprocess.Popen(["parec", "--raw", "--format=s16le", "--rate=48000", "--channels=1", "--latency-msec=20",
                                     "-d", os.environ["QUELTO_TEST_SPEAKER"] + ".monitor"], stdout=subprocess.PIPE)
        try:
            listener.stdout.read(960)
            self.program.save()
            has_hud = False
            until = time.monotonic() + 2
            while time.monotonic() < until:
                has_hud = has_hud or bool(test_hud.huds())
        finally:
            listener.terminate()
            sound, _ = listener.communicate()
        desktop.wait_until(lambda: not test_hud.huds(), 5, "the end of the HUD")
        samples = clip.numpy.frombuffer(sound[:len(sound) // 2 * 2], clip.numpy.int16).astype(int)
        return has_hud, bool(abs(samples).max() > 300)

    def test_window_answers_while_the_disk_of_the_settings_hangs(self):
        self.program = self.recording_page(micVolume=1)
        self.jump("Ses")
        # The thread that writes starts with the first change.
        self.switch("Sesli sohbeti ayrı kaydet", "captureVoiceChat", False)
        slider = self.reader.find("slider", "Mikrofon seviyesi")
        try:
            thread = frozen_thread.FrozenThread(self.program.process, "quelto.settings")
        except OSError as error:
            self.skipTest(f"cannot stop a thread: {error}")
        delays = []
        try:
            left, _, width, _ = slider.bounds
            screen_reader.move_pointer(*slider.middle)
            desktop.run("xdotool", "mousedown", 1)
            begin = time.monotonic()
            while (passed := time.monotonic() - begin) < 2:
                desktop.run("xdotool", "mousemove", left + int(width * abs(1 - passed)), slider.middle[1])
                asked = time.monotonic()
                self.reader.value(slider)
                delays.append(time.monotonic() - asked)
            screen_reader.move_pointer(left + width * 3 // 4, slider.middle[1])
            desktop.run("xdotool", "mouseup", 1)
            last = self.reader.value(slider)
            self.assertEqual(stored("micVolume"), "1")
        finally:
            thread.release()
        print(f"{len(delays)} answers while the disk hangs, the slowest after {1000 * max(delays):.0f} ms")
        self.assertLess(max(delays), 0.2)
        self.assertNotEqual(last, 1)
        desktop.wait_until(lambda: abs(float(stored("micVolume")) - last) < 1e-9, 3, f"{last} in the file")


if __name__ == "__main__":
    desktop.main()
