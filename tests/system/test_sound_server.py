#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A sound server that dies, comes back, or was never there."""
import time

import clip
import desk

TONE = 440
RATE = clip.RATE


class AudioServer(desk.DeskTest):
    def loud_parts(self, sound):
        """Whether the tone sounds, for each tenth of a second."""
        step = RATE // 10
        return [clip.numpy.abs(sound[start:start + step]).max() > 0.1 for start in range(0, len(sound) - step, step)]

    @staticmethod
    def quiet_runs(is_loud):
        """The tenths of each silence."""
        runs = []
        for index, loud in enumerate(is_loud):
            if loud:
                continue
            if runs and runs[-1][-1] == index - 1:
                runs[-1].append(index)
            else:
                runs.append([index])
        return runs

    def test_restart_leaves_a_gap_of_silence_and_the_stream_comes_back(self):
        scene = self.scene("--tone", TONE, "--mic-tone", 700)
        # Long enough also for a server that starts slowly.
        program = self.quelto(clipLength=20)
        program.record(10)
        self.assertEqual(program.get("MicWarning"), "")
        died = time.monotonic()
        desk.sound_server("kill")
        desk.wait_until(lambda: program.get("MicWarning"), 2, "a warning about the microphone")
        self.assertEqual(program.get("State"), "recording")
        time.sleep(1)
        desk.sound_server("start")
        came_back = time.monotonic()
        desk.wait_until(lambda: program.get("MicWarning") == "", 4, "the microphone")
        print(f"the microphone is back {time.monotonic() - came_back:.2f} s after the server")
        # The scene itself needs up to a second to connect again.
        time.sleep(6)
        result = clip.Clip(program.save())
        scene.stop()

        self.assertGreaterEqual(result.length, 12)
        system = self.loud_parts(result.sound(1)[:, 0])
        quiet, *others = sorted(self.quiet_runs(system), key=len, reverse=True)
        self.assertTrue(system[0] and system[-1], "no sound before or after the gap")
        # The sound of a machine that stands still for longer than its buffers last has gaps of its own.
        self.assertLessEqual(sum(map(len, others)) / 10, len(scene.standstill) / clip.SCENE_RATE, f"{others} besides {quiet}")
        print(f"{len(quiet) / 10:.1f} s of silence")
        self.assertGreater(len(quiet), 10)
        self.assertLess(len(quiet) / 10, came_back - died + 3)
        # The gap is at the right place if the beeps after it still fit their flashes.
        after = quiet[-1] / 10 + 0.2
        beeps = [beep for beep in result.beeps(1) if beep > after]
        flashes = [(number, time) for number, time in result.flashes() if time > after]
        self.assertGreaterEqual(len(beeps), 3)
        for beep in beeps:
            if beep >= result.length - 0.2:
                continue
            number, time_of_flash = min(flashes, key=lambda flash: abs(flash[1] - beep))
            lead = time_of_flash - beep
            # A machine that stands still makes a beep late by no more than that.
            late = sum(abs(frame - number * clip.FRAMES_A_FLASH) < clip.FRAMES_A_FLASH for frame in scene.standstill)
            print(f"sound before picture after the gap: {1000 * lead:+.1f} ms")
            self.assertLessEqual(abs(lead), 0.040 + late / clip.SCENE_RATE)

    def test_no_sound_server_at_start_is_told_in_a_sentence(self):
        desk.sound_server("stop")
        self.addCleanup(desk.sound_server, "start")
        program = self.quelto()
        program.wait_for_state("error")
        message = program.get("Message")
        print(message)
        self.assertGreater(len(message), 30)
        self.assertTrue(message.endswith("."))

    def test_without_sound_a_missing_server_is_no_error(self):
        desk.sound_server("stop")
        self.addCleanup(desk.sound_server, "start")
        self.scene("--silent", "--motion", "low")
        program = self.quelto(clipLength=1, captureAudio=False)
        program.record(1.5)
        self.assertTrue(program.get("MicWarning"))
        self.assertEqual(len(clip.Clip(program.save()).audio), 0)

    def test_default_output_that_changes_is_followed(self):
        module = desk.run("pactl", "load-module", "module-null-sink", "sink_name=quelto_other").strip()
        self.addCleanup(desk.run, "pactl", "unload-module", module)
        self.addCleanup(desk.run, "pactl", "set-default-sink", "quelto_speaker")
        self.scene("--tone", TONE, "--motion", "low")
        program = self.quelto(clipLength=8)
        program.record(3)
        desk.run("pactl", "set-default-sink", "quelto_other")
        time.sleep(4)
        system = self.loud_parts(clip.Clip(program.save()).sound(1)[:, 0])
        self.assertTrue(all(system[-10:]), "no sound after the change of the default output")


if __name__ == "__main__":
    desk.main()
