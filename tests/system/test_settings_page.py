#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The controls of the settings page in a program that does not record: what they show and what is stored."""
import os
import pathlib
import re

import desktop
import screen_reader
import settings_page
from settings_page import stored

SWITCHES = {"Açılışta kaydı başlat": "autoStart", "İmleci göster": "showCursor", "League of Legends": "autoClipLeague",
            "Dota 2": "autoClipDota", "World of Warcraft": "autoClipWoW", "Efsane": "autoClipEpic", "Orta": "autoClipMedium",
            "Basit": "autoClipBasic", "Sistem sesini kaydet": "captureAudio", "Sesli sohbeti ayrı kaydet": "captureVoiceChat",
            "Mikrofonu kaydet": "captureMicrophone", "Klip kaydedilince ses çal": "playSound",
            "Ekranda bildirim göster": "showOverlay"}
# The labels of each choice's options, with the values that are stored.
CHOICES = {
    "clipLength": {"15 sn": "15", "30 sn": "30", "45 sn": "45", "1 dk": "60", "1.5 dk": "90", "2 dk": "120", "3 dk": "180",
                   "5 dk": "300"},
    "resolution": {"Yerel": "native", "1440p": "p1440", "1080p": "p1080", "720p": "p720"},
    "quality": {"Düşük": "low", "Orta": "medium", "Yüksek": "high", "Ultra": "ultra"},
    "fps": {"30": "30", "60": "60", "120": "120"},
    "codec": {"H.264": "h264", "HEVC": "hevc"},
    "discordLimitMB": {"10 MB": "10", "50 MB": "50", "500 MB": "500"},
}
# How many items of these roles the page has.
ITEMS_ONCE = {"page tab": 9, "combo box": 3}
GAMES = ("League of Legends", "Dota 2", "World of Warcraft")
LANGUAGE_NAMES = {"en": "English", "de": "Deutsch", "es": "Español", "fr": "Français", "pt": "Português", "ru": "Русский",
                  "tr": "Türkçe"}


