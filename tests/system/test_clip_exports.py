#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What happens when the user leaves a clip's page, or quits the program, while the clip is exported."""
import json

import clip_page
import desktop
from clip_page import BACK, EXPORT, META, STEM, TITLE

QUESTION = "Dışa aktarma sürerken çıkılsın mı\\?"
NOW = "Yine de Çık"
WHEN_DONE = "Bitince Çık"


class Exports(clip_page.ClipPageTest):
    def start_export(self):
        """Opens a clip whose export takes seconds, and starts it."""
        self.clip = self.put_clip(width=1280, height=720, rate=60)
        self.copy = self.folder / f"{STEM} (9x16).mp4"
        program = self.window()
        self.open_clip()
        self.press_button(EXPORT, BACK)
        self.wait_for_progress()
        return program

    def wait_for_progress(self):
        # It may be scrolled away.
        desktop.wait_until(lambda: any(item.role == "progress bar" and item.name == "Dışa aktarılıyor…"
                                       for item in self.reader.everything()), 5, "the export to run")

    def ask_to_quit(self):
        desktop.press("ctrl+q")
        self.reader.find("dialog", QUESTION)
        # The button that gets the focus first keeps the export.
        self.wait_for_focus(WHEN_DONE)

    def wait_for_end(self, program, seconds):
        desktop.wait_until(lambda: program.process.poll() is not None, seconds, "the end of the program")
        self.assertEqual(program.process.returncode, 0)

    def assert_only_the_clip_is_left(self):
        self.assertEqual(self.names_in(), sorted([self.clip.name, clip_page.sidecar_of(self.clip).name]))

    def assert_copy_is_complete(self):
        self.assertAlmostEqual(clip_page.length_of(self.copy), clip_page.SECONDS, delta=0.1)
        self.assertEqual(json.loads(clip_page.sidecar_of(self.copy).read_text()), META)
        self.assertEqual(len(self.names_in()), 4)

    def test_copy_opens_when_the_user_has_left_the_page(self):
        program = self.start_export()
        desktop.press("Escape")
        self.reader.find("list item", ".*")
        self.assertEqual(program.get("Page"), "library")
        self.wait_for_toast("Yeni oranlı kopya kaydedildi", 90)
        self.wait_for_page(f"{TITLE} (9x16)")
        self.assert_copy_is_complete()

    def test_dismissed_question_keeps_the_program_and_the_last_export_ends_it(self):
        program = self.start_export()
        self.ask_to_quit()
        desktop.press("Escape")
        self.reader.wait_until_gone("dialog", QUESTION)
        self.assertEqual(program.get("State"), "idle")
        self.wait_for_progress()
        self.ask_to_quit()
        desktop.press("Return")
        self.wait_for_end(program, 90)
        self.assert_copy_is_complete()

    def test_quitting_anyway_leaves_no_incomplete_file(self):
        program = self.start_export()
        self.ask_to_quit()
        desktop.press("Tab")
        self.wait_for_focus(NOW)
        desktop.press("Return")
        self.wait_for_end(program, 10)
        self.assert_only_the_clip_is_left()

    def test_end_of_the_session_leaves_no_incomplete_file(self):
        program = self.start_export()
        # Asks nothing.
        program.end()
        self.assert_only_the_clip_is_left()


if __name__ == "__main__":
    desktop.main()
