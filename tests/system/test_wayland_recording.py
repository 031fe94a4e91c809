#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The program in a Wayland session: it records the screen that the desktop shares, asks once, and continues after
interruptions."""
import os
import pathlib
import stat
import subprocess
import time

import clip
import desktop
import portal_dialogs
import wayland
from test_screen import cpu_seconds

SIZE = (640, 360)
TOKEN_FILE = pathlib.Path(os.environ["XDG_STATE_HOME"]) / "Quelto/screen.token"
NOT_PERMITTED = ("No screen recording permission. Allow screen sharing when your desktop asks, then restart the "
                 "recording.")
STOPPED = "The desktop has ended the screen sharing. Start the recording again."


class WaylandTest(desktop.DesktopTest):
    def setUp(self):
        self.forget_the_screen()

    @staticmethod
    def forget_the_screen():
        TOKEN_FILE.unlink(missing_ok=True)

    @staticmethod
    def permit_the_screen():
        """What remains of a dialog that the user answered earlier."""
        TOKEN_FILE.parent.mkdir(parents=True, exist_ok=True)
        TOKEN_FILE.write_text(wayland.new_token())
        TOKEN_FILE.chmod(0o600)

    def english(self, **settings):
        return self.quelto(language="en", **settings)

    def recording(self, **settings):
        """The program, recording without a dialog. A scene that starts now covers its window."""
        self.permit_the_screen()
        program = self.english(**settings)
        program.wait_for_state("recording")
        return program

    @staticmethod
    def wait_for_end_of_dialog():
        desktop.wait_until(lambda: not portal_dialogs.is_screen_cast_asked(), 5, "the end of the dialog")

    def assert_silent(self, program, states=("starting", "recording")):
        """The program has reached the last state through the others without asking."""
        program.wait_for_state(states[-1])
        self.assertFalse(portal_dialogs.is_screen_cast_asked())


class WaylandDialog(WaylandTest):
    def test_answered_dialog_is_the_only_one(self):
        program = self.english(clipLength=1)
        portal_dialogs.wait_for_screen_cast()
        self.assertEqual(program.get("State"), "starting")
        portal_dialogs.share_screen()
        program.wait_for_state("recording")
        self.scene("--silent", "--motion", "low")
        program.record(1.5)
        self.assertNotIn(None, clip.Clip(program.save()).counters()[-10:])
        desktop.wait_until(TOKEN_FILE.exists, 5, "the token")
        self.assertEqual(stat.S_IMODE(TOKEN_FILE.stat().st_mode), 0o600)
        first = TOKEN_FILE.read_text()

        program.call("Stop")
        program.wait_for_state("idle")
        program.call("Start")
        self.assert_silent(program)
        program.end()
        program.start()
        self.assert_silent(program)
        # Each start gets another token, and the earlier one is worth nothing.
        desktop.wait_until(lambda: TOKEN_FILE.read_text() != first, 5, "the next token")

    def test_cancelled_dialog_is_an_error_that_says_what_to_do(self):
        program = self.english()
        portal_dialogs.cancel_screen_cast()
        program.wait_for_state("error")
        self.assertEqual(program.get("Message"), NOT_PERMITTED)
        self.assertFalse(TOKEN_FILE.exists())
        program.call("Start")
        portal_dialogs.share_screen()
        program.wait_for_state("recording")

    def test_stop_closes_the_dialog(self):
        program = self.english()
        portal_dialogs.wait_for_screen_cast()
        program.call("Stop")
        program.wait_for_state("idle")
        self.wait_for_end_of_dialog()

    def test_end_of_the_program_closes_the_dialog(self):
        program = self.english()
        portal_dialogs.wait_for_screen_cast()
        program.end()
        self.assertEqual(program.process.returncode, 0)
        self.wait_for_end_of_dialog()

    def test_token_that_the_desktop_does_not_know_leads_to_the_dialog(self):
        TOKEN_FILE.parent.mkdir(parents=True, exist_ok=True)
        TOKEN_FILE.write_text("7d7a1a5e-0000-4000-8000-000000000000")
        program = self.english()
        portal_dialogs.share_screen()
        program.wait_for_state("recording")


class WaylandClip(WaylandTest):
    def test_clip_has_every_frame(self):
        def record():
            program = self.recording(clipLength=10, **desktop.EVERY_FRAME)
            scene = self.scene()
            program.record(12)
            result = clip.Clip(program.save())
            program.stop()
            scene.stop()
            self.assertEqual((result.video[0]["width"], result.video[0]["height"]), SIZE)
            return scene, result.counters()

        self.assert_no_frame_lost(record)

    def test_length_and_sound_in_sync_with_the_picture(self):
        program = self.recording(clipLength=15, **desktop.EVERY_FRAME)
        self.scene()
        program.record(17)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 15)
        self.assertLessEqual(result.length, 16.35)
        leads = [lead for lead in result.sound_lead(1) if abs(lead) < 0.5]
        print(f"sound before picture: mean {1000 * sum(leads) / max(1, len(leads)):+.1f} ms, "
              f"from {1000 * min(leads):+.1f} to {1000 * max(leads):+.1f} ms, {len(leads)} beeps")
        self.assertGreaterEqual(len(leads), 13)
        self.assertLessEqual(max(map(abs, leads)), 0.040)

    def test_still_screen_needs_little_cpu_and_can_be_saved(self):
        program = self.recording(clipLength=3, **desktop.OWN_DEFAULTS)
        self.scene("--still", "--silent")
        program.record(2)
        before = cpu_seconds(program.process.pid)
        time.sleep(4)
        used = (cpu_seconds(program.process.pid) - before) / 4
        print(f"{100 * used:.1f} % of a core for a still screen")
        self.assertLess(used, 0.1)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 3)
        self.assertEqual(set(result.counters()), {0})

    def test_command_saves_a_clip(self):
        program = self.recording(clipLength=1)
        program.record(1.5)
        self.assertEqual(subprocess.run([program.PROGRAM, "--save-clip"], timeout=10).returncode, 0)
        program.wait_for_clips(1)
        program.end()
        answer = subprocess.run([program.PROGRAM, "--save-clip"], timeout=10, capture_output=True, text=True)
        self.assertEqual(answer.returncode, 1)
        self.assertTrue(answer.stdout + answer.stderr)


class WaylandInterruption(WaylandTest):
    def assert_continues(self, program, scene, begin):
        """The program still records without a dialog, in the same size. Its clip begins before the interruption and has
        pictures of the scene after it."""
        until = time.monotonic()
        time.sleep(3)
        self.assertFalse(portal_dialogs.is_screen_cast_asked())
        self.assertEqual(program.get("State"), "recording", program.get("Message"))
        self.assertEqual(program.states, [], "the recording was started again")
        result = clip.Clip(program.save())
        self.assertEqual((result.video[0]["width"], result.video[0]["height"]), SIZE)
        counters = [counter for counter in result.counters() if counter is not None]
        shown = {scene.start + counter / clip.SCENE_RATE for counter in counters}
        self.assertLess(min(shown), begin - 1, "the buffer did not survive")
        pause = min(moment for moment in shown if moment > until) - max(moment for moment in shown if moment < begin + 0.1)
        print(f"pictures paused for {pause:.2f} s")
        self.assertTrue([moment for moment in shown if begin + 0.2 < moment < until + 2], "no picture in two seconds")

    def interrupted(self, interruption):
        """Interrupts a recording of the moving scene."""
        program = self.recording(clipLength=15)
        scene = self.scene("--silent")
        program.record(3)
        program.states.clear()
        begin = time.monotonic()
        interruption()
        self.assert_continues(program, scene, begin)
        return program, scene

    def test_turned_monitor(self):
        self.addCleanup(wayland.rotate, 0)
        program, scene = self.interrupted(lambda: wayland.rotate(1))
        begin = time.monotonic()
        wayland.rotate(0)
        self.assert_continues(program, scene, begin)

    def test_portal_front_end_is_killed(self):
        self.interrupted(lambda: wayland.kill(wayland.PORTAL))

    def test_portal_back_end_is_killed(self):
        self.interrupted(lambda: wayland.kill(wayland.PORTAL_BACK_END))

    def test_sound_server_is_restarted(self):
        self.interrupted(lambda: desktop.sound_server("restart"))

    def test_stop_button_of_the_desktop_ends_the_recording(self):
        program = self.recording(clipLength=1)
        program.record(1.5)
        wayland.stop_sharing()
        program.wait_for_state("error")
        self.assertEqual(program.get("Message"), "Recording stopped: " + STOPPED)
        time.sleep(1)
        self.assertEqual(program.get("State"), "error")
        # Nothing of the library is lost, and the user can record again.
        program.call("Start")
        program.wait_for_state("recording")

    def test_end_of_the_compositor_ends_the_program_and_the_next_start_is_silent(self):
        program = self.recording(clipLength=1)
        program.record(1.5)
        path = program.save()
        wayland.kill(wayland.COMPOSITOR)
        # Qt ends a program that loses the compositor.
        desktop.wait_until(lambda: program.process.poll() is not None, 10, "the end of the program")
        self.assertGreaterEqual(program.process.returncode, 0, "ended by a signal")
        wayland.start_compositor()
        wayland.start(wayland.PORTAL_BACK_END)
        program.start()
        self.assert_silent(program)
        program.record(1.5)
        clip.Clip(path)
        clip.Clip(program.save())


if __name__ == "__main__":
    desktop.main()
