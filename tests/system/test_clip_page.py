#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What users do on a clip's page, with the keyboard: rename, trim, export, shrink, copy, save a frame and delete."""
import json
import os
import pathlib
import re

import clip_page
import desktop
import trash_can
from clip_page import BACK, COPY, EXPORT, FRAME, META, RENAME, SAVE_TRIM, SHRINK, STEM, TITLE, TRASH, TRIM

FILE_WINDOW = (0, 0, 320, 400)


class Keyboard(clip_page.ClipPageTest):
    def test_every_control_has_a_name_and_markers_announce_their_title(self):
        self.put_clip()
        self.window(discordLimitMB=1)
        self.open_clip()
        names, item = [], self.press_tab(self.reader.focused())
        while item.name not in names:
            self.assertNotEqual(item.name, "", item)
            names.append(item.name)
            item = self.press_tab(item)
        for name in ("Kütüphane", RENAME, "Konum", "Kill • 0:00", "Solo Kill • 0:01", "Triple Kill • 0:03", "Kule • 0:06",
                     "Ölüm • 0:07", "5 saniye geri", "5 saniye ileri", "Oynatma hızı, 1×", "Sesi kapat", "Ses düzeyi", "Tam ekran",
                     "Discord için küçült (1 MB)", COPY, "9:16", "Bulanık arka plan", EXPORT, TRIM, "Klasörde Göster", FRAME, TRASH):
            self.assertIn(name, names)
        # The first stop after the player.
        self.assertEqual(names[0], "Konum")

    def test_marker_plays_the_seconds_before_its_moment(self):
        self.put_clip()
        self.window()
        self.open_clip()
        desktop.press("space")
        self.reader.find("push button", "Oynat")
        self.press_button("Kule • 0:06")
        self.reader.find("push button", "Duraklat")
        self.reader.find("label", "0:0[45] / 0:08")

    def test_renamed_clip_keeps_its_sidecar_and_loses_its_tier(self):
        clip = self.put_clip()
        self.window()
        self.open_clip()
        self.reader.find("label", "Efsane 170")
        self.press_button(RENAME, BACK)
        self.reader.find("dialog", "Klibi yeniden adlandır")
        self.wait_for_focus("Klip adı")
        desktop.press("ctrl+a")
        desktop.run("xdotool", "type", "Best of all")
        desktop.press("Return")
        self.wait_for_page("Best of all")
        renamed = self.folder / "Dota 2 - Best of all.mp4"
        self.assertEqual(self.names_in(), sorted([renamed.name, clip_page.sidecar_of(renamed).name]))
        self.assertEqual(json.loads(clip_page.sidecar_of(renamed).read_text()), META)
        self.assertFalse(self.reader.showing("label", "Efsane 170"))
        # The renamed clip plays.
        self.reader.find("label", "0:0[1-8] / 0:08")
        # A name that exists is refused.
        self.put_clip(stem=STEM)
        self.wait_for_count("Tüm Klipler", 2)
        taken = self.put_clip(stem="Dota 2 - Taken", meta=None)
        self.press_button(RENAME, BACK)
        self.wait_for_focus("Klip adı")
        desktop.press("ctrl+a")
        desktop.run("xdotool", "type", "Taken")
        desktop.press("Return")
        self.wait_for_toast("Yeniden adlandırılamadı")
        self.assertFalse(self.reader.showing("dialog"))
        self.assertTrue(renamed.exists() and taken.exists() and clip.exists())

    def test_trimmed_copy_holds_the_range_and_its_events(self):
        clip = self.put_clip()
        before = self.snapshot(self.folder)
        self.window()
        self.open_clip()
        self.press_button(TRIM, BACK)
        self.reader.find("label", "Sarı tutamakları sürükleyerek başlangıcı ve bitişi seç")
        self.tab_to("slider", "Kırpma sonu", BACK)
        desktop.press("shift+Left")
        desktop.press("shift+Left")
        self.tab_to("slider", "Kırpma başlangıcı", BACK)
        for _ in range(10):
            desktop.press("Right")
        self.reader.find("label", "0:01 / 0:08")
        self.press_button(SAVE_TRIM, action="Return")
        self.wait_for_toast("Kırpılmış klip kaydedildi")
        self.wait_for_page(f"{TITLE} (kırpılmış)")
        copy = self.folder / f"{STEM} (kırpılmış).mp4"
        self.assertAlmostEqual(clip_page.length_of(copy), 5, delta=0.1)
        self.assertEqual(clip_page.size_of(copy), (320, 180))
        meta = json.loads(clip_page.sidecar_of(copy).read_text())
        events = meta.pop("events")
        self.assertEqual(meta, {key: value for key, value in META.items() if key != "events"})
        self.assertEqual([event["name"] for event in events], ["solo_kill", "multikill_3", "tower"])
        for event, time in zip(events, (0, 2.5, 5)):
            self.assertAlmostEqual(event["t"], time, places=6)
        self.assertEqual({name: self.snapshot(self.folder)[name] for name in before}, before)
        self.assertEqual(len(self.names_in()), 4)
        self.assertEqual(self.reader.find("push button", "Kule • .*").name, "Kule • 0:05")
        self.assertTrue(clip.exists())

    def test_export_makes_a_tall_copy_and_the_clip_can_be_dragged_meanwhile(self):
        clip = self.put_clip()
        before = self.snapshot(self.folder)
        other = self.other_program("file_window.py", *FILE_WINDOW)
        self.window()
        self.open_clip()
        tile = self.reader.find("label", "Discord'a sürükle bırak")
        self.press_button(EXPORT, BACK)
        self.drag(tile, (160, 200), other)
        self.assert_is_file(other.wait_for("dropped"), clip)
        self.assertEqual(other.printed("action"), ["copy"])
        self.assertEqual(other.printed("offered")[0], "text/uri-list")
        self.wait_for_toast("Yeni oranlı kopya kaydedildi", 60)
        self.wait_for_page(f"{TITLE} (9x16)")
        copy = self.folder / f"{STEM} (9x16).mp4"
        width, height = clip_page.size_of(copy)
        self.assertEqual(width * 16, height * 9)
        self.assertAlmostEqual(clip_page.length_of(copy), clip_page.SECONDS, delta=0.1)
        self.assertEqual(json.loads(clip_page.sidecar_of(copy).read_text()), META)
        self.assertEqual({name: self.snapshot(self.folder)[name] for name in before}, before)
        self.assertEqual(len(self.names_in()), 4)

    def test_clip_without_a_sidecar_gives_copies_without_one(self):
        self.put_clip(meta=None)
        self.window()
        self.open_clip()
        self.press_button(TRIM, BACK)
        self.press_button(SAVE_TRIM, BACK)
        self.wait_for_page(f"{TITLE} (kırpılmış)")
        self.assertEqual(self.names_in(), sorted([f"{STEM}.mp4", f"{STEM} (kırpılmış).mp4"]))

    def test_shrunk_copy_is_shared_instead_of_the_clip(self):
        clip = self.put_clip()
        self.assertGreater(clip.stat().st_size, 1_000_000)
        other = self.other_program("file_window.py", *FILE_WINDOW)
        self.window(discordLimitMB=1)
        self.open_clip()
        self.press_button(SHRINK, BACK)
        self.wait_for_toast("Discord sürümü hazır", 60)
        copy = self.folder / f"{STEM} (Discord).mp4"
        self.assertLessEqual(copy.stat().st_size, 1_000_000)
        self.assertAlmostEqual(clip_page.length_of(copy), clip_page.SECONDS, delta=0.1)
        self.assertEqual(self.names_in(), sorted([clip.name, clip_page.sidecar_of(clip).name, copy.name]))
        self.wait_for_page(TITLE)
        tile = self.reader.find("label", "Discord sürümü hazır")
        self.assertRegex(self.reader.descriptions("label", "Discord sürümü hazır")[0], "^[0-9].* • sürükleyip bırakın$")
        self.assertFalse(self.reader.showing("push button", SHRINK))
        # The button that had the focus is gone.
        self.wait_for_focus("Klip oynatıcı")
        self.press_button(COPY, BACK)
        self.wait_for_toast("Klip panoya kopyalandı — Discord'da Ctrl\\+V ile yapıştırın")
        self.assert_is_file(self.clipboard("text/uri-list").splitlines(), copy)
        self.drag(tile, (160, 200), other)
        self.assert_is_file(other.wait_for("dropped"), copy)

    def test_saved_frame_is_beside_the_clip_and_in_the_clipboard(self):
        clip = self.put_clip()
        self.window()
        self.open_clip()
        desktop.press("space")
        self.reader.find("push button", "Oynat")
        self.press_button(FRAME, BACK)
        self.wait_for_toast("Kare kaydedildi ve panoya kopyalandı")
        pictures = list(self.folder.glob("*.png"))
        self.assertEqual(len(pictures), 1)
        self.assertTrue(pictures[0].name.startswith(STEM))
        self.assertEqual(clip_page.size_of(pictures[0]), (320, 180))
        self.assertIn("image/png", self.clipboard("TARGETS").splitlines())
        self.assertEqual(self.names_in(), sorted([clip.name, clip_page.sidecar_of(clip).name, pictures[0].name]))
        # The button keeps the focus, for the next frame.
        self.wait_for_focus(FRAME)

    def test_trash_asks_first_and_returns_to_the_library(self):
        clip = self.put_clip()
        can = trash_can.TrashCan()
        self.addCleanup(can.stop)
        program = self.window()
        self.open_clip()
        self.press_button(TRASH, BACK)
        self.reader.find("dialog", "Klip çöp kutusuna taşınsın mı\\?")
        # The button that gets the focus first is Cancel.
        self.wait_for_focus("Vazgeç")
        desktop.press("Return")
        self.reader.wait_until_gone("dialog", ".*")
        self.assertTrue(clip.exists())
        self.wait_for_focus(TRASH)
        desktop.press("space")
        self.wait_for_focus("Vazgeç")
        self.press_button(TRASH)
        self.wait_for_count("Tüm Klipler", 0)
        self.assertFalse(self.reader.showing("heading", re.escape(TITLE)))
        self.assertEqual(program.get("Page"), "library")
        files = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Trash/files"
        self.assertTrue((files / clip.name).exists())
        # The sidecar is deleted, not moved.
        self.assertFalse((files / clip_page.sidecar_of(clip).name).exists())
        self.assertEqual(self.names_in(), [])


if __name__ == "__main__":
    desktop.main()
