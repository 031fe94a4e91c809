#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Saves on a full disk and into a folder that is missing."""
import pathlib
import subprocess

import clip
import desktop


class FullDisk(desktop.DesktopTest):
    def setUp(self):
        self.disk = desktop.TEST_FOLDER / "disk"
        self.disk.mkdir()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "tmpfs", self.disk], capture_output=True, text=True)
        if mounted.returncode:
            self.disk.rmdir()
            self.skipTest("cannot mount a small disk: " + mounted.stderr.strip())
        self.addCleanup(self.disk.rmdir)
        self.addCleanup(desktop.run, "umount", self.disk)

    def test_failed_save_leaves_no_file_and_the_next_one_succeeds(self):
        self.scene()
        program = self.quelto(clipLength=3, saveFolder=str(self.disk))
        program.record(4)
        desktop.press()
        desktop.wait_until(lambda: program.failed, 10, "the message that the save failed")
        self.assertRegex(program.failed[0], "^Klip yazılamadı: .")
        self.assertEqual(list(self.disk.iterdir()), [])
        self.assertEqual(program.get("State"), "recording")

        desktop.run("mount", "-o", "remount,size=256m", self.disk)
        program.failed.clear()
        desktop.press()
        result = clip.Clip(program.wait_for_clips(1)[0])
        self.assertEqual(pathlib.Path(result.path).parent, self.disk)
        self.assertGreaterEqual(result.length, 3)


class Folder(desktop.DesktopTest):
    def test_deleted_folder_is_created_again(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1, saveFolder=str(desktop.TEST_FOLDER / "deep" / "clips"))
        program.record(1.5)
        first = program.save()
        first.unlink()
        first.parent.rmdir()
        first.parent.parent.rmdir()
        self.assertTrue(program.save().exists())

    def test_file_at_the_folders_path_is_reported_and_the_buffer_kept(self):
        self.scene("--motion", "low")
        place = desktop.TEST_FOLDER / "no-folder"
        place.write_text("")
        program = self.quelto(clipLength=1, saveFolder=str(place))
        program.record(1.5)
        desktop.press()
        desktop.wait_until(lambda: program.failed, 10, "the message that the save failed")
        place.unlink()
        program.failed.clear()
        self.assertTrue(program.save().exists())


if __name__ == "__main__":
    desktop.main()
