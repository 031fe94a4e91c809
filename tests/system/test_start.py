#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The start of the program: a single instance, readable errors, and a clip on request over D-Bus."""
import os
import pathlib
import signal
import subprocess
import time

import clip
import desktop
import frozen_thread


class CommandLine(desktop.DesktopTest):
    def run_with(self, display, *arguments):
        environment = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
        if display is not None:
            environment["DISPLAY"] = display
        return subprocess.run([desktop.Quelto.PROGRAM, *arguments], env={**environment, "LANGUAGE": "en"},
                              capture_output=True, text=True, timeout=20)

    def test_help_and_version_need_no_x_server(self):
        desktop.Quelto.write_settings({"language": "de"})
        for display in (None, ":9999", os.environ["DISPLAY"]):
            with self.subTest(display=display):
                version = self.run_with(display, "--version")
                self.assertEqual((version.returncode, version.stderr), (0, ""))
                self.assertRegex(version.stdout, r"^Quelto \d+\.\d+\.\d+\n$")
                help_text = self.run_with(display, "--help")
                self.assertEqual((help_text.returncode, help_text.stderr), (0, ""))
                self.assertIn("Zeigt diese Hilfe", help_text.stdout)
        self.assertEqual(desktop.visible_windows("Quelto"), [])

    def test_unknown_option_is_an_error(self):
        for display in (None, os.environ["DISPLAY"]):
            result = self.run_with(display, "--no-such-option")
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertIn("--no-such-option", result.stderr)


class Start(desktop.DesktopTest):
    def test_short_recording(self):
        self.scene("--motion", "low", "--tone", 440)
        program = self.quelto(clipLength=2)
        program.record(3)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 2)
        self.assertNotIn(None, result.counters())
        self.assertEqual(program.get("IsSaving"), False)
        desktop.wait_until(lambda: program.get("BufferMB"), 3, "the buffer's size")
        program.call("Stop")
        program.wait_for_state("idle")
        self.assertEqual(program.get("BufferMB"), 0)

    def test_window_uses_no_software_opengl(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        desktop.wait_until(lambda: desktop.visible_windows("Quelto"), 5, "the window")
        threads = [path.read_text().strip() for path in pathlib.Path(f"/proc/{program.process.pid}/task").glob("*/comm")]
        self.assertIn("quelto.session", threads)
        self.assertEqual([name for name in threads if name.startswith("llvmpipe")], [])

    def test_second_start_shows_the_window_of_the_first(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        self.scene("--still", "--silent")
        desktop.wait_until(lambda: desktop.active_window() == "Quelto scene", 5, "the scene to become active")
        second = subprocess.run([desktop.Quelto.PROGRAM], timeout=10)
        self.assertEqual(second.returncode, 0)
        desktop.wait_until(lambda: desktop.active_window() == "Quelto", 5, "Quelto's window to become active")
        self.assertIsNone(program.process.poll())

    def test_first_instance_that_does_not_answer_is_reported_in_the_set_language(self):
        program = self.quelto(autoStart=False, language="de")
        program.wait_for_state("idle")
        program.process.send_signal(signal.SIGSTOP)
        self.addCleanup(program.process.send_signal, signal.SIGCONT)
        second = subprocess.run([desktop.Quelto.PROGRAM], timeout=30, stderr=subprocess.PIPE, text=True)
        self.assertEqual(second.returncode, 1)
        self.assertRegex(second.stderr, "(?m)^Quelto läuft schon, ")

    def test_takes_the_place_of_a_first_instance_that_ends_instead_of_answering(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        program.process.send_signal(signal.SIGSTOP)
        monitor = subprocess.Popen(["dbus-monitor", "member=Activate"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(monitor.stdout.close)
        self.addCleanup(monitor.wait, 10)
        self.addCleanup(monitor.terminate)
        # The bus announces that the monitor is ready.
        self.assertIn("NameAcquired", monitor.stdout.readline())
        second = subprocess.Popen([desktop.Quelto.PROGRAM])
        self.addCleanup(second.wait, 10)
        self.addCleanup(second.terminate)
        while "member=Activate" not in monitor.stdout.readline():
            self.assertIsNone(second.poll())
        program.kill()
        desktop.wait_until(lambda: program.get("State") == "idle" or second.poll() is not None, 15, "the second start")
        self.assertIsNone(second.poll())

    def test_ends_while_a_thread_is_blocked_by_a_disk(self):
        program = self.quelto(autoStart=False)
        program.wait_for_state("idle")
        try:
            thread = frozen_thread.FrozenThread(program.process, "quelto.wow")
        except OSError as error:
            self.skipTest(f"ptrace is not permitted: {error}")
        self.addCleanup(thread.release)
        program.process.terminate()
        desktop.wait_until(thread.has_ended, 20, "the program to end")
        self.assertEqual(program.process.wait(5), 0)

    def test_ends_while_a_save_hangs_and_the_next_start_waits_for_that(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(1.5)
        try:
            thread = frozen_thread.FrozenThread(program.process, "quelto.save")
        except OSError as error:
            self.skipTest(f"ptrace is not permitted: {error}")
        self.addCleanup(thread.release)
        program.call("SaveClip")
        desktop.wait_until(lambda: program.get("IsSaving"), 5, "the save")
        program.process.terminate()
        terminated = time.monotonic()
        desktop.wait_until(lambda: not desktop.visible_windows("Quelto"), 5, "the window to be gone")
        second = subprocess.Popen([desktop.Quelto.PROGRAM])
        self.addCleanup(second.wait, 10)
        self.addCleanup(second.terminate)
        desktop.wait_until(thread.has_ended, 20, "the program to end")
        self.assertGreater(time.monotonic() - terminated, 9)
        self.assertEqual(program.process.wait(5), 1)
        desktop.wait_until(lambda: program.get("State") == "recording", 10, "the second start to record")
        self.assertIsNone(second.poll())

    def test_starts_with_a_list_of_matches_that_is_no_file(self):
        data = desktop.TEST_FOLDER / "data-with-a-pipe"
        data.mkdir()
        os.mkfifo(data / "matches.json")
        program = self.quelto({"QUELTO_DATA_DIR": str(data)}, autoStart=False)
        program.wait_for_state("idle")
        desktop.wait_until((data / "matches.json.unreadable").is_fifo, 5, "the pipe to be set aside")

    def test_clip_is_named_after_the_active_program(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1)
        program.record(1.5)
        self.assertRegex(program.save().name, r"^.+ - \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.mp4$")

    def test_default_folder_is_in_the_videos_folder(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=1, saveFolder=None)
        program.record(1.5)
        self.assertEqual(program.save().parent, desktop.TEST_FOLDER / "Videos" / "Quelto")

    def test_display_too_small_for_the_encoder_is_reported(self):
        # A screen of one pixel is rounded down to 0×0, which no encoder accepts.
        _, display = self.x_server("1x1")
        program = self.quelto({"DISPLAY": display}, captureAudio=False, captureMicrophone=False)
        program.wait_for_state("error")
        self.assertRegex(program.get("Message"), r"^Video kodlayıcı başlatılamadı \(-?\d+\)\. ")


if __name__ == "__main__":
    desktop.main()
