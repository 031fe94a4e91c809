#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A sound server that crashes, returns, or is missing.

QUELTO_SOUND_ROUNDS sets the number of random crashes, and QUELTO_SOUND_SEED repeats them.
"""
import os
import random
import time

import clip
import desktop

TONE = 440
RATE = clip.RATE


class AudioServer(desktop.DesktopTest):
    def loud_parts(self, sound):
        """For each tenth of a second, whether the tone is audible."""
        step = RATE // 10
        return [clip.numpy.abs(sound[start:start + step]).max() > 0.1 for start in range(0, len(sound) - step, step)]

    @staticmethod
    def quiet_runs(is_loud):
        """The indexes of each run of silent tenths of a second."""
        runs = []
        for index, loud in enumerate(is_loud):
            if loud:
                continue
            if runs and runs[-1][-1] == index - 1:
                runs[-1].append(index)
            else:
                runs.append([index])
        return runs

    def test_restart_leaves_one_gap_of_silence(self):
        scene = self.scene("--tone", TONE, "--mic-tone", 700)
        # Long enough for a server that starts slowly.
        program = self.quelto(clipLength=20, fps=60)
        program.record(10)
        self.assertEqual(program.get("MicWarning"), "")
        stopped = time.monotonic()
        desktop.sound_server("kill")
        desktop.wait_until(lambda: program.get("MicWarning"), 2, "a warning about the microphone")
        self.assertEqual(program.get("State"), "recording")
        time.sleep(1)
        desktop.sound_server("start")
        restarted = time.monotonic()
        desktop.wait_until(lambda: program.get("MicWarning") == "", 4, "the microphone")
        print(f"the microphone works again {time.monotonic() - restarted:.2f} s after the server")
        # The scene needs up to a second to connect again.
        time.sleep(6)
        result = clip.Clip(program.save())
        scene.stop()

        self.assertGreaterEqual(result.length, 12)
        system = self.loud_parts(result.sound(1)[:, 0])
        quiet, *others = sorted(self.quiet_runs(system), key=len, reverse=True)
        self.assertTrue(system[0] and system[-1], "no sound before or after the gap")
        self.assertEqual(others, [], f"further gaps besides {quiet}")
        print(f"{len(quiet) / 10:.1f} s of silence")
        self.assertGreater(len(quiet), 10)
        self.assertLess(len(quiet) / 10, restarted - stopped + 3)
        # The gap has the right length if the beeps after it match their flashes.
        after = quiet[-1] / 10 + 0.2
        beeps = [beep for beep in result.beeps(1) if beep > after]
        flashes = [time_of_flash for _, time_of_flash in result.flashes() if time_of_flash > after]
        self.assertGreaterEqual(len(beeps), 3)
        for beep in beeps:
            if beep >= result.length - 0.2:
                continue
            lead = min((flash - beep for flash in flashes), key=abs)
            print(f"sound before picture after the gap: {1000 * lead:+.1f} ms")
            self.assertLessEqual(abs(lead), 0.040)

    def test_recording_starts_without_a_sound_server_and_uses_it_when_it_appears(self):
        desktop.sound_server("stop")
        self.addCleanup(desktop.sound_server, "start")
        self.scene("--silent", "--motion", "low")
        program = self.quelto(clipLength=3)
        program.wait_for_state("recording")
        desktop.wait_until(lambda: program.get("MicWarning"), 5, "a warning")
        warning = program.get("MicWarning")
        print(warning)
        self.assertTrue(warning.startswith("Mikrofon başlatılamadı: "))
        self.assertTrue(warning.endswith("."))
        desktop.sound_server("start")
        desktop.wait_until(lambda: program.get("MicWarning") == "", 5, "the sound server is used")
        self.assertEqual(program.get("State"), "recording")
        time.sleep(2)
        self.assertEqual(len(clip.Clip(program.save()).audio), 4)

    def test_missing_sound_server_is_no_error_if_sound_is_off(self):
        desktop.sound_server("stop")
        self.addCleanup(desktop.sound_server, "start")
        self.scene("--silent", "--motion", "low")
        program = self.quelto(clipLength=1, captureAudio=False)
        program.record(1.5)
        desktop.wait_until(lambda: program.get("MicWarning"), 5, "a warning")
        self.assertEqual(len(clip.Clip(program.save()).audio), 0)

    def test_change_of_the_default_output_is_followed(self):
        module = desktop.run("pactl", "load-module", "module-null-sink", "sink_name=quelto_other").strip()
        self.addCleanup(desktop.run, "pactl", "unload-module", module)
        self.addCleanup(desktop.run, "pactl", "set-default-sink", "quelto_speaker")
        self.scene("--tone", TONE, "--motion", "low")
        program = self.quelto(clipLength=8)
        program.record(3)
        desktop.run("pactl", "set-default-sink", "quelto_other")
        time.sleep(4)
        system = self.loud_parts(clip.Clip(program.save()).sound(1)[:, 0])
        self.assertTrue(all(system[-10:]), "no sound after the change of the default output")

    def test_crashes_of_services_and_new_devices_leave_no_warning(self):
        seed = int(os.environ.get("QUELTO_SOUND_SEED", random.randrange(1 << 30)))
        chance = random.Random(seed)
        print(f"seed {seed}")
        scene = self.scene("--tone", TONE, "--mic-tone", 700, "--motion", "low")
        program = self.quelto(clipLength=4)
        program.record(1)
        for number in range(int(os.environ.get("QUELTO_SOUND_ROUNDS", 4))):
            self.break_sound(number, chance, program)
            desktop.sound_server("start")
            desktop.wait_until(lambda: program.get("MicWarning") == "", 8, "the devices")
            self.assertEqual(program.get("State"), "recording")
        scene.stop()
        # A session manager that started alone does not link all streams.
        desktop.sound_server("restart")
        desktop.wait_until(lambda: program.get("MicWarning") == "", 8, "the devices")
        self.scene("--tone", TONE, "--mic-tone", 700, "--motion", "low")
        time.sleep(4)
        result = clip.Clip(program.save())
        for track in (1, 2):
            self.assertTrue(all(self.loud_parts(result.sound(track)[:, 0])[-10:]), f"track {track} is silent")
        self.assertEqual(program.get("MicWarning"), "")

    @staticmethod
    def break_sound(number, chance, program):
        """Removes devices or services, in each way in turn."""
        def pause():
            time.sleep(chance.choice((0, 0.05, 0.3, 1.2)))

        way = number % 4
        # The session manager ends with the server.
        groups = [[("pipewire", "wireplumber"), ("pipewire-pulse",)], [], [("wireplumber",)], [("pipewire-pulse",)]][way]
        print("round", number, groups)
        for group in groups:
            desktop.sound_server("kill", *group)
            pause()
        if not groups:
            for module in ("module-remap-source", "module-null-sink"):
                desktop.run("pactl", "unload-module", module)
                pause()
        if chance.random() < 0.3:
            program.call("Stop")
            program.wait_for_state("idle")
            pause()
            program.call("Start")
            program.wait_for_state("recording")


if __name__ == "__main__":
    desktop.main()
