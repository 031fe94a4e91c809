#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The save shortcut, pressed through the X server."""
import time

import clip
import desktop


class Key(desktop.DesktopTest):
    def test_two_presses_a_tenth_of_a_second_apart_give_two_clips(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=2)
        program.record(3)
        desktop.press()
        time.sleep(0.1)
        desktop.press()
        first, second = (clip.Clip(path) for path in program.wait_for_clips(2))
        self.assertEqual(len(program.visible_clips()), 2)
        self.assertNotEqual(first.path, second.path)
        shared = set(first.counters()) & set(second.counters())
        self.assertGreater(len(shared), 30, "the clips do not overlap")
        self.assertGreater(second.counters()[-1], first.counters()[-1], "the second clip does not end later")

    def test_lock_keys_do_not_disable_the_shortcut(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(1.5)
        for lock in ("Num_Lock", "Caps_Lock"):
            desktop.press(lock)
            self.addCleanup(desktop.press, lock)
            count = len(program.saved)
            desktop.press()
            program.wait_for_clips(count + 1)

    def test_press_right_after_the_start_gives_one_clip(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=3, autoStart=False)
        program.wait_for_state("idle")
        program.call("Start")
        desktop.press()
        program.wait_for_state("recording")
        result = clip.Clip(program.wait_for_clips(1)[0])
        time.sleep(1.5)
        self.assertEqual(len(program.saved), 1)
        # The clip ends 1.25 s after the start of the recording, so it cannot be longer.
        self.assertGreater(result.length, 0)
        self.assertLess(result.length, 2.2)

    def test_recorder_and_shortcut_work_without_a_window(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(0)
        desktop.close_window()
        time.sleep(1.5)
        self.assertEqual(program.get("State"), "recording")
        desktop.press()
        counters = clip.Clip(program.wait_for_clips(1)[0]).counters()
        # The clip shows the time without a window.
        self.assertGreater(len(set(counters)), 15)
        self.assertEqual(program.get("State"), "recording")

    def test_press_without_a_recording_saves_no_clip(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        desktop.press()
        # Until the program has received the key press.
        time.sleep(0.3)
        program.call("Start")
        program.record(1.5)
        self.assertEqual(program.saved + program.failed, [])


if __name__ == "__main__":
    desktop.main()
