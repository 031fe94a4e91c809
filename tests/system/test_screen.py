#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Changes of the screen: another size, no movement, a missing display, and the end of the X server."""
import time

import clip
import desktop


class Screen(desktop.DesktopTest):
    @classmethod
    def setUpClass(cls):
        desktop.run("xrandr", "--newmode", "small", "74", "1280", "1320", "1360", "1440", "720", "730", "740", "760")
        desktop.run("xrandr", "--addmode", "screen", "small")

    def test_resize_keeps_the_output_size_and_the_buffer(self):
        self.scene()
        self.addCleanup(desktop.run, "xrandr", "--output", "screen", "--mode", "1920x1080")
        program = self.quelto(clipLength=10, **desktop.OWN_DEFAULTS)
        program.record(3)
        desktop.run("xrandr", "--output", "screen", "--mode", "small")
        time.sleep(2.5)
        self.assertEqual(program.get("State"), "recording")
        desktop.run("xrandr", "--output", "screen", "--mode", "1920x1080")
        time.sleep(2.5)
        result = clip.Clip(program.save())
        self.assertEqual((result.video[0]["width"], result.video[0]["height"]), (1920, 1080))
        self.assertGreater(result.length, 7)
        counters = [counter for counter in result.counters() if counter is not None]
        self.assertGreater(len(counters), 0.9 * len(result.pictures()), "too many counters cannot be read")
        self.assertGreater(counters[-1] - counters[0], 7 * 60, "the buffer did not survive")
        # The small screen fills the whole picture too.
        middle = result.counters()[len(result.pictures()) // 2 - 20:][:40]
        self.assertNotIn(None, middle)

    def test_still_screen_needs_little_cpu_and_can_be_saved(self):
        self.scene("--still", "--silent")
        program = self.quelto(clipLength=3, **desktop.OWN_DEFAULTS)
        program.record(2)
        used = desktop.cpu_share(program.process, 4)
        print(f"{100 * used:.1f} % of a core for a still screen")
        self.assertLess(used, 0.1)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 3)
        self.assertEqual(set(result.counters()), {0})

    def test_missing_display_falls_back_to_the_primary_one(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1, displayID=424242)
        program.record(1.5)
        self.assertNotIn(None, clip.Clip(program.save()).counters())

    def test_end_of_the_x_server_leads_to_the_error_state_or_ends_the_program(self):
        server, display = self.x_server("640x360")
        program = self.quelto({"DISPLAY": display})
        program.wait_for_state("recording")
        server.kill()
        # Qt ends a program when its X connection breaks. In no case may the program hang or crash.
        desktop.wait_until(lambda: program.process.poll() is not None or program.get("State") == "error", 5, "the error state or the end")
        if program.process.poll() is None:
            self.assertTrue(program.get("Message"))
        else:
            self.assertGreaterEqual(program.process.returncode, 0, "ended by a signal")


if __name__ == "__main__":
    desktop.main()
