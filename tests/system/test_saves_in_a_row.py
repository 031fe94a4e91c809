#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Saves do not disturb the recording."""
import clip
import desktop


class SavesInARow(desktop.DesktopTest):
    def test_twenty_saves_lose_no_frame(self):
        self.assert_no_frame_lost(self.record_with_saves)

    def record_with_saves(self):
        scene = self.scene()
        # As automatic clips are on by default, the buffer is longer than these clips.
        program = self.quelto(clipLength=3, **desktop.EVERY_FRAME)
        program.record(4)
        for _ in range(20):
            program.save()
        self.assertEqual(len(program.visible_clips()), 20)
        program.set("clipLength", 30)
        result = clip.Clip(program.save())
        program.stop()
        scene.stop()
        self.assertGreater(result.length, 8)
        return scene, result.counters()


if __name__ == "__main__":
    desktop.main()
