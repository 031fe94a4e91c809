#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The content of a clip: every frame, sound in sync with the picture, each source in its tracks."""
import clip
import desktop

TONE, MIC_TONE = 440, 700
LEVEL = 0.25


def decibels(ratio):
    return 20 * clip.numpy.log10(max(ratio, 1e-9))


class ClipContent(desktop.DesktopTest):
    def assert_level(self, sound, hertz, wanted, where):
        level = clip.tone_level(sound, hertz)
        if wanted == 0:
            self.assertLess(level, 0.003, f"{hertz} Hz must not be in {where}")
        else:
            self.assertAlmostEqual(decibels(level / wanted), 0, delta=0.5, msg=f"level of {hertz} Hz in {where}")

    def test_clip_has_every_frame(self):
        def record():
            scene = self.scene()
            program = self.quelto(clipLength=10, **desktop.EVERY_FRAME)
            program.record(12)
            counters = clip.Clip(program.save()).counters()
            program.stop()
            scene.stop()
            return scene, counters

        self.assert_no_frame_lost(record)

    def test_picture_has_the_default_size_and_a_key_frame_each_second(self):
        self.scene("--motion", "low")
        program = self.quelto(clipLength=5, displayID=0, **desktop.OWN_DEFAULTS)
        program.record(7)
        result = clip.Clip(program.save())

        self.assertGreaterEqual(result.length, 5)
        self.assertLessEqual(result.length, 6.35)
        self.assertEqual((result.video[0]["width"], result.video[0]["height"]), (1920, 1080))
        self.assertEqual(result.video[0]["color_space"], "bt709")
        self.assertEqual(result.video[0]["color_range"], "tv")
        packets = result.packets()
        self.assertEqual(packets[0][0], 0)
        self.assertTrue(packets[0][1], "the first frame is no key frame")
        keys = [time for time, is_key in packets if is_key]
        # A key frame comes with the first picture after a second.
        longest_pause = max(after[0] - before[0] for before, after in zip(packets, packets[1:]))
        self.assertLess(max(after - before for before, after in zip(keys, keys[1:])), 1.06 + longest_pause)

    def test_sound_is_in_sync_with_the_picture(self):
        self.scene("--tone", TONE, "--mic-tone", MIC_TONE)
        program = self.quelto(clipLength=15, **desktop.EVERY_FRAME)
        program.record(17)
        result = clip.Clip(program.save())
        self.assertGreaterEqual(result.length, 15)
        self.assertLessEqual(result.length, 16.35)

        # On a busy machine the scene leaves a beep out, if it could only play it too late.
        leads = [lead for lead in result.sound_lead(1) if abs(lead) < 0.5]
        self.assertGreaterEqual(len(leads), 13)
        print(f"sound before picture: mean {1000 * sum(leads) / len(leads):+.1f} ms, "
              f"from {1000 * min(leads):+.1f} to {1000 * max(leads):+.1f} ms")
        self.assertLessEqual(max(map(abs, leads)), 0.040)

    def test_volumes_change_the_mix_and_not_the_other_tracks(self):
        self.scene("--tone", TONE, "--mic-tone", MIC_TONE, "--motion", "low")
        program = self.quelto(clipLength=3)
        program.record(4)
        for system, microphone in ((1.0, 1.0), (0.0, 2.0), (2.0, 0.0)):
            with self.subTest(system=system, microphone=microphone):
                program.set("systemVolume", system)
                program.set("micVolume", microphone)
                result = clip.Clip(program.save())
                self.assertEqual([track["disposition"]["default"] for track in result.audio], [1, 0, 0, 0])
                self.assertEqual({(track["codec_name"], track["sample_rate"], track["channels"]) for track in result.audio},
                                 {("aac", "48000", 2)})
                mix, system_only, mic_only, chat_only = (result.sound(track) for track in range(4))
                self.assert_level(mix[:, 0], TONE, LEVEL * system, "the mix")
                self.assert_level(mix[:, 0], MIC_TONE, LEVEL * microphone, "the mix")
                self.assert_level(mix[:, 1], TONE, 0, "the right side")
                self.assert_level(system_only[:, 0], TONE, LEVEL, "the system track")
                self.assert_level(system_only[:, 0], MIC_TONE, 0, "the system track")
                self.assert_level(mic_only[:, 1], MIC_TONE, LEVEL, "the microphone track")
                self.assert_level(mic_only[:, 0], TONE, 0, "the microphone track")
                self.assertEqual(abs(chat_only).max(), 0)

    def test_without_microphone_there_is_one_audio_track(self):
        self.scene("--tone", TONE, "--motion", "low")
        program = self.quelto(clipLength=2, captureMicrophone=False)
        program.record(2.5)
        result = clip.Clip(program.save())
        self.assertEqual(len(result.audio), 1)
        self.assert_level(result.sound(0)[:, 0], TONE, LEVEL, "the mix")

    def test_clip_of_a_silent_desktop_has_an_audio_track(self):
        self.scene("--silent", "--motion", "low")
        program = self.quelto(clipLength=2, captureMicrophone=False)
        program.record(2.5)
        result = clip.Clip(program.save())
        self.assertEqual(len(result.audio), 1)
        self.assertEqual(abs(result.sound(0)).max(), 0)

    def test_all_volumes_at_zero_give_a_clip_without_sound(self):
        self.scene("--tone", TONE, "--motion", "low")
        program = self.quelto(clipLength=2, systemVolume=0.0, micVolume=0.0)
        program.record(2.5)
        result = clip.Clip(program.save())
        self.assertEqual((len(result.video), len(result.audio)), (1, 0))


if __name__ == "__main__":
    desktop.main()
