#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Killed in the middle of a save, the program leaves no half clip under a clip's name."""
import time

import clip
import desk


def hidden_files(folder):
    return [path for path in folder.glob(".quelto-*") if path.suffix == ".part"]


class Crash(desk.DeskTest):
    def test_killed_while_saving(self):
        self.scene()
        folder = desk.TEST_FOLDER / "crash"
        caught = 0
        for delay in (0, 0.01, 0.03, 0.06, 0.1):
            program = self.quelto(clipLength=5, saveFolder=str(folder))
            program.record(5)
            program.call("SaveClip")
            # From the moment at which the hidden file appears it is being written, for a tenth of a second or two.
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
        # What the dead ones left behind is cleared away by the next save that lives.
        program = self.quelto(clipLength=1, saveFolder=str(folder))
        program.record(1)
        self.assertEqual([program.save()], list(folder.iterdir()))
        print(f"killed {caught} times with a file half written")
        self.assertGreater(caught, 0, "no save was hit; the delays do not fit")


if __name__ == "__main__":
    desk.main()
