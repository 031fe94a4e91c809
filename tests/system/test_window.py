#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The window keeps its place, its menu opens the folder, and it speaks the language and wears the colours of the moment."""
import desk
import screen_reader
import window

SCREEN = (1920, 1080)
CLIPS = "Tüm Klipler"


class Window(window.WindowTest):
    def test_frame_comes_back_at_the_next_start(self):
        program = self.window()
        before = self.frame()
        placed = self.put_window(200, 90, 1100, 700)
        self.assertNotEqual(placed, before)
        program.end()
        self.assertEqual(self.again(program), placed)
        # And it does not creep from start to start.
        program.end()
        self.assertEqual(self.again(program), placed)

    def test_frame_survives_the_death_of_the_program(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desk.wait_until(lambda: self.saved_frame(program) == placed, 3, "the frame to be saved")
        program.kill()
        self.assertEqual(self.again(program), placed)

    def test_maximised_window_comes_back_maximised_and_goes_back_to_its_frame(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desk.wait_until(lambda: self.saved_frame(program) == placed, 3, "the frame to be saved")
        self.set_maximised(True)
        large = self.wait_for_width(SCREEN[0])
        program.end()
        program.start()
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        desk.close_window()
        self.activate(program)
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        program.end()
        program.start()
        self.assertEqual(self.wait_for_width(SCREEN[0]), large)
        self.set_maximised(False)
        desk.wait_until(lambda: self.settled((1100, 700)), 5, "the window in its frame")
        # Where the window manager puts the title bar is its own affair.
        for now, before in zip(self.frame()[:2], placed[:2]):
            self.assertAlmostEqual(now, before, delta=30)

    def test_first_start_is_in_the_middle_of_the_screen(self):
        self.window()
        x, y, width, height = self.frame()
        self.assertEqual((width, height), (1240, 780))
        self.assertAlmostEqual(x + width / 2, SCREEN[0] / 2, delta=20)
        self.assertAlmostEqual(y + height / 2, SCREEN[1] / 2, delta=40)

    def test_frame_on_a_screen_that_is_gone_comes_back_visible(self):
        program = self.window()
        for frame in ((5000, 200, 1240, 780), (-4000, -900, 1240, 780), (1900, 1060, 1240, 780)):
            with self.subTest(frame):
                program.end()
                self.save_frame(program, *frame)
                x, y, width, height = self.again(program)
                self.assertGreaterEqual(min(x, y), 0)
                self.assertLessEqual(x + width, SCREEN[0])
                self.assertLessEqual(y + height, SCREEN[1])

    def test_window_is_never_smaller_than_its_contents(self):
        self.window()
        desk.run("xdotool", "windowsize", self.window_number(), 300, 200)
        desk.wait_until(lambda: self.settled((1020, 640)), 5, "the smallest window")

    def test_closed_window_leaves_the_program_and_comes_back(self):
        program = self.window()
        placed = self.put_window(200, 90, 1100, 700)
        desk.close_window()
        self.assertEqual(program.get("State"), "idle")
        self.activate(program)
        self.wait_for_window()
        self.assertEqual(desk.wait_until(self.settled, 5, "the window in its place"), placed)

    def test_minimised_window_comes_back(self):
        program = self.window()
        desk.run("xdotool", "windowminimize", "--sync", self.window_number())
        desk.wait_until(lambda: not desk.visible_windows("Quelto"), 5, "the window to be minimised")
        self.activate(program)
        desk.wait_until(lambda: desk.visible_windows("Quelto"), 5, "the window on the screen")

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
        for theme, accent in (("ocean", "22d3c5"), ("blurple", "5865f2"), ("no such palette", "ff5a1f"), ("neon", "b14bff")):
            program.set("colorTheme", theme)
            desk.wait_until(lambda: accent in self.colours(), 3, f"the accent of {theme}")
        self.reader.click("push button", "Dota 2, 1")
        desk.wait_until(lambda: program.get("Page") == "library Dota 2", 3, "the game's page")
        self.put("Dota 2 - 2026-03-01 20.16.07")
        self.wait_for_count("Dota 2", 2)

    def colours(self):
        """Those of the tile at the head of the sidebar and what is around it."""
        x, y, *_ = self.frame()
        return screen_reader.colours(x, y, 60, 120)

    def test_control_o_opens_the_folder(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        desk.press("ctrl+o")
        desk.wait_until(notes.exists, 5, "the folder to be opened")
        desk.wait_until(lambda: str(self.folder) in notes.read_text(), 2, "the folder's name")

    def test_menus_by_keyboard_give_the_keyboard_back(self):
        self.window()
        self.tab_to("push button", f"{CLIPS}, 0")
        self.reader.listen()
        desk.press("F10")
        self.reader.wait_to_hear("menu bar", "Quelto")
        desk.press("Right")
        self.reader.wait_to_hear("menu bar", "Dosya")
        desk.press("Down")
        self.reader.find("menu item", "Klip Kaydet")
        desk.press("Down")
        self.reader.wait_to_hear("menu item", "Klip Kaydet")
        desk.press("Escape")
        self.reader.wait_to_hear("menu bar", "Dosya")
        self.reader.wait_until_gone("menu item", "Klip Kaydet")
        desk.press("Escape")
        self.reader.wait_to_hear("push button", f"{CLIPS}, 0")

    def test_entry_of_a_menu_is_chosen_by_keyboard(self):
        environment, notes = self.command_in_path("xdg-open")
        self.window(environment)
        self.tab_to("push button", f"{CLIPS}, 0")
        desk.press("F10")
        self.wait_for_focus("Quelto")
        desk.press("Right")
        self.wait_for_focus("Dosya")
        desk.press("Return")
        self.reader.find("menu item", "Klip Klasörünü Aç")
        for entry in ("Klip Kaydet", "Kaydı Başlat / Durdur", "Klip Klasörünü Aç"):
            desk.press("Down")
            self.wait_for_focus(entry)
        desk.press("Return")
        desk.wait_until(lambda: notes.exists() and str(self.folder) in notes.read_text(), 5, "the folder to be opened")

    def test_settings_by_their_key_and_back_by_the_sidebar(self):
        program = self.window()
        desk.press("ctrl+comma")
        desk.wait_until(lambda: program.get("Page") == "settings", 3, "the settings")
        self.assertIn("selected", self.reader.find("push button", "Ayarlar").states)
        self.reader.click("push button", f"{CLIPS}, 0")
        desk.wait_until(lambda: program.get("Page") == "library", 3, "the library")


if __name__ == "__main__":
    desk.main()
