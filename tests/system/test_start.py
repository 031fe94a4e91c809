#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Starting: once only, with errors as sentences, and a clip on request over D-Bus."""
import pathlib
import signal
import subprocess

import clip
import desk
import frozen_thread


class Start(desk.DeskTest):
    def test_short_recording(self):
        self.scene("--motion", "low", "--tone", 440)
        program = self.quelto(clipLength=2, fps=30, resolution="p720")
        program.record(3)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 2)
        self.assertNotIn(None, result.counters())
        self.assertEqual(program.get("IsSaving"), False)
        desk.wait_until(lambda: program.get("BufferMB"), 3, "the buffer's size")
        program.call("Stop")
        program.wait_for_state("idle")
        self.assertEqual(program.get("BufferMB"), 0)

    def test_window_costs_the_recording_no_imitated_graphics_card(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        desk.wait_until(lambda: desk.visible_windows("Quelto"), 5, "the window")
        threads = [path.read_text().strip() for path in pathlib.Path(f"/proc/{program.process.pid}/task").glob("*/comm")]
        self.assertIn("quelto.session", threads)
        self.assertEqual([name for name in threads if name.startswith("llvmpipe")], [])

    def test_second_start_raises_the_first(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        self.scene("--still", "--silent")
        desk.wait_until(lambda: desk.active_window() == "Quelto scene", 5, "the scene in front")
        second = subprocess.run([desk.Quelto.PROGRAM], timeout=10)
        self.assertEqual(second.returncode, 0)
        desk.wait_until(lambda: desk.active_window() == "Quelto", 5, "Quelto's window in front")
        self.assertIsNone(program.process.poll())

    def test_first_one_that_does_not_answer_is_told_in_the_language_of_the_settings(self):
        program = self.quelto(autoStart=False, language="de")
        program.wait_for_state("idle")
        program.process.send_signal(signal.SIGSTOP)
        self.addCleanup(program.process.send_signal, signal.SIGCONT)
        second = subprocess.run([desk.Quelto.PROGRAM], timeout=30, stderr=subprocess.PIPE, text=True)
        self.assertEqual(second.returncode, 1)
        self.assertRegex(second.stderr, "(?m)^Quelto läuft schon, ")

    def test_ends_though_a_thread_waits_for_a_disk_for_ever(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        try:
            thread = frozen_thread.FrozenThread(program.process, "quelto.wow")
        except OSError as error:
            self.skipTest(f"nothing may be traced here: {error}")
        self.addCleanup(thread.release)
        program.process.terminate()
        desk.wait_until(thread.has_ended, 20, "the end")
        self.assertEqual(program.process.wait(5), 0)

    def test_clip_is_named_for_the_program_in_front(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(1.5)
        self.assertRegex(program.save().name, r"^.+ - \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.mp4$")

    def test_default_folder_is_in_the_videos_folder(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1, saveFolder=None)
        program.record(1.5)
        self.assertEqual(program.save().parent, desk.TEST_FOLDER / "Videos" / "Quelto")

    def test_no_display_size_for_the_encoder_is_told(self):
        # A screen of one pixel comes out as 0×0, which no encoder takes.
        _, display = self.x_server("1x1")
        program = self.quelto({"DISPLAY": display}, captureAudio=False, captureMicrophone=False)
        program.wait_for_state("error")
        self.assertRegex(program.get("Message"), r"^Video kodlayıcı başlatılamadı \(-?\d+\)\. ")


if __name__ == "__main__":
    desk.main()
