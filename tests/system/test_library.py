#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The list of clips follows every change of its folder."""
import subprocess
import time

import clip_folder
import desktop
import window

ALL = "Tüm Klipler"
# The longest time in seconds from a change in the folder until the window shows it.
SOON = 1.0


class Library(window.WindowTest):
    def assert_soon(self, change, place, count):
        """`change` may return the time at which it took effect."""
        started = time.monotonic()
        made = change()
        if isinstance(made, float):
            started = made
        self.wait_for_count(place, count)
        taken = time.monotonic() - started
        print(f"{place} shows {count} after {taken:.2f} s")
        self.assertLess(taken, SOON)

    def test_sidebar_counts_clips_by_game(self):
        self.put("Dota 2 - 2026-03-01 20.15.07 [EFSANE 170] RAMPAGE (Axe)")
        self.put("Dota 2 - 2026-03-01 20.18.07")
        self.put("League of Legends - 2026-03-01 20.19.07 [ORTA 45] Triple Kill")
        self.put("Zuma - 2026-03-01 20.19.08 (9x16)", width=180, height=320)
        clip_folder.put_broken_clip(self.folder, "Dota 2 - 2026-03-01 20.20.07")
        (self.folder / ".Dota 2 - 2026-03-01 20.15.07.mp4.json").write_text('{"events":[]}')
        (self.folder / "notes.txt").write_text("no clip")
        self.window()
        self.wait_for_count(ALL, 5)
        rows = [item.name for item in self.reader.showing("push button", r".*, \d+")]
        self.assertEqual(rows, ["Tüm Klipler, 5", "Maç Özetleri, 0", "Dota 2, 3", "League of Legends, 1", "Zuma, 1"])

    def test_changes_from_outside_show_within_a_second(self):
        first = self.put("Dota 2 - 2026-03-01 20.15.07")
        self.window()
        self.wait_for_count(ALL, 1)
        self.assert_soon(lambda: self.put("Dota 2 - 2026-03-01 20.16.07"), ALL, 2)
        self.assert_soon(lambda: first.rename(self.folder / "Zuma - 2026-03-01 20.15.07.mp4"), "Zuma", 1)
        self.wait_for_count("Dota 2", 1)
        self.assert_soon((self.folder / "Zuma - 2026-03-01 20.15.07.mp4").unlink, ALL, 1)
        self.reader.wait_until_gone("push button", "Zuma, .*")

    def test_folder_that_is_removed_and_restored(self):
        self.put("Dota 2 - 2026-03-01 20.15.07")
        self.window()
        self.wait_for_count(ALL, 1)
        away = self.folder.with_name("away")
        self.assert_soon(lambda: self.folder.rename(away), ALL, 0)

        def bring_back():
            # The program has created an empty folder there.
            if self.folder.exists():
                self.folder.rmdir()
            away.rename(self.folder)

        self.assert_soon(bring_back, ALL, 1)
        self.assert_soon(lambda: self.put("Dota 2 - 2026-03-01 20.16.07"), ALL, 2)

    def test_disk_that_is_unmounted_and_mounted_again(self):
        disk, place = self.new_folder("disk"), self.new_folder("place")
        self.mount("-t", "tmpfs", "quelto-test", disk)
        (disk / "clips").mkdir()
        clip_folder.put_clip(disk / "clips", "Dota 2 - 2026-03-01 20.15.07")
        self.mount("--bind", disk, place)
        self.window(saveFolder=str(place / "clips"))
        self.wait_for_count(ALL, 1)

        def unmount():
            def made():
                began = time.monotonic()
                return not subprocess.run(["umount", place], capture_output=True).returncode and began

            # The disk is busy while a thumbnail is read from it.
            return desktop.wait_until(made, 3, "the disk to be unmounted")

        self.assert_soon(unmount, ALL, 0)
        self.assert_soon(lambda: desktop.run("mount", "--bind", disk, place), ALL, 1)
        self.assert_soon(lambda: clip_folder.put_clip(disk / "clips", "Dota 2 - 2026-03-01 20.16.07"), ALL, 2)

    def test_many_new_clips_at_once_are_all_counted(self):
        self.window()
        self.wait_for_count(ALL, 0)
        for second in range(40):
            self.put(f"Dota 2 - 2026-03-01 20.15.{second:02}")
        self.assert_soon(lambda: self.put("Dota 2 - 2026-03-01 20.16.00"), ALL, 41)

    def test_another_save_folder_replaces_the_first(self):
        self.put("Dota 2 - 2026-03-01 20.15.07")
        program = self.window()
        self.wait_for_count(ALL, 1)
        other = self.new_folder("other")
        for second in range(3):
            clip_folder.put_clip(other, f"Zuma - 2026-03-01 20.15.{second:02}")
        self.assert_soon(lambda: program.set("saveFolder", str(other)), ALL, 3)
        self.assert_soon(lambda: clip_folder.put_clip(other, "Zuma - 2026-03-01 20.15.09"), ALL, 4)


if __name__ == "__main__":
    desktop.main()
