#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What users do with a clip: open it, drag it into another program, copy it, search for it, move it to the trash."""
import os
import pathlib
import re
import time
import urllib.parse

import clip_folder
import desktop
import screen_reader
import trash_can
import window

ALL = "Tüm Klipler"
RAMPAGE = "Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE (Axe)"
TITLE = "RAMPAGE (Axe)"
PLAIN = "Dota 2 - 2026-03-01 20.10.07"
TRIPLE = "League of Legends - 2026-03-01 20.05.07 [ORTA 45] 100% Triple Kill #3 ü"
FILE_WINDOW = (0, 0, 320, 400)
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
        """The titles of the cards, row by row."""
        # The card under the pointer is enlarged around its centre.
        cards = sorted(self.reader.showing("list item"), key=lambda item: (item.middle[1] // 8, item.middle[0]))
        return [item.name.rpartition(", ")[0].rpartition(", ")[0] for item in cards]

    def open_menu(self, title=TITLE):
        """Opens the card's menu with the right mouse button."""
        screen_reader.move_pointer(*self.card(title).middle)
        desktop.run("xdotool", "click", 3)

    def choose(self, entry, title=TITLE):
        self.open_menu(title)
        self.reader.click("menu item", re.escape(entry))

    def file_window(self):
        return self.other_program("file_window.py", *FILE_WINDOW)

    def wait_for_open_clip(self, title=TITLE):
        return self.reader.find("heading", re.escape(title))

    def wait_until_played(self):
        """Waits until the clip has played to its end, which takes two seconds."""
        self.reader.find("label", "0:02 / 0:02")
        self.reader.find("push button", "Oynat")

    def test_cards_are_newest_first(self):
        clip_folder.put_broken_clip(self.folder, "Zuma - Broken", 30)
        clip_folder.put_broken_clip(self.folder, "Zuma - Old", 40 * 86_400)
        self.window()
        self.card("Old")
        self.assertEqual(self.titles(), ["RAMPAGE (Axe), Dota 2", "Broken, Zuma", "Dota 2 klibi, Dota 2",
                                         "100% Triple Kill #3 ü, League of Legends", "Old, Zuma"])

    def test_tall_clips_have_tall_cards_above_the_others(self):
        self.put("Dota 2 - 2026-03-01 20.01.07 (9x16)", 180, width=180, height=320)
        # Midnight between the clips would put them into two days, so the program runs in a time zone where it is noon.
        self.window({"TZ": f"UTC{time.gmtime().tm_hour - 12:+d}"})
        _, top, width, height = self.card("Dota 2 klibi (9x16)").bounds
        self.assertGreater(height, width)
        self.assertGreater(self.card().bounds[1], top)

    def test_dragged_card_drops_its_file_into_another_program(self):
        other = self.file_window()
        program = self.window()
        for path, title in ((self.triple, "100% Triple Kill #3 ü"), (self.rampage, TITLE)):
            other.lines.clear()
            self.drag(self.card(title), (160, 200), other)
            self.assert_is_file(other.wait_for("dropped"), path)
            self.assertEqual(other.printed("action"), ["copy"])
            # Chat programs use the first format they know, so the file must come before any text.
            self.assertEqual(other.printed("offered")[0], "text/uri-list")
        # The drag opened no clip.
        self.assertEqual(program.get("Page"), "library")
        self.card()

    def test_cancelled_drag_does_nothing(self):
        other = self.file_window()
        self.window()
        item = self.card()
        screen_reader.move_pointer(*item.middle)
        desktop.run("xdotool", "mousedown", 1)
        for step in range(1, 9):
            screen_reader.move_pointer(item.middle[0] + 10 * step, item.middle[1] + 5 * step)
        desktop.press("Escape")
        desktop.run("xdotool", "mouseup", 1)
        # The same card can be dragged again, and clicked.
        self.drag(self.card(), (160, 200), other)
        self.assert_is_file(other.wait_for("dropped"), self.rampage)
        self.reader.click("list item", re.escape(TITLE) + ", .*")
        self.wait_for_open_clip()

    def test_click_opens_the_clip_and_escape_returns_to_the_same_game(self):
        program = self.window()
        self.reader.click("push button", "Dota 2, 2")
        desktop.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.assertEqual(len(self.titles()), 2)
        self.reader.click("list item", re.escape(TITLE) + ", .*")
        self.wait_for_open_clip()
        self.assertEqual(self.titles(), [])
        self.assertEqual(program.get("Page"), "library Dota 2")
        desktop.press("Escape")
        self.card()
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.assertEqual(len(self.titles()), 2)

    def test_click_with_a_small_movement_is_still_a_click(self):
        self.window()
        x, y = self.card().middle
        screen_reader.move_pointer(x, y)
        desktop.run("xdotool", "mousedown", 1, "mousemove_relative", "--sync", 2, 1, "mouseup", 1)
        self.wait_for_open_clip()

    def test_menu_button_opens_the_menu_and_not_the_clip(self):
        program = self.window()
        # The button is visible while the pointer is over the card.
        self.card()
        buttons = self.reader.showing(None, "Klip menüsü")
        self.assertEqual(len(buttons), 3)
        screen_reader.move_pointer(*buttons[0].middle)
        desktop.run("xdotool", "click", 1)
        self.reader.find("menu item", re.escape(COPY))
        menu = self.reader.find("popup menu", ".+")
        self.assertTrue(any(title.startswith(menu.name) for title in self.titles()), menu)
        self.assertEqual([item.name for item in self.reader.showing("menu item")],
                         ["Oynat", COPY, "Klasörde Göster", TO_TRASH])
        self.assertFalse(self.reader.showing("heading", re.escape(TITLE)))
        desktop.press("Escape")
        self.reader.wait_until_gone("menu item", "Oynat")
        self.assertEqual(program.get("Page"), "library")
        self.choose("Oynat")
        self.wait_for_open_clip()
        self.wait_until_played()

    def test_copied_file_can_be_pasted_into_another_program(self):
        other = self.file_window()
        self.window()
        self.choose(COPY, "100% Triple Kill #3 ü")
        self.reader.find(None, re.escape(COPIED))
        addresses = self.clipboard("text/uri-list").splitlines()
        self.assert_is_file(addresses, self.triple)
        self.assertEqual(self.clipboard("x-special/gnome-copied-files"), f"copy\n{addresses[0]}")
        screen_reader.move_pointer(160, 200)
        desktop.run("xdotool", "click", 1)
        other.wait_for("focused")
        desktop.press("ctrl+v")
        self.assert_is_file(other.wait_for("pasted"), self.triple)

    def test_file_whose_name_is_not_valid_utf8(self):
        # Written by an old program in Latin-1.
        path = os.fsencode(self.folder) + b"/Kale - B\xfcy\xfck.mp4"
        os.rename(self.put("Kale - x", 0), path)
        uri = "file://" + urllib.parse.quote(path, "/")
        title = "B\N{REPLACEMENT CHARACTER}y\N{REPLACEMENT CHARACTER}k"
        manager = self.other_program("file_manager.py")
        self.trash_can()
        self.window()

        def assert_same(found):
            self.assertEqual(urllib.parse.unquote_to_bytes(found), urllib.parse.unquote_to_bytes(uri))

        self.choose(COPY, title)
        self.reader.find(None, re.escape(COPIED))
        assert_same(self.clipboard("text/uri-list").strip())
        self.choose("Klasörde Göster", title)
        assert_same(manager.wait_for("ShowItems")[0])
        self.choose("Oynat", title)
        self.wait_for_open_clip(title)
        self.wait_until_played()
        self.reader.click("push button", "Dosyayı Kopyala")
        self.reader.find(None, re.escape(COPIED))
        assert_same(self.clipboard("text/uri-list").strip())
        self.reader.click("push button", "Kütüphane")
        self.choose(TO_TRASH, title)
        self.reader.click("push button", re.escape(TO_TRASH))
        desktop.wait_until(lambda: not os.path.exists(path), 5, "the file to be moved to the trash")
        self.assertTrue(os.path.exists(os.fsencode(os.environ["XDG_DATA_HOME"]) + b"/Trash/files/Kale - B\xfcy\xfck.mp4"))
        self.wait_for_count(ALL, 3)

    def test_file_manager_shows_the_file(self):
        manager = self.other_program("file_manager.py")
        self.window()
        self.choose("Klasörde Göster", "100% Triple Kill #3 ü")
        self.assert_is_file(manager.wait_for("ShowItems"), self.triple)

    def test_without_a_file_manager_on_the_bus_the_folder_is_opened(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        self.choose("Klasörde Göster")
        desktop.wait_until(lambda: notes.exists() and str(self.folder) in notes.read_text(), 5, "the folder to be opened")

    def trash_can(self):
        can = trash_can.TrashCan()
        self.addCleanup(can.stop)
        return can

    def assert_in_trash(self, can, path, trash_folder):
        can.wait_for(path)
        self.assertFalse(path.exists())
        # On other volumes, .trashinfo paths are relative to the volume's root.
        self.assertIn(path, [trash_folder.parent / place for place in trash_can.original_paths(trash_folder)])

    def test_trash_asks_first_and_the_desktop_can_restore_the_clip(self):
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

    def test_clip_on_another_volume_goes_to_the_trash_of_that_volume(self):
        can = self.trash_can()
        volume = self.new_folder("volume")
        image = volume.parent / "image"
        with open(image, "wb") as file:
            file.truncate(16 << 20)
        desktop.run("/sbin/mkfs.ext4", "-q", image)
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

    def test_keyboard_selects_a_game_opens_a_clip_and_returns(self):
        program = self.window()
        self.card()
        self.tab_to("push button", "Dota 2, 2")
        desktop.press("Return")
        desktop.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.tab_to("list item", ".*")
        desktop.press("Right")
        self.wait_for_focus("Dota 2 klibi, .*")
        desktop.press("Return")
        self.wait_for_open_clip("Dota 2 klibi")
        desktop.press("Escape")
        self.wait_for_focus("Dota 2 klibi, .*")
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.assertEqual(len(self.titles()), 2)

    def assert_one_card(self, names):
        self.assertEqual(len(set(names)), 1, "other cards got focus events too")
        # Qt 6.8 also reports the card's changed state as a focus event.
        self.assertLessEqual(len(names), 2 if desktop.QT_VERSION >= (6, 8) else 1)

    def test_focus_events_name_the_current_card(self):
        # A user's screen reader also runs before the program starts.
        self.reader.listen()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        for key, title in (("End", "100% Triple Kill #3 ü"), ("Home", TITLE), ("Right", "Dota 2 klibi"),
                           ("Right", "100% Triple Kill #3 ü"), ("Left", "Dota 2 klibi")):
            with self.subTest(key):
                self.reader.focus_events()
                desktop.press(key)
                self.assert_one_card(self.reader.wait_for_focus_event("list item", re.escape(title) + ", .*"))
        # A key that cannot move the focus causes no event.
        desktop.press("Home")
        self.reader.wait_for_focus_event("list item", re.escape(TITLE) + ", .*")
        desktop.press("Left")
        desktop.press("Right")
        self.assert_one_card(self.reader.wait_for_focus_event("list item", "Dota 2 klibi, .*"))

    def test_focus_events_name_the_card_that_gets_the_focus_back(self):
        self.reader.listen()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desktop.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        for key, gone in (("Delete", ("dialog", ".*")), ("shift+F10", ("menu item", "Oynat"))):
            with self.subTest(key):
                desktop.press(key)
                self.reader.find(*gone)
                self.reader.focus_events()
                desktop.press("Escape")
                self.reader.wait_for_focus_event("list item", re.escape(TITLE) + ", .*")

    def test_keyboard_moves_a_clip_to_the_trash(self):
        can = self.trash_can()
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desktop.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        # The button that gets the focus first is Cancel.
        desktop.press("Delete")
        self.wait_for_focus("Vazgeç")
        desktop.press("Return")
        self.reader.wait_until_gone(None, re.escape(QUESTION))
        self.assertTrue(self.rampage.exists())
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desktop.press("Delete")
        self.wait_for_focus("Vazgeç")
        desktop.press("Tab")
        self.wait_for_focus(re.escape(TO_TRASH))
        desktop.press("Return")
        self.assert_in_trash(can, self.rampage, pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash")
        # The focus goes to the card that takes the place of the removed one.
        self.reader.wait_until_gone("list item", re.escape(TITLE) + ", .*")
        self.wait_for_focus("Dota 2 klibi, .*")

    def test_ctrl_c_copies_the_focused_card(self):
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desktop.press("End")
        self.wait_for_focus("100% Triple Kill #3 ü, .*")
        desktop.press("ctrl+c")
        self.reader.find(None, re.escape(COPIED))
        self.assert_is_file(self.clipboard("text/uri-list").splitlines(), self.triple)

    def test_keyboard_uses_the_card_menu(self):
        self.window()
        self.card()
        self.tab_to("list item", ".*")
        desktop.press("Home")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desktop.press("shift+F10")
        self.reader.find("menu item", re.escape(COPY))
        desktop.press("Escape")
        self.reader.wait_until_gone("menu item", "Oynat")
        self.wait_for_focus(re.escape(TITLE) + ", .*")
        desktop.press("Menu")
        self.reader.find("menu item", re.escape(COPY))
        desktop.press("Down")
        desktop.press("Down")
        desktop.press("Return")
        self.reader.find(None, re.escape(COPIED))
        self.assert_is_file(self.clipboard("text/uri-list").splitlines(), self.rampage)
        self.wait_for_focus(re.escape(TITLE) + ", .*")

    def test_ctrl_f_searches_and_down_returns_to_the_cards(self):
        self.window()
        self.card()
        desktop.press("ctrl+f")
        self.wait_for_focus("Ara")
        desktop.run("xdotool", "type", "league")
        self.reader.wait_until_gone("list item", re.escape(TITLE) + ", .*")
        self.assertEqual(self.titles(), ["100% Triple Kill #3 ü, League of Legends"])
        self.reader.find("label", "1 klip • .*")
        desktop.run("xdotool", "type", "xyz")
        self.reader.find(None, "Sonuç bulunamadı")
        desktop.press("Escape")
        self.card()
        desktop.press("Down")
        self.wait_for_focus(re.escape(TITLE) + ", .*")

    def test_change_of_language_or_theme_keeps_the_page(self):
        program = self.window()
        self.reader.click("push button", "Dota 2, 2")
        desktop.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        program.set("language", "en")
        self.card("Dota 2 clip")
        program.set("colorTheme", "ocean")
        self.assertEqual(program.get("Page"), "library Dota 2")
        self.choose("Copy File (paste into Discord)")
        self.reader.find(None, "Clip copied — paste it in Discord with Ctrl\\+V")


if __name__ == "__main__":
    desktop.main()
