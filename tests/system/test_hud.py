#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The HUD above a full-screen game: it is visible and does not disturb the game."""
import dataclasses
import re
import subprocess
import time

import desktop
import full_screen_game
import other_program
import screen_reader

SCREEN = (1920, 1080)
SIZE = (330, 66)
PLACE = (SCREEN[0] - 24 - SIZE[0], 48)
MIDDLE = (PLACE[0] + SIZE[0] // 2, PLACE[1] + SIZE[1] // 2)
# Seconds on the screen, with the fade-out.
LIFE = 2.9
# Permitted delay in seconds.
SLACK = 0.8


@dataclasses.dataclass(frozen=True)
class TopLevel:
    """A child window of the X server's root window."""
    number: int
    size: tuple
    place: tuple


def top_levels():
    """Those of all programs, the topmost first."""
    rows = re.findall(r"^ +(0x[0-9a-f]+) .* (\d+)x(\d+)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$",
                      desktop.run("xwininfo", "-root", "-children"), re.MULTILINE)
    return [TopLevel(int(number, 16), (int(width), int(height)), (int(x), int(y))) for number, width, height, x, y in rows]


def window_info(number):
    """The X server's description of a window. Empty if there is no such window."""
    return subprocess.run(["xwininfo", "-id", str(number), "-stats", "-tree"], capture_output=True, text=True).stdout


def huds():
    return [window for window in top_levels() if window.size == SIZE and "IsViewable" in window_info(window.number)]


class Hud(desktop.DesktopTest):
    def setUp(self):
        self.game = other_program.OtherProgram("full_screen_game.py")
        self.addCleanup(self.game.stop)

    def recording(self):
        """Starts the program, closes its window and gives the game the focus."""
        program = self.quelto(clipLength=1, showOverlay=True)
        program.record(1.5)
        desktop.close_window()
        desktop.run("wmctrl", "-F", "-a", "Game")
        desktop.wait_until(lambda: (self.events() or [None])[-1] == "focused", 5, "the game to have the focus")
        self.game.lines.clear()
        return program

    def events(self):
        return [line for line in list(self.game.lines) if line in ("focused", "unfocused")]

    def shown(self, program):
        """Saves a clip. Returns its HUD and the time at which it was first seen."""
        program.save()
        found = desktop.wait_until(huds, 5, "the HUD")
        return found[0], time.monotonic()

    def assert_over_the_game(self, hud):
        """Checks the X server's stacking order and the pixels on the screen."""
        order = [window.number for window in top_levels()]
        frame = self.number_of_game()
        while frame not in order:
            frame = int(re.search(r"Parent window id: (0x[0-9a-f]+)", window_info(frame))[1], 16)
        self.assertLess(order.index(hud.number), order.index(frame))
        self.assertNotIn(full_screen_game.GROUND, screen_reader.colours(MIDDLE[0] - 40, MIDDLE[1] - 10, 80, 20))

    def number_of_game(self):
        return int(desktop.visible_windows("Game")[0])

    def wait_until_gone(self):
        desktop.wait_until(lambda: not huds(), LIFE + 3, "the HUD to disappear")
        return time.monotonic()

    def test_is_above_the_game_and_disappears_by_itself(self):
        program = self.recording()
        focus = desktop.run("xdotool", "getwindowfocus")
        hud, since = self.shown(program)
        self.assertEqual(hud.place, PLACE)
        self.assertIn("Override Redirect State: yes", window_info(hud.number))
        # The background fades in.
        desktop.wait_until(lambda: full_screen_game.GROUND not in
                        screen_reader.colours(MIDDLE[0] - 40, MIDDLE[1] - 10, 80, 20), 2, "the HUD's background")
        self.assert_over_the_game(hud)
        self.assertEqual(desktop.run("xdotool", "getwindowfocus"), focus)
        life = self.wait_until_gone() - since
        print(f"the HUD was visible for {life:.2f} s")
        self.assertGreater(life, LIFE - 0.3)
        self.assertLess(life, LIFE + SLACK)
        self.assertEqual(desktop.run("xdotool", "getwindowfocus"), focus)
        self.assertEqual(self.events(), [], "the game lost the focus")
        self.assertEqual(window_info(hud.number), "", "the window is only hidden")

    def test_click_on_it_reaches_the_game(self):
        program = self.recording()
        self.shown(program)
        screen_reader.move_pointer(*MIDDLE)
        desktop.run("xdotool", "click", 1)
        self.assertEqual(self.game.wait_for("clicked"), [f"{MIDDLE[0]} {MIDDLE[1]}"])
        self.assertEqual(len(huds()), 1, "the HUD was gone before the click")
        self.assertEqual(self.events(), [])

    def test_is_visible_on_every_workspace(self):
        program = self.recording()
        desktop.run("wmctrl", "-n", 2)
        self.addCleanup(desktop.run, "wmctrl", "-s", 0)
        desktop.run("wmctrl", "-s", 1)
        self.wait_for_workspace(1)
        hud, _ = self.shown(program)
        self.assertEqual(hud.place, PLACE)
        # It is on every workspace.
        desktop.run("wmctrl", "-s", 0)
        self.wait_for_workspace(0)
        self.assertEqual(huds(), [hud])
        self.assert_over_the_game(hud)

    def wait_for_workspace(self, number):
        desktop.wait_until(lambda: re.search(rf"^{number} +\*", desktop.run("wmctrl", "-d"), re.MULTILINE), 3, "the workspace")

    def test_second_save_replaces_the_first_hud(self):
        program = self.recording()
        first, _ = self.shown(program)
        time.sleep(1)
        program.call("SaveClip")
        seen = []

        def second():
            seen.append(huds())
            return [hud for hud in seen[-1] if hud.number != first.number]

        found = desktop.wait_until(second, 5, "the second HUD")
        since = time.monotonic()
        self.assertEqual(found[0].place, PLACE)
        while True:
            now = huds()
            if time.monotonic() - since > LIFE - 0.5:
                break
            seen.append(now)
        self.assertEqual(seen[-1], found, "the second HUD ended at the time of the first")
        self.assertLessEqual(max(map(len, seen)), 1)
        self.assertLess(self.wait_until_gone() - since, LIFE + SLACK)

    def test_stays_above_a_game_that_is_raised_again(self):
        program = self.recording()
        hud, _ = self.shown(program)
        desktop.run("xdotool", "windowraise", self.number_of_game())
        desktop.run("wmctrl", "-F", "-a", "Game")
        desktop.run("wmctrl", "-F", "-r", "Game", "-b", "toggle,fullscreen")
        desktop.run("wmctrl", "-F", "-r", "Game", "-b", "toggle,fullscreen")
        desktop.wait_until(lambda: any(window.size == SCREEN for window in top_levels()), 2, "the game on the whole screen")
        self.assertEqual(huds(), [hud])
        self.assert_over_the_game(hud)

    def test_is_not_shown_if_switched_off(self):
        program = self.recording()
        program.set("showOverlay", False)
        program.save()
        since = time.monotonic()
        while time.monotonic() - since < 1:
            self.assertEqual(huds(), [])


if __name__ == "__main__":
    desktop.main()
