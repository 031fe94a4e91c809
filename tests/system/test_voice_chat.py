#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Voice chat in a track of its own: a program that is called like a chat application plays a tone beside a game."""
import os
import shutil
import subprocess
import time

import clip
import desktop

GAME_TONE, MIC_TONE, CHAT_TONE, OTHER_CHAT_TONE = 440, 700, 900, 1100
LEVEL = 0.25
MIX, SYSTEM, MICROPHONE, CHAT = range(4)


class ChatProgram:
    """Plays a tone until it is closed. The sound server knows it by the name of its executable."""

    def __init__(self, name, hertz):
        program = desktop.TEST_FOLDER / "programs" / name
        program.parent.mkdir(exist_ok=True)
        if not program.exists():
            shutil.copy(os.environ["QUELTO_TONE_PLAYER"], program)
        self._process = subprocess.Popen([program, str(hertz), str(hertz), str(LEVEL)], stdin=subprocess.PIPE)

    def quit(self):
        self._process.communicate(timeout=10)


def chat_node_exists():
    return "quelto-voice-chat" in desktop.run("pw-cli", "list-objects", "Node")


class VoiceChat(desktop.DesktopTest):
    def chat(self, name, hertz):
        program = ChatProgram(name, hertz)
        self.addCleanup(program.quit)
        return program

    def assert_tones(self, sound, *tones):
        """The sound has exactly these of all tones, each once: a tone that is mixed in twice is louder."""
        channel = sound[:, 0]
        for hertz in (GAME_TONE, MIC_TONE, CHAT_TONE, OTHER_CHAT_TONE):
            with self.subTest(hertz=hertz):
                level = clip.tone_level(channel, hertz)
                if hertz in tones:
                    self.assertAlmostEqual(level, LEVEL, delta=0.015)
                else:
                    self.assertLess(level, 0.003)

    def test_each_source_is_in_its_own_track(self):
        self.scene("--tone", GAME_TONE, "--mic-tone", MIC_TONE, "--motion", "low")
        self.chat("Discord", CHAT_TONE)
        self.chat("ts3client_linux_amd64", OTHER_CHAT_TONE)
        program = self.quelto(clipLength=3)
        program.record(4.5)
        result = clip.Clip(program.save())
        self.assertEqual(len(result.audio), 4)
        self.assert_tones(result.sound(MIX), GAME_TONE, MIC_TONE, CHAT_TONE, OTHER_CHAT_TONE)
        self.assert_tones(result.sound(SYSTEM), GAME_TONE, CHAT_TONE, OTHER_CHAT_TONE)
        self.assert_tones(result.sound(MICROPHONE), MIC_TONE)
        self.assert_tones(result.sound(CHAT), CHAT_TONE, OTHER_CHAT_TONE)

    def test_chat_alone_gives_its_own_track(self):
        self.scene("--tone", GAME_TONE, "--motion", "low")
        self.chat("Discord", CHAT_TONE)
        program = self.quelto(clipLength=3, captureMicrophone=False)
        program.record(4.5)
        result = clip.Clip(program.save())
        self.assertEqual(len(result.audio), 4)
        self.assert_tones(result.sound(MIX), GAME_TONE, CHAT_TONE)
        self.assertEqual(abs(result.sound(MICROPHONE)).max(), 0)
        self.assert_tones(result.sound(CHAT), CHAT_TONE)

    def test_chat_that_starts_and_quits_during_the_recording(self):
        self.scene("--tone", GAME_TONE, "--mic-tone", MIC_TONE, "--motion", "low")
        program = self.quelto(clipLength=10)
        program.record(2)
        self.assertFalse(chat_node_exists())
        self.assertEqual(abs(clip.Clip(program.save()).sound(CHAT)).max(), 0)
        chatting = self.chat("Discord", CHAT_TONE)
        desktop.wait_until(chat_node_exists, 3, "the chat stream")
        time.sleep(2)
        chatting.quit()
        desktop.wait_until(lambda: not chat_node_exists(), 3, "the end of the chat stream")
        time.sleep(1.5)
        self.chat("Discord", OTHER_CHAT_TONE)
        time.sleep(2)
        self.assertEqual(program.get("State"), "recording")
        self.assertEqual(program.get("MicWarning"), "")
        sound = clip.Clip(program.save()).sound(CHAT)[:, 0]
        first, second = (self.times_of(sound, hertz) for hertz in (CHAT_TONE, OTHER_CHAT_TONE))
        print(f"first call {first[0]:.1f} to {first[-1]:.1f} s, second call {second[0]:.1f} to {second[-1]:.1f} s")
        self.assertGreater(len(first), 15)
        self.assertGreater(len(second), 12)
        self.assertGreater(second[0] - first[-1], 1)
        pause = sound[int((first[-1] + 0.3) * clip.RATE):int((second[0] - 0.3) * clip.RATE)]
        self.assertLess(abs(pause).max(), 0.001)

    @staticmethod
    def times_of(sound, hertz):
        """The times, in steps of a tenth of a second, at which the tone plays."""
        step = clip.RATE // 10
        return [start / clip.RATE for start in range(0, len(sound) - step, step)
                if clip.tone_level(sound[start:start + step], hertz) > LEVEL / 2]

    def test_setting_switches_the_track_off_and_on_while_chat_runs(self):
        self.scene("--tone", GAME_TONE, "--mic-tone", MIC_TONE, "--motion", "low")
        self.chat("Discord", CHAT_TONE)
        program = self.quelto(clipLength=2, captureVoiceChat=False)
        program.record(3.5)
        self.assertFalse(chat_node_exists())
        result = clip.Clip(program.save())
        self.assert_tones(result.sound(SYSTEM), GAME_TONE, CHAT_TONE)
        self.assertEqual(abs(result.sound(CHAT)).max(), 0)
        program.set("captureVoiceChat", True)
        desktop.wait_until(chat_node_exists, 5, "the chat stream")
        time.sleep(3.5)
        self.assert_tones(clip.Clip(program.save()).sound(CHAT), CHAT_TONE)
        program.set("captureVoiceChat", False)
        desktop.wait_until(lambda: not chat_node_exists(), 5, "the end of the chat stream")

    def test_stream_ends_with_the_session(self):
        self.chat("Discord", CHAT_TONE)
        program = self.quelto(clipLength=2)
        program.wait_for_state("recording")
        desktop.wait_until(chat_node_exists, 5, "the chat stream")
        program.call("Stop")
        program.wait_for_state("idle")
        desktop.wait_until(lambda: not chat_node_exists(), 3, "the end of the chat stream")

    def test_chat_returns_after_a_restart_of_the_sound_server(self):
        self.scene("--silent", "--motion", "low")
        self.chat("Discord", CHAT_TONE)
        program = self.quelto(clipLength=2)
        program.wait_for_state("recording")
        desktop.wait_until(chat_node_exists, 5, "the chat stream")
        desktop.sound_server("restart")
        desktop.wait_until(lambda: program.get("MicWarning") == "", 8, "the sound server")
        self.assertFalse(chat_node_exists(), "the application ended with the server")
        self.chat("mumble", OTHER_CHAT_TONE)
        desktop.wait_until(chat_node_exists, 5, "the chat stream")
        time.sleep(3.5)
        self.assertEqual(program.get("State"), "recording")
        self.assert_tones(clip.Clip(program.save()).sound(CHAT), OTHER_CHAT_TONE)


if __name__ == "__main__":
    desktop.main()
