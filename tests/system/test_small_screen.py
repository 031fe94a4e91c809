#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""On a small screen the whole window is visible, whatever frame was saved. Needs a screen of 1366x768."""
import re

import desktop
import screen_reader
import window

SCREEN = (1366, 768)


class SmallScreen(window.WindowTest):
    def decoration(self):
        """The widths of the window decoration: left, right, top and bottom."""
        text = desktop.run("xprop", "-id", self.window_number(), "_NET_FRAME_EXTENTS")
        return tuple(map(int, re.findall(r"\d+", text.partition("=")[2])))

    def fits(self, bounds, screen):
        """Whether a window with those bounds is on a screen of that size with its whole decoration."""
        x, y, width, height = bounds
        left, right, top, bottom = self.decoration()
        return top > 0 and x >= left and y >= top and x + width + right <= screen[0] and y + height + bottom <= screen[1]

    def assert_visible(self, bounds):
        self.assertTrue(self.fits(bounds, SCREEN), f"{bounds} with the decoration {self.decoration()}")

    def placed(self):
        """Waits until the window manager has placed the window, and returns its bounds."""
        return desktop.wait_until(lambda: self.settled() if self.frame()[1] >= self.decoration()[2] else None, 5,
                               "a title bar on the screen")

    def test_first_start_fits_and_can_be_dragged_by_its_title_bar(self):
        self.window()
        x, y, width, height = self.placed()
        self.assert_visible((x, y, width, height))
        self.assertEqual(width, 1240)
        # The window is as high as the screen allows.
        left, right, top, bottom = self.decoration()
        self.assertEqual(height, SCREEN[1] - top - bottom)
        self.assertAlmostEqual(x + width / 2, SCREEN[0] / 2, delta=2)
        screen_reader.move_pointer(x + width // 2, y - top // 2)
        desktop.run("xdotool", "mousedown", 1)
        for step in (10, 20, 30):
            desktop.run("xdotool", "mousemove_relative", "--sync", step // 3, 0)
        desktop.run("xdotool", "mouseup", 1)
        desktop.wait_until(lambda: self.frame()[0] > x, 3, "the window to follow its title bar")

    def test_window_fits_at_scale_2(self):
        self.reader = screen_reader.ScreenReader(scale=2)
        self.addCleanup(self.reader.close)
        self.window({"QT_SCALE_FACTOR": "2"})
        self.assert_visible(self.placed())
        # The user cannot make it smaller than the room on the screen.
        desktop.run("xdotool", "windowsize", self.window_number(), 300, 200)
        self.assert_visible(self.placed())
        self.assertGreater(self.frame()[2], 1300)

    def test_window_follows_a_change_of_the_screen(self):
        desktop.run("xrandr", "--newmode", "smaller", "74", "960", "970", "980", "1000", "540", "550", "560", "570")
        desktop.run("xrandr", "--addmode", "screen", "smaller")
        self.addCleanup(desktop.run, "xrandr", "--output", "screen", "--mode", "{}x{}".format(*SCREEN))
        self.window()
        self.assert_visible(self.placed())
        desktop.run("xrandr", "--output", "screen", "--mode", "smaller")
        desktop.wait_until(lambda: self.fits(self.settled() or SCREEN * 2, (960, 540)), 5, "the window on the smaller screen")
        desktop.run("xrandr", "--output", "screen", "--mode", "{}x{}".format(*SCREEN))
        desktop.wait_until(lambda: self.settled() and min(self.frame()[2] - 1019, self.frame()[3] - 639) > 0, 5,
                           "the window at its minimum size")
        self.assert_visible(self.frame())

    def test_saved_frames_are_moved_into_the_screen(self):
        program = self.window()
        left, right, top, bottom = self.decoration()
        largest = (SCREEN[0] - left - right, SCREEN[1] - top - bottom)
        for frame, expected in (((0, 0, 3000, 1600), (left, top, *largest)),
                                ((100, -560, 1100, 700), (100, top, 1100, 700)),
                                ((100, 0, 1100, 700), (100, top, 1100, 700)),
                                ((-900, 60, 1100, 680), (left, 60, 1100, 680)),
                                ((1300, 700, 1100, 680),
                                 (SCREEN[0] - right - 1100, SCREEN[1] - bottom - 680, 1100, 680))):
            with self.subTest(frame):
                program.end()
                self.save_frame(program, *frame)
                self.restart(program)
                self.assertEqual(self.placed(), expected)
                # The corrected frame does not change at the next start.
                program.end()
                self.assertEqual(self.restart(program), expected)


if __name__ == "__main__":
    desktop.main()
