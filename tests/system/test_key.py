#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The save shortcut, pressed through the X server."""
import time

import clip
import desk


class Key(desk.DeskTest):
    def test_two_presses_a_tenth_of_a_second_apart_give_two_clips(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=2)
        program.record(3)
        desk.press()
        time.sleep(0.1)
        desk.press()
        first, second = (clip.Clip(path) for path in program.wait_for_clips(2))
        self.assertEqual(len(program.visible_clips()), 2)
        self.assertNotEqual(first.path, second.path)
        shared = set(first.counters()) & set(second.counters())
        self.assertGreater(len(shared), 60, "the clips do not overlap")
        self.assertGreater(second.counters()[-1], first.counters()[-1], "the second clip has no end of its own")

    def test_lock_keys_do_not_matter(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(1.5)
        for lock in ("Num_Lock", "Caps_Lock"):
            desk.press(lock)
            self.addCleanup(desk.press, lock)
            count = len(program.saved)
            desk.press()
            program.wait_for_clips(count + 1)

    def test_press_while_starting_gives_one_clip_a_second_later(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=3, autoStart=False)
        program.wait_for_state("idle")
        # A sound server that takes its time keeps the program in this state.
        desk.sound_server("pause")
        try:
            program.call("Start")
            desk.press()
            self.assertEqual(program.get("State"), "starting")
        finally:
            desk.sound_server("resume")
        program.wait_for_state("recording")
        result = clip.Clip(program.wait_for_clips(1)[0])
        time.sleep(1.5)
        self.assertEqual(len(program.saved), 1)
        # It ends a second and a quarter after recording began, and cannot reach further back than that.
        self.assertGreater(result.length, 0.5)
        self.assertLess(result.length, 2.2)

    def test_closed_window_leaves_recorder_and_key_alive(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(0)
        desk.close_window()
        time.sleep(1.5)
        self.assertEqual(program.get("State"), "recording")
        desk.press()
        counters = clip.Clip(program.wait_for_clips(1)[0]).counters()
        # Of the time in which there was no window.
        self.assertGreater(len(set(counters)), 30)
        self.assertEqual(program.get("State"), "recording")

    def test_press_while_nothing_records_gives_none(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        desk.press()
        # Until the program has looked at what the X server sent: it reads the bus first.
        for _ in range(2):
            program.get("State")
        program.call("Start")
        program.record(1.5)
        self.assertEqual(program.saved + program.failed, [])


if __name__ == "__main__":
    desk.main()
