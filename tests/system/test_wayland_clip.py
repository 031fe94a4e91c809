#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Clips of the screen that a Wayland desktop shares: every frame, sound in sync with the picture."""
import subprocess

import clip
import desktop
import wayland_recording


class WaylandClip(wayland_recording.WaylandRecordingTest):
    def test_clip_has_every_frame(self):
        def record():
            program = self.recording(clipLength=10, **desktop.EVERY_FRAME)
            scene = self.scene()
            program.record(12)
            result = clip.Clip(program.save())
            program.stop()
            scene.stop()
            self.assertEqual((result.video[0]["width"], result.video[0]["height"]), wayland_recording.SIZE)
            return scene, result.counters()

        self.assert_no_frame_lost(record)

    def test_length_and_sound_in_sync_with_the_picture(self):
        program = self.recording(clipLength=15, **desktop.EVERY_FRAME)
        self.scene()
        program.record(17)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 15)
        self.assertLessEqual(result.length, 16.35)
        leads = [lead for lead in result.sound_lead(1) if abs(lead) < 0.5]
        print(f"sound before picture: mean {1000 * sum(leads) / max(1, len(leads)):+.1f} ms, "
              f"from {1000 * min(leads):+.1f} to {1000 * max(leads):+.1f} ms, {len(leads)} beeps")
        self.assertGreaterEqual(len(leads), 13)
        self.assertLessEqual(max(map(abs, leads)), 0.040)

    def test_still_screen_needs_little_cpu_and_can_be_saved(self):
        program = self.recording(clipLength=3, **desktop.OWN_DEFAULTS)
        self.scene("--still", "--silent")
        program.record(2)
        used = desktop.cpu_share(program.process, 4)
        print(f"{100 * used:.1f} % of a core for a still screen")
        self.assertLess(used, 0.1)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 3)
        # The key frame that the clip starts with may be a picture from before the scene.
        counters = result.counters()
        self.assertIn(0, counters)
        self.assertEqual(set(counters[counters.index(0):]), {0})

    def test_command_saves_a_clip(self):
        program = self.recording(clipLength=1)
        program.record(1.5)
        self.assertEqual(subprocess.run([program.PROGRAM, "--save-clip"], timeout=10).returncode, 0)
        program.wait_for_clips(1)
        program.end()
        answer = subprocess.run([program.PROGRAM, "--save-clip"], timeout=10, capture_output=True, text=True)
        self.assertEqual(answer.returncode, 1)
        self.assertTrue(answer.stdout + answer.stderr)


if __name__ == "__main__":
    desktop.main()
