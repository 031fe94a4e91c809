#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The program in a Wayland session: it asks once which screen to record, and continues after interruptions."""
import stat
import time

import clip
import desktop
import portal_dialogs
import wayland
import wayland_recording

NOT_PERMITTED = ("No screen recording permission. Allow screen sharing when your desktop asks, then restart the "
                 "recording.")
STOPPED = "The desktop has ended the screen sharing. Start the recording again."


class WaylandDialog(wayland_recording.WaylandRecordingTest):
    def test_answered_dialog_is_the_only_one(self):
        program = self.english(clipLength=1)
        portal_dialogs.wait_for_screen_cast()
        self.assertEqual(program.get("State"), "starting")
        portal_dialogs.share_screen()
        program.wait_for_state("recording")
        self.scene("--silent", "--motion", "low")
        program.record(1.5)
        self.assertNotIn(None, clip.Clip(program.save()).counters()[-10:])
        desktop.wait_until(wayland_recording.TOKEN_FILE.exists, 5, "the token")
        self.assertEqual(stat.S_IMODE(wayland_recording.TOKEN_FILE.stat().st_mode), 0o600)

        program.call("Stop")
        program.wait_for_state("idle")
        program.call("Start")
        self.assert_silent(program)
        program.end()
        program.start()
        self.assert_silent(program)

    def test_cancelled_dialog_is_an_error_that_says_what_to_do(self):
        program = self.english()
        portal_dialogs.cancel_screen_cast()
        program.wait_for_state("error")
        self.assertEqual(program.get("Message"), NOT_PERMITTED)
        self.assertFalse(wayland_recording.TOKEN_FILE.exists())
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
        wayland_recording.TOKEN_FILE.parent.mkdir(parents=True, exist_ok=True)
        wayland_recording.TOKEN_FILE.write_text("7d7a1a5e-0000-4000-8000-000000000000")
        program = self.english()
        portal_dialogs.share_screen()
        program.wait_for_state("recording")


class WaylandInterruption(wayland_recording.WaylandRecordingTest):
    def assert_continues(self, program, scene, begin):
        """The program still records without a dialog, in the same size. Its clip begins before the interruption and has
        pictures of the scene after it."""
        until = time.monotonic()
        time.sleep(3)
        self.assertFalse(portal_dialogs.is_screen_cast_asked())
        self.assertEqual(program.get("State"), "recording", program.get("Message"))
        self.assertEqual(program.states, [], "the recording was started again")
        result = clip.Clip(program.save())
        self.assertEqual((result.video[0]["width"], result.video[0]["height"]), wayland_recording.SIZE)
        counters = [counter for counter in result.counters() if counter is not None]
        shown = {scene.start + counter / clip.SCENE_RATE for counter in counters}
        self.assertLess(min(shown), begin - 1, "the buffer did not survive")
        self.assertTrue([moment for moment in shown if begin + 0.2 < moment < until + 2], "no picture in two seconds")
        pause = min(moment for moment in shown if moment > until) - max(moment for moment in shown if moment < begin + 0.1)
        print(f"pictures paused for {pause:.2f} s")

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
        def end_until_the_program_needs_it():
            wayland.kill(wayland.PORTAL_BACK_END)
            # How long its start takes depends on the desktop alone.
            wayland.wait_for(wayland.PORTAL_BACK_END)

        self.interrupted(end_until_the_program_needs_it)

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
