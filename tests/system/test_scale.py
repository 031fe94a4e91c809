#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""With a scale factor of 2, everything is twice as large and reacts at its position. Needs a screen of 2600x1700."""
import re
import time

import numpy

import desktop
import screen_reader
import window

SCREEN = (2600, 1700)
TITLE = "RAMPAGE (Axe)"
CARD = re.escape(TITLE) + ", .*"
TWICE = {"QT_SCALE_FACTOR": "2"}


class Scale(window.WindowTest):
    def setUp(self):
        super().setUp()
        self.put(f"Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] {TITLE}")
        self.put("Dota 2 - 2026-03-01 20.10.07", 60)

    def twice(self):
        """Starts the program with scale factor 2, and a reader for it."""
        self.reader = screen_reader.ScreenReader(scale=2)
        self.addCleanup(self.reader.close)
        return self.window(TWICE)

    def seen(self, width, height):
        """The picture of the window, when it no longer changes."""
        self.reader.find("list item", CARD)
        screen_reader.move_pointer(1, 1)
        x, y, *size = desktop.wait_until(self.settled, 5, "the window to settle")
        self.assertEqual(size, [width, height])

        def still():
            before, after = (screen_reader.picture(x, y, width, height) for _ in range(2))
            return before if before == after else None

        # Until the cards have their thumbnails.
        time.sleep(1)
        return numpy.frombuffer(desktop.wait_until(still, 5, "a picture that does not change"), numpy.uint8).reshape(height, width, 3)

    def test_everything_is_twice_as_large(self):
        program = self.window()
        once = self.seen(1240, 780).astype(float)
        program.end()
        self.twice()
        twice = self.seen(2480, 1560).astype(float)
        reduced = twice.reshape(780, 2, 1240, 2, 3).mean(axis=(1, 3))
        difference = abs(reduced - once).mean()
        print(f"the pictures differ by {difference:.2f} of 255")
        self.assertLess(difference, 1)
        # The window is drawn at the higher resolution, not enlarged.
        self.assertGreater(abs(twice - reduced.repeat(2, axis=0).repeat(2, axis=1)).max(), 40)

    def test_first_start_is_in_the_middle_of_the_screen(self):
        self.twice()
        x, y, width, height = self.frame()
        self.assertAlmostEqual(x + width / 2, SCREEN[0] / 2, delta=20)
        self.assertAlmostEqual(y + height / 2, SCREEN[1] / 2, delta=40)

    def test_click_on_a_card_opens_it(self):
        program = self.twice()
        self.reader.click("push button", "Dota 2, 2")
        desktop.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.reader.click("list item", CARD)
        self.reader.find("heading", re.escape(TITLE))

    def test_frame_is_restored_and_does_not_grow(self):
        program = self.twice()
        placed = self.put_window(120, 90, 2200, 1400)
        for _ in range(2):
            program.end()
            self.assertEqual(self.restart(program), placed)

    def test_hud_is_twice_as_large_and_as_far_from_the_edges(self):
        program = self.quelto(TWICE, clipLength=1, showOverlay=True)
        program.record(1.5)
        program.save()
        rows = desktop.wait_until(lambda: re.findall(r" 660x132\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$",
                                                  desktop.run("xwininfo", "-root", "-children"), re.MULTILINE), 3, "the HUD")
        self.assertEqual(rows, [(str(SCREEN[0] - 660 - 48), "96")])


if __name__ == "__main__":
    desktop.main()
