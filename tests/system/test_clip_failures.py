#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a clip's page does when the folder takes no new files, or the clip is gone."""
import clip_page
import desktop
from clip_page import ACTIONS, BACK, COPY, EXPORT, FRAME, RENAME, SAVE_TRIM, SHRINK, TRIM

READ_ONLY = "Kayıt klasörü salt okunur\\. Başka bir kayıt klasörü seçin\\."
FULL = "Diskte yer kalmadı\\. Yer açın veya başka bir kayıt klasörü seçin\\."
EXPORT_FAILED = "Dışa aktarma başarısız: "
FRAME_FAILED = "Kare kaydedilemedi: "


class Failures(clip_page.ClipPageTest):
    def setUp(self):
        super().setUp()
        self.disk = self.new_folder("disk")
        self.mount("-t", "tmpfs", "-o", "size=16m", "tmpfs", self.disk)
        self.clip = self.put_clip(self.disk)

    def open_page(self):
        self.window(saveFolder=str(self.disk), discordLimitMB=1)
        self.open_clip()
        desktop.press("space")
        self.reader.find("push button", "Oynat")

    def trim(self):
        self.press_button(TRIM, BACK)
        self.press_button(SAVE_TRIM, BACK)

    def rename(self, title):
        self.press_button(RENAME, BACK)
        self.wait_for_focus("Klip adı")
        desktop.press("ctrl+a")
        desktop.run("xdotool", "type", title)
        desktop.press("Return")

    def assert_each_fails(self, reason):
        """Each action that writes a file ends in a toast with the reason, leaves the folder as it was, and can be repeated."""
        before = self.snapshot(self.disk)
        for name, message in ((None, EXPORT_FAILED), (FRAME, FRAME_FAILED), (EXPORT, EXPORT_FAILED), (FRAME, FRAME_FAILED),
                              (SHRINK, EXPORT_FAILED)):
            with self.subTest(name or SAVE_TRIM):
                if name:
                    self.press_button(name, BACK)
                else:
                    self.trim()
                self.wait_for_toast(message + reason)
                self.wait_until_enabled(*ACTIONS)
                self.assertEqual(self.snapshot(self.disk), before)

    def test_read_only_folder(self):
        self.open_page()
        desktop.run("mount", "-o", "remount,ro", self.disk)
        self.assert_each_fails(READ_ONLY)
        before = self.snapshot(self.disk)
        self.rename("Best of all")
        self.wait_for_toast("Yeniden adlandırılamadı")
        self.assertEqual(self.snapshot(self.disk), before)
        self.wait_for_page(clip_page.TITLE)

    def test_full_disk(self):
        self.open_page()
        with open(self.disk / "filler", "wb", buffering=0) as filler:
            try:
                while filler.write(bytes(4096)):
                    pass
            except OSError:
                pass
        self.assert_each_fails(FULL)
        # A new name takes no room.
        self.rename("Best of all")
        self.wait_for_page("Best of all")
        renamed = self.disk / "Dota 2 - Best of all.mp4"
        self.assertEqual(self.names_in(self.disk), sorted(["filler", renamed.name, clip_page.sidecar_of(renamed).name]))
        # With room again, the same action succeeds.
        (self.disk / "filler").unlink()
        self.trim()
        self.wait_for_page("Best of all (kırpılmış)")

    def test_clip_that_another_program_renamed(self):
        program = self.window(saveFolder=str(self.disk), discordLimitMB=1)
        self.open_clip()
        moved = self.clip.rename(self.disk / "elsewhere.mp4")
        self.reader.wait_until_gone("push button", "Dota 2, 1")
        for name, message in ((COPY, "Klip bulunamadı\\. Silinmiş veya taşınmış olabilir\\."), (EXPORT, EXPORT_FAILED + ".+"),
                              (FRAME, FRAME_FAILED + ".+")):
            with self.subTest(name):
                self.press_button(name, BACK)
                self.wait_for_toast(message)
                self.wait_until_enabled(*ACTIONS)
        self.rename("Best of all")
        self.wait_for_toast("Yeniden adlandırılamadı")
        self.assertEqual(self.names_in(self.disk), sorted([moved.name, clip_page.sidecar_of(self.clip).name]))
        self.assertEqual(program.get("State"), "idle")


if __name__ == "__main__":
    desktop.main()
