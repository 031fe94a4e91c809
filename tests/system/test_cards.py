#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a player does with a clip: opens it, drags it into another program, copies it, finds it, throws it away."""
import os
import pathlib
import re
import time
import urllib.parse

import clip_folder
import desk
import screen_reader
import trash_can
import window

ALL = "Tüm Klipler"
RAMPAGE = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE (Axe)"
TITLE = "RAMPAGE (Axe)"
PLAIN = "Dota 2 - 2026-03-01 20.10.07"
TRIPLE = "League of Legends - 2026-03-01 20.05.07 [ORTA 45] 100% Triple Kill #3 ü"
NEIGHBOUR = (0, 0, 320, 400)
QUESTION = "Klip çöp kutusuna taşınsın mı?"
TO_TRASH = "Çöp Kutusuna Taşı"
COPY = "Dosyayı Kopyala (Discord'a yapıştır)"
COPIED = "Klip panoya kopyalandı — Discord'da Ctrl+V ile yapıştırın"


class Cards(window.WindowTest):
    def setUp(self):
        super().setUp()
        self.rampage = self.put(RAMPAGE, 0)
        self.plain = self.put(PLAIN, 60)
        self.triple = self.put(TRIPLE, 120)
        self.sidecar = self.folder / f".{self.rampage.name}.json"
        self.sidecar.write_text('{"events":[]}')

    def card(self, title=TITLE, seconds=5):
        return self.reader.find("list item", re.escape(title) + ", .*", seconds)

    def titles(self):
        """Of the cards, row by row."""
        # The one below the pointer has grown; its middle stays.
        cards = sorted(self.reader.showing("list item"), key=lambda item: (item.middle[1] // 8, item.middle[0]))
        return [item.name.rpartition(", ")[0].rpartition(", ")[0] for item in cards]

    def open_menu(self, title=TITLE):
        """By the right button, as quickly as by its own."""
        screen_reader.move_pointer(*self.card(title).middle)
        desk.run("xdotool", "click", 3)

    def choose(self, entry, title=TITLE):
        self.open_menu(title)
        self.reader.click("menu item", re.escape(entry))

    def file_window(self):
        return self.neighbour("file_window.py", *NEIGHBOUR)

    def drag(self, item, target, neighbour):
        """Takes the card there and lets it go as soon as the neighbour answers that it would take it."""
        screen_reader.move_pointer(*item.middle)
        desk.run("xdotool", "mousedown", 1)
        try:
            steps = [tuple(start + (end - start) * step // 12 for start, end in zip(item.middle, target)) for step in range(1, 13)]
            for place in steps:
                screen_reader.move_pointer(*place)

            def answers():
                # A drag that has only just begun learns of the window with the next movement.
                for shift in (3, -3):
                    desk.run("xdotool", "mousemove_relative", "--sync", "--", shift, 0)
                return neighbour.told("over")

            desk.wait_until(answers, 5, "the neighbour to notice the drag")
        finally:
            desk.run("xdotool", "mouseup", 1)

    def assert_is_file(self, addresses, path):
        """They are this file's alone, and of the strict form."""
        self.assertEqual(len(addresses), 1)
        self.assertRegex(addresses[0], r"^file://[A-Za-z0-9/%._~!$&'()*+,;=:@-]+$")
        self.assertEqual(urllib.parse.unquote(addresses[0]), f"file://{path}")

    def wait_for_open_clip(self, title=TITLE):
        return self.reader.find("heading", re.escape(title))

    def test_cards_are_newest_first(self):
        clip_folder.put_broken_clip(self.folder, "Zuma - Broken", 30)
        clip_folder.put_broken_clip(self.folder, "Zuma - Old", 40 * 86_400)
        self.window()
        self.card("Old")
        self.assertEqual(self.titles(), ["RAMPAGE (Axe), Dota 2", "Broken, Zuma", "Dota 2 klibi, Dota 2",
                                         "100% Triple Kill #3 ü, League of Legends", "Old, Zuma"])

    def test_tall_clips_have_tall_cards_above_the_others(self):
        self.put("Dota 2 - 2026-03-01 20.01.07 (9x16)", 180, width=180, height=320)
        # Were midnight between them, they would stand below: the program lives where it is noon.
        self.window({"TZ": f"UTC{time.gmtime().tm_hour - 12:+d}"})
        _, top, width, height = self.card("Dota 2 klibi (9x16)").bounds
        self.assertGreater(height, width)
        self.assertGreater(self.card().bounds[1], top)

    def test_file_dragged_into_another_program_is_exactly_this_one(self):
        neighbour = self.file_window()
        program = self.window()
        for path, title in ((self.triple, "100% Triple Kill #3 ü"), (self.rampage, TITLE)):
            neighbour.lines.clear()
            self.drag(self.card(title), (160, 200), neighbour)
            self.assert_is_file(neighbour.wait_for("dropped"), path)
            self.assertEqual(neighbour.told("action"), ["copy"])
            # A chat takes the first form that it knows, and must not come upon a text before the file.
            self.assertEqual(neighbour.told("offered")[0], "text/uri-list")
        # And no clip was opened by the way.
        self.assertEqual(program.get("Page"), "library")
        self.card()

    def test_drag_that_ends_nowhere_does_nothing(self):
        neighbour = self.file_window()
        self.window()
        item = self.card()
        screen_reader.move_pointer(*item.middle)
        desk.run("xdotool", "mousedown", 1)
        for step in range(1, 9):
            screen_reader.move_pointer(item.middle[0] + 10 * step, item.middle[1] + 5 * step)
        desk.press("Escape")
        desk.run("xdotool", "mouseup", 1)
        # The same card can be dragged again, and clicked.
        self.drag(self.card(), (160, 200), neighbour)
        self.assert_is_file(neighbour.wait_for("dropped"), self.rampage)
        self.reader.click("list item", re.escape(TITLE) + ", .*")
        self.wait_for_open_clip()

    def test_click_opens_the_clip_and_escape_returns_to_the_same_game(self):
        program = self.window()
        self.reader.click("push button", "Dota 2, 2")
        desk.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.assertEqual(len(self.titles()), 2)
        self.reader.click("list item", re.escape(TITLE) + ", .*")
        self.wait_for_open_clip()
        self.assertEqual(self.titles(), [])
        self.assertEqual(program.get("Page"), "library Dota 2")
        desk.press("Escape")
        self.card()
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.assertEqual(len(self.titles()), 2)

    def test_press_and_release_a_little_apart_is_still_a_click(self):
        self.window()
        x, y = self.card().middle
        screen_reader.move_pointer(x, y)
        desk.run("xdotool", "mousedown", 1, "mousemove_relative", "--sync", 2, 1, "mouseup", 1)
        self.wait_for_open_clip()

    def test_menu_button_opens_the_menu_and_not_the_clip(self):
        program = self.window()
        # The pointer over its card brings it out.
        self.card()
        buttons = self.reader.showing(None, "Klip menüsü")
        self.assertEqual(len(buttons), 3)
        screen_reader.move_pointer(*buttons[0].middle)
        desk.run("xdotool", "click", 1)
        self.reader.find("menu item", re.escape(COPY))
        menu = self.reader.find("popup menu", ".+")
        self.assertTrue(any(title.startswith(menu.name) for title in self.titles()), menu)
        self.assertEqual([item.name for item in self.reader.showing("menu item")],
                         ["Oynat", COPY, "Klasörde Göster", TO_TRASH])
        self.assertFalse(self.reader.showing("heading", re.escape(TITLE)))
        desk.press("Escape")
        self.reader.wait_until_gone("menu item", "Oynat")
        self.assertEqual(program.get("Page"), "library")
        self.choose("Oynat")
        self.wait_for_open_clip()

    def test_copied_file_can_be_pasted_into_another_program(self):
        neighbour = self.file_window()
        self.window()
        self.choose(COPY, "100% Triple Kill #3 ü")
        self.reader.find(None, re.escape(COPIED))
        addresses = self.clipboard("text/uri-list").splitlines()
        self.assert_is_file(addresses, self.triple)
        self.assertEqual(self.clipboard("x-special/gnome-copied-files"), f"copy\n{addresses[0]}")
        screen_reader.move_pointer(160, 200)
        desk.run("xdotool", "click", 1)
        neighbour.wait_for("focused")
        desk.press("ctrl+v")
        self.assert_is_file(neighbour.wait_for("pasted"), self.triple)

    def clipboard(self, form):
        return desk.run("xclip", "-selection", "clipboard", "-o", "-t", form)

    def test_file_manager_shows_the_file(self):
        manager = self.neighbour("file_manager.py")
        self.window()
        self.choose("Klasörde Göster", "100% Triple Kill #3 ü")
        self.assert_is_file(manager.wait_for("ShowItems"), self.triple)

    def test_without_a_file_manager_on_the_bus_the_folder_is_opened(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        self.choose("Klasörde Göster")
        desk.wait_until(lambda: notes.exists() and str(self.folder) in notes.read_text(), 5, "the folder to be opened")

    def trash_can(self):
        can = trash_can.TrashCan()
        self.addCleanup(can.stop)
        return can

    def assert_in_trash(self, can, path, bin_folder):
        can.wait_for(path)
        self.assertFalse(path.exists())
        # On other volumes than the home folder's the notes tell of places from the volume's top.
        self.assertIn(path, [bin_folder.parent / place for place in trash_can.places(bin_folder)])

    def test_trash_asks_first_and_can_be_undone_by_the_desktop(self):
        can = self.trash_can()
        self.window()
        self.choose(TO_TRASH)
        self.reader.find(None, re.escape(QUESTION))
        self.assertIn(TITLE, self.reader.descriptions("dialog"))
        self.reader.click("push button", "Vazgeç")
        self.reader.wait_until_gone(None, re.escape(QUESTION))
        self.assertTrue(self.rampage.exists() and self.sidecar.exists())
        self.choose(TO_TRASH)
        self.reader.click("push button", re.escape(TO_TRASH))
        self.assert_in_trash(can, self.rampage, pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash")
        self.assertFalse(self.sidecar.exists())
        self.wait_for_count(ALL, 2)
        self.reader.wait_until_gone("list item", re.escape(TITLE) + ", .*")
        can.restore(self.rampage)
        self.card()
        self.wait_for_count(ALL, 3)

    def test_trash_on_another_volume_stays_on_it(self):
        can = self.trash_can()
        volume = self.new_folder("volume")
        image = volume.parent / "image"
        with open(image, "wb") as file:
            file.truncate(16 << 20)
        desk.run("/sbin/mkfs.ext4", "-q", image)
        self.mount("-o", "loop", image, volume)
        folder = volume / "clips"
        folder.mkdir()
        clip = clip_folder.put_clip(folder, RAMPAGE)
        self.window(saveFolder=str(folder))
        self.choose(TO_TRASH)
        self.reader.click("push button", re.escape(TO_TRASH))
        self.assert_in_trash(can, clip, volume / f".Trash-{os.getuid()}")
        self.wait_for_count(ALL, 0)
        can.restore(clip)
        self.card()

    def test_keyboard_alone_goes_to_a_game_opens_a_clip_and_returns(self):
        program = self.window()
        self.card()
        self.tab_to("push button", "Dota 2, 2")
        desk.press("Return")
        desk.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.tab_to("list item", ".*")
        desk.press("Right")
        self.wait_for_focus("Dota 2 klibi, .*")
        desk.press("Return")
        self.wait_for_open_clip("Dota 2 klibi")
        desk.press("Escape")
        self.wait_for_focus("Dota 2 klibi, .*")
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.assertEqual(len(self.titles()), 2)

    def test_screen_reader_is_told_which_card_the_keyboard_is_on(self):
        # It listens from before the program's start, as that of a player does.
        self.reader.listen()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        for key, title in (("End", "100% Triple Kill #3 ü"), ("Home", TITLE), ("Right", "Dota 2 klibi"),
                           ("Right", "100% Triple Kill #3 ü"), ("Left", "Dota 2 klibi")):
            with self.subTest(key):
                self.reader.heard()
                desk.press(key)
                told = self.reader.wait_to_hear("list item", re.escape(title) + ", .*")
                self.assertEqual(len(told), 1, "cards on the way are told as well")
        # At the edge there is nothing to tell.
        desk.press("Home")
        self.reader.wait_to_hear("list item", re.escape(TITLE) + ", .*")
        desk.press("Left")
        desk.press("Right")
        self.assertEqual(len(self.reader.wait_to_hear("list item", "Dota 2 klibi, .*")), 1)

    def test_screen_reader_is_told_where_the_keyboard_returns_to(self):
        self.reader.listen()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desk.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        for key, gone in (("Delete", ("dialog", ".*")), ("shift+F10", ("menu item", "Oynat"))):
            with self.subTest(key):
                desk.press(key)
                self.reader.find(*gone)
                self.reader.heard()
                desk.press("Escape")
                self.reader.wait_to_hear("list item", re.escape(TITLE) + ", .*")

    def test_keyboard_alone_moves_to_the_trash(self):
        can = self.trash_can()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desk.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        # Return on the button that has the focus first does nothing to the clip.
        desk.press("Delete")
        self.wait_for_focus("Vazgeç")
        desk.press("Return")
        self.reader.wait_until_gone(None, re.escape(QUESTION))
        self.assertTrue(self.rampage.exists())
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desk.press("Delete")
        self.wait_for_focus("Vazgeç")
        desk.press("Tab")
        self.wait_for_focus(re.escape(TO_TRASH))
        desk.press("Return")
        self.assert_in_trash(can, self.rampage, pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash")
        # The keyboard stays where it was.
        self.reader.wait_until_gone("list item", re.escape(TITLE) + ", .*")
        self.wait_for_focus("Dota 2 klibi, .*")

    def test_copy_by_its_key_takes_the_card_of_the_keyboard(self):
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desk.press("End")
        self.wait_for_focus("100% Triple Kill #3 ü, .*")
        desk.press("ctrl+c")
        self.reader.find(None, re.escape(COPIED))
        self.assert_is_file(self.clipboard("text/uri-list").splitlines(), self.triple)

    def test_keyboard_alone_uses_the_menu(self):
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desk.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desk.press("shift+F10")
        self.reader.find("menu item", re.escape(COPY))
        desk.press("Escape")
        self.reader.wait_until_gone("menu item", "Oynat")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desk.press("Menu")
        self.reader.find("menu item", re.escape(COPY))
        desk.press("Down")
        desk.press("Down")
        desk.press("Return")
        self.reader.find(None, re.escape(COPIED))
        self.assert_is_file(self.clipboard("text/uri-list").splitlines(), self.rampage)
        self.wait_for_focus(re.escape(TITLE) + ", .*")

    def test_search_by_its_key_and_back_to_the_cards(self):
        self.window()
        self.card()
        desk.press("ctrl+f")
        self.wait_for_focus("Ara")
        desk.run("xdotool", "type", "league")
        self.reader.wait_until_gone("list item", re.escape(TITLE) + ", .*")
        self.assertEqual(self.titles(), ["100% Triple Kill #3 ü, League of Legends"])
        self.reader.find("label", "1 klip • .*")
        desk.run("xdotool", "type", "xyz")
        self.reader.find(None, "Sonuç bulunamadı")
        desk.press("Escape")
        self.card()
        desk.press("Down")
        self.wait_for_focus(re.escape(TITLE) + ", .*")

    def test_language_and_theme_keep_what_is_seen(self):
        program = self.window()
        self.reader.click("push button", "Dota 2, 2")
        desk.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        program.set("language", "en")
        self.card("Dota 2 clip")
        program.set("colorTheme", "ocean")
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.choose("Copy File (paste into Discord)")
        self.reader.find(None, "Clip copied — paste it in Discord with Ctrl\\+V")


if __name__ == "__main__":
    desk.main()