class SettingsPage(settings_page.SettingsPageTest):
    def test_every_switch_writes_its_setting(self):
        self.page(autoClipEnabled=True, **{key: True for key in SWITCHES.values() if key != "autoStart"})
        for name, key in SWITCHES.items():
            with self.subTest(name):
                before = stored(key) == "true"
                self.switch(name, key, not before)
                self.switch(name, key, before)

    def test_every_option_writes_its_value_and_is_the_only_checked_one(self):
        self.page(clipLength=300, resolution="p720", quality="ultra", fps=120, codec="hevc", discordLimitMB=500)
        for key, options in CHOICES.items():
            for label, value in options.items():
                with self.subTest(key, option=label):
                    self.press("radio button", re.escape(label))
                    self.wait_for_stored(key, value)
                    desktop.wait_until(lambda options=options, label=label: self.checked(options) == [label], 3,
                                       f"only {label} to be checked; there are {self.checked(options)}")

    def test_estimates_follow_the_choices(self):
        self.page(clipLength=30, resolution="native", quality="high", fps=60, codec="h264")
        self.wait_for_estimates("1920×1080", "14 Mbps", "~51 MB", "~86 MB")
        self.press("radio button", "HEVC")
        self.wait_for_estimates("1920×1080", "10 Mbps", "~36 MB", "~70 MB")
        self.press("radio button", "720p")
        self.press("radio button", "1 dk")
        self.wait_for_estimates("1280×720", "4 Mbps", "~32 MB", "~65 MB")

    def wait_for_estimates(self, *texts):
        def missing():
            shown = " | ".join(item.name for item in self.reader.everything())
            return [text for text in texts if text not in shown]

        desktop.wait_until(lambda: not missing(), 3, f"the estimates {texts}")

    def test_rows_of_a_switched_off_source_disappear_and_keep_their_values(self):
        self.page(autoClipEnabled=True, micVolume=0.5, systemVolume=1.5, autoClipDota=False)
        self.switch("Sistem sesini kaydet", "captureAudio", False)
        self.reader.find_anywhere("check box", "Sesli sohbeti ayrı kaydet")
        self.wait_until_nowhere("slider", "Sistem sesi seviyesi")
        self.switch("Mikrofonu kaydet", "captureMicrophone", False)
        for role, name in (("combo box", "Mikrofon"), ("slider", "Mikrofon seviyesi")):
            self.wait_until_nowhere(role, name)
        self.switch("Otomatik klip al", "autoClipEnabled", False)
        for name in (*GAMES, "Efsane", "Orta", "Basit"):
            self.wait_until_nowhere("check box", name)
        self.switch("Otomatik klip al", "autoClipEnabled", True)
        self.switch("Mikrofonu kaydet", "captureMicrophone", True)
        self.switch("Sistem sesini kaydet", "captureAudio", True)
        self.assertEqual(["checked" in self.reader.find_anywhere("check box", game).states for game in GAMES],
                         [True, False, True])
        self.assertEqual(self.reader.value(self.reader.find_anywhere("slider", "Mikrofon seviyesi")), 0.5)
        self.assertEqual(self.reader.value(self.reader.find_anywhere("slider", "Sistem sesi seviyesi")), 1.5)

    def wait_until_nowhere(self, role, name):
        desktop.wait_until(lambda: not [item for item in self.reader.everywhere(role, name) if item.bounds], 3,
                           f"{role} “{name}” to disappear")

    def test_keyboard_operates_each_kind_of_control(self):
        self.page(clipLength=30, showCursor=True, systemVolume=1)
        self.jump("Klip")
        self.reader.click("radio button", "15 sn")
        self.wait_for_stored("clipLength", "15")
        for key, value in (("Right", "30"), ("End", "300"), ("Left", "180"), ("Home", "15")):
            desktop.press(key)
            self.wait_for_stored("clipLength", value)
        self.tab_to("check box", "İmleci göster")
        desktop.press("space")
        self.wait_for_stored("showCursor", "false")
        desktop.press("Return")
        self.wait_for_stored("showCursor", "true")
        self.tab_to("combo box", "Ekran")
        self.jump("Ses")
        self.reader.click("slider", "Sistem sesi seviyesi")
        self.wait_for_stored("systemVolume", "1")
        desktop.press("Right")
        self.wait_for_stored("systemVolume", "1.05")
        desktop.press("Left")
        self.wait_for_stored("systemVolume", "1")
        self.tab_to("combo box", "Mikrofon")
        desktop.press("space")
        self.reader.find("list item", "Test microphone")
        desktop.press("Down")
        desktop.press("Return")
        desktop.wait_until(lambda: stored("microphoneID"), 3, "the microphone")
        self.assertEqual(self.shown("Mikrofon"), "Test microphone")
        desktop.press("space")
        self.reader.find("list item", "Test microphone")
        desktop.press("Escape")
        self.reader.wait_until_gone("list item", ".*")
        self.assertEqual(self.shown("Mikrofon"), "Test microphone")

    def test_pointer_operates_each_kind_of_control(self):
        self.page(fps=30, micVolume=1)
        self.jump("Klip")
        self.reader.click("radio button", "60")
        self.wait_for_stored("fps", "60")
        self.jump("Kayıt")
        self.reader.click("check box", "İmleci göster")
        self.wait_for_stored("showCursor", "false")
        self.jump("Ses")
        slider = self.reader.find("slider", "Mikrofon seviyesi")
        screen_reader.move_pointer(*slider.middle)
        desktop.run("xdotool", "mousedown", 1)
        screen_reader.move_pointer(slider.bounds[0] + slider.bounds[2] + 40, slider.middle[1])
        desktop.run("xdotool", "mouseup", 1)
        self.wait_for_stored("micVolume", "2")
        self.assertEqual(self.reader.description(slider), "200%")

    def test_launch_at_login_writes_and_removes_the_entry(self):
        self.page()
        entry = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "autostart" / "app.quelto.Quelto.desktop"
        self.assertFalse(entry.exists())
        self.press("check box", "Girişte başlat")
        desktop.wait_until(entry.exists, 3, "the entry")
        self.assertIn(f"Exec={desktop.Quelto.PROGRAM}", entry.read_text())
        self.wait_for_switch("Girişte başlat", True)
        self.press("check box", "Girişte başlat")
        self.wait_for_switch("Girişte başlat", False)
        self.assertTrue(not entry.exists() or "Hidden=true" in entry.read_text())

    def test_failed_launch_at_login_is_reported_and_leaves_the_switch(self):
        folder = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "autostart"
        if folder.is_dir():
            for file in folder.iterdir():
                file.unlink()
            folder.rmdir()
        folder.write_text("")
        self.addCleanup(folder.unlink)
        self.page()
        self.press("check box", "Girişte başlat")
        self.reader.find(None, "Girişte başlat ayarlanamadı: .+")
        self.wait_for_switch("Girişte başlat", False)

    def test_every_theme_rebuilds_the_page_in_place(self):
        program = self.page(colorTheme="ember")
        self.jump("Görünüm")
        names = [item.name for item in self.swatches()]
        self.assertEqual(len(names), 10)
        themes = set()
        for name in [*names[1:], names[0]]:
            with self.subTest(name):
                before = stored("colorTheme")
                colours = self.colours()
                self.press("radio button", re.escape(name))
                desktop.wait_until(lambda before=before: stored("colorTheme") != before, 3, "another theme in the file")
                themes.add(stored("colorTheme"))
                desktop.wait_until(lambda colours=colours: self.colours() != colours, 3, "other colours on the screen")
                self.assert_page_is_there_once(program)
                self.assertEqual([item.name for item in self.swatches() if "checked" in item.states], [name])
        self.assertEqual(len(themes), 10)

    def swatches(self):
        """The palettes stand before the first choice of the page."""
        names = [item for item in self.reader.everything() if item.role == "radio button"]
        end = next(index for index, item in enumerate(names) if item.name in CHOICES["clipLength"])
        return names[:end]

    def colours(self):
        x, y, *_ = self.frame()
        return screen_reader.colours(x, y, 60, 120)

    def assert_page_is_there_once(self, program):
        """No item of the old page is left."""
        self.assertEqual(program.get("Page"), "settings")

        counts = {}

        def is_complete():
            items = list(self.reader.everything())
            counts.update((role, len([item for item in items if item.role == role])) for role in ITEMS_ONCE)
            return counts == ITEMS_ONCE

        try:
            desktop.wait_until(is_complete, 5, "one page")
        except AssertionError as error:
            raise AssertionError(f"{error}; there are {counts}") from None

    def test_every_language_rebuilds_the_page_in_place(self):
        program = self.page(language="tr")
        words = settings_page.translations()
        self.jump("Genel")
        before = "tr"
        for language in ("en", "de", "es", "fr", "pt", "ru", "tr"):
            with self.subTest(language):
                menu = words["Dil"][before]
                self.choose(menu, LANGUAGE_NAMES[language])
                self.wait_for_stored("language", language)
                self.reader.find("page tab", re.escape(words["Genel"][language]))
                # The page is where the menu was used.
                self.reader.find("combo box", re.escape(words["Dil"][language]))
                self.assert_page_is_there_once(program)
                self.assertEqual(self.shown(words["Dil"][language]), LANGUAGE_NAMES[language])
                names = {item.name for item in self.reader.everything()}
                other = {words[text][before] for text in words if words[text][before] != words[text][language]}
                same = {text for row in words.values() for text in [row[language]]}
                self.assertFalse(names & other - same, f"texts in {before}")
            before = language


if __name__ == "__main__":
    desktop.main()
