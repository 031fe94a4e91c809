#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A program that is killed during a save leaves no incomplete clip under a clip's name."""
import time

import clip
import desktop


def hidden_files(folder):
    return [path for path in folder.glob(".quelto-*") if path.suffix == ".part"]


class Crash(desktop.DesktopTest):
    def test_killed_while_saving(self):
        self.scene()
        folder = desktop.TEST_FOLDER / "crash"
        caught = 0
        for delay in (0, 0.01, 0.03, 0.06, 0.1):
            program = self.quelto(clipLength=5, saveFolder=str(folder), fps=60, resolution="p1080")
            program.record(5)
            program.call("SaveClip")
            # The save writes the hidden file for about 0.1 to 0.2 s.
            deadline = time.monotonic() + 5
            while not hidden_files(folder) and time.monotonic() < deadline:
                pass
            time.sleep(delay)
            program.kill()
            caught += bool(hidden_files(folder))
            program.stop()
            for path in program.visible_clips():
                self.assertGreaterEqual(clip.Clip(path).length, 3)
                path.unlink()
        # The next successful save removes the leftover files.
        program = self.quelto(clipLength=1, saveFolder=str(folder))
        program.record(1)
        self.assertEqual([program.save()], list(folder.iterdir()))
        print(f"killed {caught} times during the write")
        self.assertGreater(caught, 0, "no kill came during a write; the delays do not fit")


if __name__ == "__main__":
    desktop.main()
