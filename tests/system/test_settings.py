#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Which settings restart the recording, and how settings are stored."""
import time

import clip
import desktop


class Settings(desktop.DesktopTest):
    def test_capture_setting_restarts_within_about_a_second(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=15, fps=60)
        program.record(4)
        self.assertIn("60 FPS", program.get("CaptureSummary"))
        changed = time.monotonic()
        program.set("fps", 30)
        desktop.wait_until(lambda: "30 FPS" in program.get("CaptureSummary") and program.get("State") == "recording", 5,
                        "the recording at 30 frames")
        taken = time.monotonic() - changed
        print(f"restarted after {taken:.2f} s")
        self.assertGreater(taken, 0.7)
        self.assertLess(taken, 2.5)
        program.record(1)
        # The restart has emptied the buffer.
        self.assertLess(clip.Clip(program.save()).length, 3)

    def test_clip_length_and_volumes_do_not_restart(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=2)
        program.record(5)
        program.set("clipLength", 15)
        program.set("systemVolume", 0.5)
        quiet_until = time.monotonic() + 1.5
        while time.monotonic() < quiet_until:
            self.assertEqual(program.get("State"), "recording")
        # With all that the buffer holds: the seconds before the change and those after it.
        self.assertGreaterEqual(clip.Clip(program.save()).length, 6)

    def test_output_size_follows_the_resolution_setting(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1, resolution="p720", codec="hevc")
        program.record(2)
        self.assertIn("1280×720", program.get("CaptureSummary"))
        result = clip.Clip(program.save())
        self.assertEqual((result.video[0]["codec_name"], result.video[0]["width"], result.video[0]["height"]),
                         ("hevc", 1280, 720))
        self.assertNotIn(None, result.counters())

    def test_values_that_no_control_produces_are_refused(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        for key, value in (("clipLength", -5), ("clipLength", 61), ("fps", 30.5), ("micVolume", 3), ("displayID", -1),
                           ("colorTheme", "none"), ("showCursor", 1), ("noSuchSetting", 1), ("objectName", "x")):
            with self.assertRaisesRegex(AssertionError, key):
                program.set(key, value)
        self.assertIn("clipLength=15\n", desktop.Quelto.settings_file.read_text())
        program.set("clipLength", 60)
        program.set("micVolume", 2)
        self.assertIn("clipLength=60\n", desktop.Quelto.settings_file.read_text())

    def test_changed_settings_are_written_at_once_under_their_names(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        program.set("clipLength", 45)
        program.set("quality", "ultra")
        program.set("showCursor", False)
        program.set("micVolume", 1.5)
        lines = desktop.Quelto.settings_file.read_text().splitlines()
        self.assertEqual(lines[0], "[General]")
        for line in ("clipLength=45", "quality=ultra", "showCursor=false", "micVolume=1.5"):
            self.assertIn(line, lines)
        self.assertNotIn("hotkeyCode", "\n".join(lines), "a default was written")


if __name__ == "__main__":
    desktop.main()
