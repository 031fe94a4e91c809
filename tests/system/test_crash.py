#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Killed in the middle of a save, the program leaves no half clip under a clip's name."""
import time

import clip
import desk


class Crash(desk.DeskTest):
    def test_killed_while_saving(self):
        self.scene()
        folder = desk.TEST_FOLDER / "crash"
        caught = 0
        # The settling delay is a quarter of a second; from then on the file is being written.
        for delay in (0.26, 0.3, 0.35, 0.42, 0.5, 0.7):
            program = self.quelto(clipLength=5, saveFolder=str(folder))
            program.record(5)
            program.call("SaveClip")
            time.sleep(delay)
            program.kill()
            caught += any(path.name.startswith(".") for path in program.folder.glob("*"))
            program.stop()
            for path in program.visible_clips():
                self.assertGreaterEqual(clip.Clip(path).length, 3)
                path.unlink()
        # What the dead ones left behind is cleared away by the next save that lives.
        program = self.quelto(clipLength=1, saveFolder=str(folder))
        program.record(1)
        self.assertEqual([program.save()], list(folder.iterdir()))
        print(f"killed {caught} times with a file half written")
        self.assertGreater(caught, 0, "no save was hit; the delays do not fit")


if __name__ == "__main__":
    desk.main()
