#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The window keeps its frame, its menu opens the folder, and it follows the language and theme settings."""
import json
import time
import uuid

import desktop
import screen_reader
import window

SCREEN = (1920, 1080)
CLIPS = "Tüm Klipler"


class Window(window.WindowTest):
    def test_frame_is_restored_at_the_next_start(self):
        program = self.window()
        before = self.frame()
        placed = self.put_window(200, 90, 1100, 700)
        self.assertNotEqual(placed, before)
        program.end()
        self.assertEqual(self.restart(program), placed)
        # The frame does not move from one start to the next.
        program.end()
        self.assertEqual(self.restart(program), placed)

    def test_frame_is_restored_after_a_crash(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desktop.wait_until(lambda: self.saved_frame(program) == placed, 3, "the frame to be saved")
        program.kill()
        self.assertEqual(self.restart(program), placed)

    def test_maximised_window_is_restored_maximised_and_keeps_its_normal_frame(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desktop.wait_until(lambda: self.saved_frame(program) == placed, 3, "the frame to be saved")
        self.set_maximised(True)
        large = self.wait_for_width(SCREEN[0])
        program.end()
        program.start()
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        desktop.close_window()
        program.activate()
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        program.end()
        program.start()
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        self.set_maximised(False)
        desktop.wait_until(lambda: self.settled((1100, 700)), 5, "the window in its normal frame")
        # The window manager decides where the title bar is.
        for now, before in zip(self.frame()[:2], placed[:2]):
            self.assertAlmostEqual(now, before, delta=30)

    def test_first_start_is_in_the_middle_of_the_screen(self):
        self.window()
        x, y, width, height = self.frame()
        self.assertEqual((width, height), (1240, 780))
        self.assertAlmostEqual(x + width / 2, SCREEN[0] / 2, delta=20)
        self.assertAlmostEqual(y + height / 2, SCREEN[1] / 2, delta=40)

    def test_frame_outside_the_screen_is_moved_into_it(self):
        program = self.window()
        for frame in ((5000, 200, 1240, 780), (-4000, -900, 1240, 780), (1900, 1060, 1240, 780)):
            with self.subTest(frame):
                program.end()
                self.save_frame(program, *frame)
                x, y, width, height = self.restart(program)
                self.assertGreaterEqual(min(x, y), 0)
                self.assertLessEqual(x + width, SCREEN[0])
                self.assertLessEqual(y + height, SCREEN[1])

    def test_window_has_a_minimum_size(self):
        self.window()
        desktop.run("xdotool", "windowsize", self.window_number(), 300, 200)
        desktop.wait_until(lambda: self.settled((1020, 640)), 5, "the window at its minimum size")

    def test_closed_window_keeps_the_program_running_and_can_be_shown_again(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desktop.close_window()
        self.assertEqual(program.get("State"), "idle")
        program.activate()
        self.wait_for_window()
        self.assertEqual(desktop.wait_until(self.settled, 5, "the window in its place"), placed)

    def test_minimised_window_can_be_shown_again(self):
        program = self.window()
        desktop.run("xdotool", "windowminimize", "--sync", self.window_number())
        desktop.wait_until(lambda: not desktop.visible_windows("Quelto"), 5, "the window to be minimised")
        program.activate()
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 5, "the window on the screen")

    def test_language_rebuilds_the_window_at_once(self):
        self.put("Dota 2 - 2026-03-01 20.15.07")
        program = self.window()
        self.wait_for_count(CLIPS, 1)
        for language, words in (("de", "Alle Clips"), ("ru", "Все клипы"), ("tr", CLIPS)):
            program.set("language", language)
            self.wait_for_count(words, 1, 2)
        self.put("Dota 2 - 2026-03-01 20.16.07")
        self.wait_for_count(CLIPS, 2)

    def test_theme_rebuilds_the_window_and_it_keeps_working(self):
        self.put("Dota 2 - 2026-03-01 20.15.07")
        program = self.window()
        for theme, accent in (("ocean", "22d3c5"), ("blurple", "5865f2"), ("ember", "ff5a1f"), ("neon", "b14bff")):
            program.set("colorTheme", theme)
            desktop.wait_until(lambda: accent in self.colours(), 3, f"the accent of {theme}")
        self.reader.click("push button", "Dota 2, 1")
        desktop.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.put("Dota 2 - 2026-03-01 20.16.07")
        self.wait_for_count("Dota 2", 2)

    def test_changes_of_theme_leave_no_memory_behind(self):
        for index in range(12):
            self.put(f"Dota 2 - 2026-03-01 20.15.{index:02d}", 60 * index)
        program = self.window()
        self.wait_for_count("Dota 2", 12)
        # Until the cards have their thumbnails.
        time.sleep(2)
        before = program.resident_megabytes()
        for index in range(30):
            theme, accent = (("ocean", "22d3c5"), ("blurple", "5865f2"), ("neon", "b14bff"))[index % 3]
            program.set("colorTheme", theme)
            desktop.wait_until(lambda accent=accent: accent in self.colours(), 3, f"the accent of {theme}")
        desktop.wait_until(lambda: program.resident_megabytes() < before + 6, 5, f"less than {before + 6:.0f} MB")
        print(f"{before:.0f} MB before, {program.resident_megabytes():.0f} MB after")

    def test_reviews_leave_no_memory_behind(self):
        paths = [self.put(f"Dota 2 - 2026-03-01 20.15.{index:02d}", 60 * (3 - index), width=1920, height=1080) for index in range(3)]
        data = self.new_folder("data")
        match = {"id": str(uuid.uuid4()).upper(), "game": "Dota 2", "hero": "Axe", "start": 0, "clips": list(map(str, paths))}
        (data / "matches.json").write_text(json.dumps([match]))
        program = self.window({"QUELTO_DATA_DIR": str(data)})
        self.reader.click("push button", "Maç Özetleri, 1")
        self.reader.click("list item", "Dota 2 • Axe, .*")
        self.wait_for_focus("Klipleri İncele")
        before = program.resident_megabytes()
        for _ in range(10):
            desktop.press("Return")
            self.reader.find(None, "0:0[0-2] / 0:02")
            desktop.press("Escape")
            self.wait_for_focus("Klipleri İncele")
        used = program.resident_megabytes()
        desktop.wait_until(lambda: program.resident_megabytes() < before + 60, 5, f"less than {before + 60:.0f} MB")
        print(f"{before:.0f} MB before, {used:.0f} MB at once after, {program.resident_megabytes():.0f} MB later")

    def colours(self):
        """The colours around the tile at the top of the sidebar."""
        x, y, *_ = self.frame()
        return screen_reader.colours(x, y, 60, 120)

    def test_ctrl_o_opens_the_folder(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        desktop.press("ctrl+o")
        desktop.wait_until(notes.exists, 5, "the folder to be opened")
        desktop.wait_until(lambda: str(self.folder) in notes.read_text(), 2, "the folder's name")

    def test_escape_from_the_menus_returns_the_focus(self):
        self.window()
        self.tab_to("push button", f"{CLIPS}, 0")
        self.reader.listen()
        desktop.press("F10")
        self.reader.wait_for_focus_event("menu bar", "Quelto")
        desktop.press("Right")
        self.reader.wait_for_focus_event("menu bar", "Dosya")
        desktop.press("Down")
        self.reader.find("menu item", "Klip Kaydet")
        desktop.press("Down")
        self.reader.wait_for_focus_event("menu item", "Klip Kaydet")
        desktop.press("Escape")
        self.reader.wait_for_focus_event("menu bar", "Dosya")
        self.reader.wait_until_gone("menu item", "Klip Kaydet")
        desktop.press("Escape")
        self.reader.wait_for_focus_event("push button", f"{CLIPS}, 0")

    def test_keyboard_chooses_a_menu_item(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        self.tab_to("push button", f"{CLIPS}, 0")
        desktop.press("F10")
        self.wait_for_focus("Quelto")
        desktop.press("Right")
        self.wait_for_focus("Dosya")
        desktop.press("Return")
        self.reader.find("menu item", "Klip Klasörünü Aç")
        for entry in ("Klip Kaydet", "Kaydı Başlat / Durdur", "Klip Klasörünü Aç"):
            desktop.press("Down")
            self.wait_for_focus(entry)
        desktop.press("Return")
        desktop.wait_until(lambda: notes.exists() and str(self.folder) in notes.read_text(), 5, "the folder to be opened")

    def test_shortcut_opens_the_settings_and_the_sidebar_leads_back(self):
        program = self.window()
        desktop.press("ctrl+comma")
        desktop.wait_until(lambda: program.get("Page") == "settings", 3, "the settings")
        self.assertIn("selected", self.reader.find("push button", "Ayarlar").states)
        self.reader.click("push button", f"{CLIPS}, 0")
        desktop.wait_until(lambda: program.get("Page") == "library", 3, "the library")


if __name__ == "__main__":
    desktop.main()
