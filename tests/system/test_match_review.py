#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A match ends, its notification opens the review, and the keyboard alone keeps and deletes its clips."""
import datetime
import json
import re
import subprocess
import time

import desktop
import games
import notifications
import trash_can
import window

SETTLING = 10
PLAYER = "Clip player"


class MatchReviewTest(window.WindowTest):
    def setUp(self):
        super().setUp()
        self.data = self.new_folder("data")
        can = trash_can.TrashCan()
        self.trash = can
        self.addCleanup(can.stop)

    def start(self, **settings):
        # `gio trash --restore` can restore only names without other than ASCII letters.
        return self.window({"QUELTO_DATA_DIR": str(self.data)}, language="en", captureAudio=False, captureMicrophone=False,
                           **settings)

    def matches(self):
        """The stored matches, newest first."""
        return games.wait_for_stored_matches(self.data)

    def wait_for_page(self, program, page):
        desktop.wait_until(lambda: program.get("Page") == page, 5, f"page {page}; it is {program.get('Page')}")

    def wait_for_player(self):
        """Waits until the player has the keyboard."""
        desktop.wait_until(lambda: any("focused" in item.states for item in self.reader.showing("panel", PLAYER)), 5,
                           f"the focus on the player; the window has\n{self.reader.tree()}")

    def wait_for_place(self, number, count):
        self.reader.find(None, f"{number} / {count}")

    def wait_for_clips_on_page(self, count):
        """Waits until the match's page says that it has that many clips, and shows their cards."""
        self.reader.find(None, rf".* • {count} clips")
        desktop.wait_until(lambda: len(self.reader.showing("list item")) == count, 5, f"{count} cards")

    def trashed(self):
        """The number of files in the trash."""
        return len(desktop.run("gio", "trash", "--list").splitlines())


class AfterAMatch(MatchReviewTest):
    def setUp(self):
        super().setUp()
        self.notifications = notifications.NotificationMonitor()
        self.addCleanup(self.notifications.stop)

    def hold_key(self, key, condition, what):
        desktop.run("xdotool", "keydown", key)
        try:
            desktop.wait_until(condition, 5, what)
        finally:
            desktop.run("xdotool", "keyup", key)

    def click(self, program, match):
        """Clicks on the notification. It must open the review of the match in the active window."""
        self.notifications.click()
        desktop.wait_until(lambda: desktop.active_window() == "Quelto", 5, "Quelto's window to become active")
        self.wait_for_page(program, f"review {match['id']}")

    def play_league_match(self, program, count=5):
        """Returns the match's clips and when it ended. The first one is of a moment, the others are saved by hand."""
        league = games.League(self.data, game_time=60)
        self.addCleanup(league.stop)
        program.wait_for_state("recording")
        now = league.clock()
        league.pentakill([now + 0.5 + step / 5 for step in range(5)])
        program.wait_for_clips(1)
        for _ in range(count - 1):
            program.save()
        league.end()
        league.wait_for_polls(2)
        ended = time.monotonic()
        league.stop()
        return program.wait_for_clips(count), ended

    def open_clip(self):
        """Opens the newest clip from the library."""
        self.reader.click("list item", ".*")
        self.reader.find("push button", "Library")

    def test_keyboard_sends_the_right_clips_to_the_trash_and_they_come_back(self):
        program = self.start(autoClipEnabled=True)
        clips, ended = self.play_league_match(program)
        self.open_clip()
        desktop.close_window()
        notification = self.notifications.wait(SETTLING + 8)
        self.assertGreaterEqual(notification.time - ended, SETTLING - 2.5)
        self.assertEqual(notification.title, "Match over • League of Legends • Ahri")
        match = self.matches()[0]
        self.click(program, match)

        trashed = self.trashed()
        self.wait_for_player()
        self.wait_for_place(1, 5)
        self.assertFalse(self.reader.showing("push button", "Library"), "the clip is still open")
        desktop.press("d")
        self.wait_for_place(2, 5)
        desktop.press("k")
        self.wait_for_place(3, 5)
        desktop.press("x")
        self.wait_for_place(4, 5)
        self.hold_key("k", lambda: self.reader.showing(None, "5 / 5"), "the last clip")
        desktop.press("Return")
        self.wait_for_focus("Save and delete 2 clips")
        self.assertEqual(program.visible_clips(), sorted(clips), "something was deleted before the last button")
        desktop.press("Return")
        self.wait_for_page(program, f"match {match['id']}")
        self.wait_for_clips_on_page(3)
        for path in (clips[0], clips[2]):
            self.trash.wait_for(path)
        self.assertEqual(self.trashed(), trashed + 2)
        self.assertEqual(program.visible_clips(), sorted([clips[1], clips[3], clips[4]]))

        for path in (clips[0], clips[2]):
            self.trash.restore(path)
        self.wait_for_clips_on_page(5)
        desktop.wait_until(lambda: sorted(self.matches()[0]["clips"]) == sorted(map(str, clips)), 5,
                           "all clips to be stored in the match")

    def test_notification_opens_the_review_after_a_restart(self):
        program = self.start(autoClipEnabled=True)
        self.play_league_match(program, 1)
        self.notifications.wait(SETTLING + 8)
        program.end()
        program.start()
        self.wait_for_window()
        # A server sends clicks only to the program that showed the notification.
        self.assertEqual(self.notifications.wait(5, 2).title, self.notifications.all[0].title)
        self.assertEqual(desktop.run("dunstctl", "count", "displayed").strip(), "1", "it was not replaced")
        desktop.run("xdotool", "windowminimize", "--sync", self.window_number())
        desktop.wait_until(lambda: not desktop.visible_windows("Quelto"), 5, "the window to be minimised")
        self.click(program, self.matches()[0])
        self.wait_for_place(1, 1)


class SaveFolderThatVanishes(MatchReviewTest):
    def test_loses_nothing(self):
        clips = [self.put(f"Dota 2 - {number}", age=10 - number) for number in range(3)]
        match = "7F6B2A10-0000-4000-8000-000000000001"
        since_2001 = time.time() - datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc).timestamp()
        (self.data / "matches.json").write_text(json.dumps([{
            "id": match, "game": "Dota 2", "hero": "Axe", "start": since_2001 - 600, "end": since_2001,
            "clips": list(map(str, clips))}]))
        program = self.start()
        self.reader.click("push button", "Match Recaps, 1")
        self.reader.click("list item", r"Dota 2 • Axe, .* • 3 clips")
        self.wait_for_page(program, f"match {match}")
        self.reader.click("push button", "Review Clips")
        self.wait_for_player()
        desktop.press("d")
        self.wait_for_place(2, 3)

        elsewhere = self.folder.with_name("elsewhere")
        self.folder.rename(elsewhere)
        self.reader.find("heading", re.escape("No clips left in this match."))
        # The program may have made the folder again.
        subprocess.run(["rmdir", self.folder], capture_output=True)
        elsewhere.rename(self.folder)
        self.wait_for_place(r"\d", 3)
        self.reader.find("push button", "Save and delete 1 clips")
        self.assertEqual(program.visible_clips(), sorted(clips))
        self.assertEqual(len(self.matches()[0]["clips"]), 3)


if __name__ == "__main__":
    desktop.main()
