#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The on-screen notice over a game that fills the screen: seen, and in nobody's way."""
import dataclasses
import re
import subprocess
import time

import desk
import full_screen_game
import neighbour
import screen_reader

SCREEN = (1920, 1080)
SIZE = (330, 66)
PLACE = (SCREEN[0] - 24 - SIZE[0], 48)
MIDDLE = (PLACE[0] + SIZE[0] // 2, PLACE[1] + SIZE[1] // 2)
# Standing and fading out.
LIFE = 2.9
# What a busy machine adds.
SLACK = 0.8


@dataclasses.dataclass(frozen=True)
class Top:
    """A window as the X server has it, right on its root."""
    number: int
    size: tuple
    place: tuple


def tops():
    """Those of all programs, the uppermost first."""
    rows = re.findall(r"^ +(0x[0-9a-f]+) .* (\d+)x(\d+)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)$",
                      desk.run("xwininfo", "-root", "-children"), re.MULTILINE)
    return [Top(int(number, 16), (int(width), int(height)), (int(x), int(y))) for number, width, height, x, y in rows]


def facts(number):
    """What the X server says of a window; nothing of one that is gone."""
    return subprocess.run(["xwininfo", "-id", str(number), "-stats", "-tree"], capture_output=True, text=True).stdout


def notices():
    return [top for top in tops() if top.size == SIZE and "IsViewable" in facts(top.number)]


class Notice(desk.DeskTest):
    def setUp(self):
        self.game = neighbour.Neighbour("full_screen_game.py")
        self.addCleanup(self.game.stop)

    def recording(self):
        """The program without its window, behind the game that has the focus."""
        program = self.quelto(clipLength=1, showOverlay=True)
        program.record(1.5)
        desk.close_window()
        desk.run("wmctrl", "-F", "-a", "Game")
        desk.wait_until(lambda: (self.events() or [None])[-1] == "focused", 5, "the game to have the focus")
        self.game.lines.clear()
        return program

    def events(self):
        return [line for line in list(self.game.lines) if line in ("focused", "unfocused")]

    def shown(self, program):
        """Saves a clip; its notice, and when it was first seen."""
        program.save()
        found = desk.wait_until(notices, 5, "the notice")
        return found[0], time.monotonic()

    def assert_over_the_game(self, notice):
        """In the X server's order and in what is seen of it."""
        order = [top.number for top in tops()]
        frame = self.number_of_game()
        while frame not in order:
            frame = int(re.search(r"Parent window id: (0x[0-9a-f]+)", facts(frame))[1], 16)
        self.assertLess(order.index(notice.number), order.index(frame))
        self.assertNotIn(full_screen_game.GROUND, screen_reader.colours(MIDDLE[0] - 40, MIDDLE[1] - 10, 80, 20))

    def number_of_game(self):
        return int(desk.visible_windows("Game")[0])

    def wait_until_gone(self):
        desk.wait_until(lambda: not notices(), LIFE + 3, "the notice to go")
        return time.monotonic()

    def test_stands_above_the_game_and_goes_by_itself(self):
        program = self.recording()
        focus = desk.run("xdotool", "getwindowfocus")
        notice, since = self.shown(program)
        self.assertEqual(notice.place, PLACE)
        self.assertIn("Override Redirect State: yes", facts(notice.number))
        # Its ground fades in.
        desk.wait_until(lambda: full_screen_game.GROUND not in
                        screen_reader.colours(MIDDLE[0] - 40, MIDDLE[1] - 10, 80, 20), 2, "the notice's ground")
        self.assert_over_the_game(notice)
        self.assertEqual(desk.run("xdotool", "getwindowfocus"), focus)
        life = self.wait_until_gone() - since
        print(f"the notice stood for {life:.2f} s")
        self.assertGreater(life, LIFE - 0.3)
        self.assertLess(life, LIFE + SLACK)
        self.assertEqual(desk.run("xdotool", "getwindowfocus"), focus)
        self.assertEqual(self.events(), [], "the game noticed it")
        self.assertEqual(facts(notice.number), "", "it is only hidden")

    def test_click_at_its_place_reaches_the_game(self):
        program = self.recording()
        self.shown(program)
        screen_reader.move_pointer(*MIDDLE)
        desk.run("xdotool", "click", 1)
        self.assertEqual(self.game.wait_for("clicked"), [f"{MIDDLE[0]} {MIDDLE[1]}"])
        self.assertEqual(len(notices()), 1, "the click came when it was gone")
        self.assertEqual(self.events(), [])

    def test_stands_on_whatever_workspace_is_looked_at(self):
        program = self.recording()
        desk.run("wmctrl", "-n", 2)
        self.addCleanup(desk.run, "wmctrl", "-s", 0)
        desk.run("wmctrl", "-s", 1)
        self.wait_for_workspace(1)
        notice, _ = self.shown(program)
        self.assertEqual(notice.place, PLACE)
        # It also goes along.
        desk.run("wmctrl", "-s", 0)
        self.wait_for_workspace(0)
        self.assertEqual(notices(), [notice])
        self.assert_over_the_game(notice)

    def wait_for_workspace(self, number):
        desk.wait_until(lambda: re.search(rf"^{number} +\*", desk.run("wmctrl", "-d"), re.MULTILINE), 3, "the workspace")

    def test_second_save_a_second_later_takes_the_place_of_the_first(self):
        program = self.recording()
        first, _ = self.shown(program)
        time.sleep(1)
        program.call("SaveClip")
        seen = []

        def second():
            seen.append(notices())
            return [notice for notice in seen[-1] if notice.number != first.number]

        found = desk.wait_until(second, 5, "the second notice")
        since = time.monotonic()
        self.assertEqual(found[0].place, PLACE)
        while True:
            now = notices()
            if time.monotonic() - since > LIFE - 0.5:
                break
            seen.append(now)
        self.assertEqual(seen[-1], found, "the first one's time has ended the second")
        self.assertLessEqual(max(map(len, seen)), 1)
        self.assertLess(self.wait_until_gone() - since, LIFE + SLACK)

    def test_stays_above_a_game_that_comes_to_the_front_again(self):
        program = self.recording()
        notice, _ = self.shown(program)
        desk.run("xdotool", "windowraise", self.number_of_game())
        desk.run("wmctrl", "-F", "-a", "Game")
        desk.run("wmctrl", "-F", "-r", "Game", "-b", "toggle,fullscreen")
        desk.run("wmctrl", "-F", "-r", "Game", "-b", "toggle,fullscreen")
        desk.wait_until(lambda: any(top.size == SCREEN for top in tops()), 2, "the game on the whole screen")
        self.assertEqual(notices(), [notice])
        self.assert_over_the_game(notice)

    def test_no_notice_when_it_is_not_wanted(self):
        program = self.recording()
        program.set("showOverlay", False)
        program.save()
        since = time.monotonic()
        while time.monotonic() - since < 1:
            self.assertEqual(notices(), [])


if __name__ == "__main__":
    desk.main()
