#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The private Wayland desktop itself: a plain program captures its screen, and every control of a test has its effect."""
import desktop
import portal_client
import portal_dialogs
import wayland

SIZE = (640, 360)


class WaylandDesktop(desktop.DesktopTest):
    def setUp(self):
        self.client = portal_client.Client()
        self.addCleanup(lambda: self.client.bus.is_closed() or self.client.close())

    def screen_cast(self, token=None):
        return portal_client.ScreenCast(self.client, token)

    def assert_shows_the_scene(self, cast):
        # The first ones may be older than what the test did last.
        counters = cast.counters(40)[-20:]
        self.assertNotIn(None, counters, "a counter could not be read")
        self.assertEqual(sorted(counters), counters)

    def test_answered_dialog_gives_frames_and_a_token_that_needs_no_dialog(self):
        def record():
            scene = self.scene("--silent")
            first = self.screen_cast()
            portal_dialogs.share_screen()
            _, size, token = first.started()
            self.assertEqual(size, SIZE)
            counters = first.counters(120)
            first.close()
            second = self.screen_cast(token)
            self.assertEqual(second.started()[1], SIZE)
            self.assertFalse(portal_dialogs.is_screen_cast_asked())
            second.close()
            scene.stop()
            # The first picture may be older than the stream.
            return scene, counters[1:]

        self.assert_no_frame_lost(record)

    def test_cancelled_dialog(self):
        cast = self.screen_cast()
        portal_dialogs.cancel_screen_cast()
        self.assertEqual(cast.response()[0], 1)

    def test_stored_token_needs_no_dialog(self):
        self.assertEqual(self.screen_cast(wayland.new_token()).started()[1], SIZE)

    def test_unknown_token_needs_the_dialog(self):
        cast = self.screen_cast("7d7a1a5e-0000-4000-8000-000000000000")
        portal_dialogs.wait_for_screen_cast()
        self.assertFalse(cast.is_answered())
        # The end of the program ends its dialog.
        self.client.close()
        desktop.wait_until(lambda: not portal_dialogs.is_screen_cast_asked(), 5, "the end of the dialog")

    def test_keys_reach_the_window_in_front(self):
        cast = self.screen_cast()
        portal_dialogs.wait_for_screen_cast()
        with wayland.Input() as user:
            user.press_until(cast.is_answered, "escape")
        self.assertEqual(cast.response()[0], 1)

    def test_stop_button_closes_the_session(self):
        cast = self.screen_cast(wayland.new_token())
        cast.started()
        self.assertFalse(cast.is_closed())
        wayland.stop_sharing()
        desktop.wait_until(cast.is_closed, 5, "the end of the session")

    def test_turned_monitor_closes_the_session_and_its_token_starts_the_next(self):
        self.scene("--silent")
        cast = self.screen_cast(wayland.new_token())
        token = cast.started()[2]
        self.addCleanup(wayland.rotate, 0)
        wayland.rotate(1)
        desktop.wait_until(cast.is_closed, 5, "the end of the session")
        turned = self.screen_cast(token)
        self.assertEqual(turned.started()[1], SIZE[::-1])
        self.assert_shows_the_scene(turned)

    def test_portal_starts_again_after_a_crash(self):
        self.scene("--silent")
        token = self.screen_cast(wayland.new_token()).started()[2]
        for part in (wayland.PORTAL_BACK_END, wayland.PORTAL):
            wayland.kill(part)
            wayland.start(part)
        cast = self.screen_cast(token)
        self.assert_shows_the_scene(cast)

    def test_sound_server_starts_again_after_a_crash(self):
        self.scene("--silent")
        token = self.screen_cast(wayland.new_token()).started()[2]
        desktop.sound_server("restart")
        self.assert_shows_the_scene(self.screen_cast(token))

    def test_compositor_starts_again_after_a_crash(self):
        scene = self.scene("--silent", "--motion", "low")
        wayland.kill(wayland.COMPOSITOR)
        scene.process.communicate(timeout=5)
        self.assertEqual(scene.process.returncode, 1)
        wayland.start_compositor()
        # It ended with the compositor.
        wayland.start(wayland.PORTAL_BACK_END)
        self.scene("--silent")
        self.assert_shows_the_scene(self.screen_cast(wayland.new_token()))

    def test_screenshot(self):
        self.scene("--still", "--silent")
        picture = wayland.screenshot(desktop.TEST_FOLDER / "screen.png")
        size = desktop.run("ffprobe", "-v", "error", "-show_entries", "stream=width,height", "-of", "csv=p=0", picture)
        self.assertEqual(size.strip(), f"{SIZE[0]},{SIZE[1]}")

    def test_notifications_have_a_server(self):
        name = "org.freedesktop.Notifications"
        reply = desktop.run("gdbus", "call", "--session", "--dest", name, "--object-path", "/org/freedesktop/Notifications",
                            "--method", f"{name}.Notify", "test", "0", "", "Title", "Text", "[]", "{}", "1000")
        self.assertRegex(reply, r"^\(uint32 [1-9]")

    def test_sound_has_a_speaker_and_a_microphone(self):
        self.assertEqual(desktop.run("pactl", "get-default-sink").strip(), "quelto_speaker")
        self.assertEqual(desktop.run("pactl", "get-default-source").strip(), "quelto_mic")


if __name__ == "__main__":
    desktop.main()
