#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's window and HUD on a Wayland compositor. The recording itself is that of the private desktop's X server."""
import os
import re
import subprocess
import time
import unittest

from gi.repository import GLib

import desktop
import sway

QUELTO = "app.quelto.Quelto"
GAME = "game"
# The HUD's background, and a place on it without text.
BACKGROUND = (0x16, 0x16, 0x1C)
HUD_RIGHT, HUD_TOP, HUD_SIZE = 24, 48, (330, 66)


@unittest.skipUnless(sway.is_installed(), "sway, grim or wtype is not installed")
class WaylandWindow(desktop.DesktopTest):
    def setUp(self):
        self.compositor = sway.Sway()
        self.addCleanup(self.compositor.stop)

    def quelto_behind_a_game(self, **settings):
        """Starts the program, and then a game that takes the focus."""
        environment = {**self.compositor.environment, "QUELTO_PLATFORM": "x11", "WAYLAND_DEBUG": "1"}
        program = self.quelto(environment, **settings)
        self.compositor.wait_for_focus(QUELTO)
        self.game = sway.Window(self.compositor, GAME, "Game")
        self.addCleanup(self.game.close)
        self.compositor.wait_for_focus(GAME)
        return program

    @staticmethod
    def activations(program):
        """The tokens with which the program has activated its window."""
        return re.findall(r"-> xdg_activation_v1@\d+\.activate\(\"([^\"]*)\"", program.log.read_text())

    def second_start(self, token):
        """Starts the program again. An empty token for none."""
        environment = {**os.environ, **self.compositor.environment}
        if token:
            environment["XDG_ACTIVATION_TOKEN"] = token
        self.assertEqual(subprocess.run([desktop.Quelto.PROGRAM], env=environment, timeout=20).returncode, 0)

    def test_second_start_raises_the_window_with_its_token(self):
        program = self.quelto_behind_a_game(autoStart=False)
        token = self.game.activation_token()
        self.assertTrue(token)
        self.assertNotIn(token, self.activations(program))
        self.second_start(token)
        self.compositor.wait_for_focus(QUELTO)
        self.assertEqual(self.activations(program)[-1], token)
        self.compositor.message(f"[app_id={GAME}] focus")
        self.compositor.wait_for_focus(GAME)
        self.second_start("")
        self.assertEqual(self.activations(program).count(token), 1, "a used token was used again")
        self.assertTrue(self.compositor.windows()[GAME], "the window was raised without a token")

    def test_activation_over_the_bus_raises_the_window_with_its_token(self):
        program = self.quelto_behind_a_game(autoStart=False)
        token = self.game.activation_token()
        desktop.session_bus().call_sync(QUELTO, "/app/quelto/Quelto", "org.freedesktop.Application", "Activate",
                                        GLib.Variant("(a{sv})", ({"activation-token": GLib.Variant("s", token)},)), None,
                                        0, -1)
        self.compositor.wait_for_focus(QUELTO)
        self.assertEqual(self.activations(program)[-1], token)

    def test_closed_window_comes_back_at_a_second_start(self):
        program = self.quelto_behind_a_game(autoStart=False)
        self.compositor.message(f"[app_id={QUELTO}] kill")
        desktop.wait_until(lambda: QUELTO not in self.compositor.windows(), 5, "the window to close")
        self.assertIsNone(program.process.poll())
        self.second_start("")
        self.compositor.wait_for_focus(QUELTO)

    def test_hud_is_above_a_full_screen_game(self):
        program = self.quelto_behind_a_game(clipLength=1, showOverlay=True)
        self.compositor.message("fullscreen", "enable")
        width, _ = self.compositor.size()
        x, y = width - HUD_RIGHT - HUD_SIZE[0] // 2, HUD_TOP + HUD_SIZE[1] - 5

        def is_shown():
            return all(abs(one - other) <= 12 for one, other in zip(self.compositor.pixel(x, y), BACKGROUND))

        corner = width - HUD_RIGHT - HUD_SIZE[0], HUD_TOP
        below = self.compositor.pixel(*corner)
        self.assertFalse(is_shown())
        program.record(1.5)
        program.save()
        since = time.monotonic()
        desktop.wait_until(is_shown, 5, "the HUD")
        self.compositor.wait_for_focus(GAME)
        self.assertEqual(self.compositor.pixel(*corner), below, "the corner is not round")
        desktop.wait_until(lambda: not is_shown(), 10, "the HUD to disappear")
        self.assertGreater(time.monotonic() - since, 2)


if __name__ == "__main__":
    desktop.main()
