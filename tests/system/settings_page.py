# SPDX-License-Identifier: GPL-3.0-or-later
"""The base of tests of the settings page. They operate its controls as a screen reader does, by pointer, and by keyboard."""
import csv
import pathlib
import re

import desktop
import screen_reader
import window

SOURCES = pathlib.Path(__file__).parents[2] / "src"
LANGUAGES = ("tr", "en", "de", "es", "fr", "pt", "ru")


def translations():
    """For each Turkish text, its words in each language."""
    with open(SOURCES / "base/language/translations.tsv", newline="") as file:
        rows = csv.reader(file, delimiter="\t", quoting=csv.QUOTE_NONE)
        return {row[0]: dict(zip(LANGUAGES, row)) for row in rows}


def stored(key):
    """The text of the setting in the settings file, or None if it is not there."""
    found = re.search(rf"^{key}=(.*)$", desktop.Quelto.settings_file.read_text(), re.MULTILINE)
    return found[1].strip('"') if found else None


class SettingsPageTest(window.WindowTest):
    def open_page(self, program):
        desktop.press("ctrl+comma")
        desktop.wait_until(lambda: program.get("Page") == "settings", 5, "the settings page")
        self.reader.find("page tab", "Görünüm")

    def page(self, environment=None, **settings):
        """Starts the program without recording, and opens the page."""
        program = self.window(environment, **settings)
        self.open_page(program)
        return program

    def recording_page(self, environment=None, **settings):
        """Starts the program, which records, and opens the page."""
        program = self.quelto(environment, saveFolder=str(self.folder), **settings)
        self.addCleanup(self.assert_no_qml_errors, program)
        program.wait_for_state("recording")
        self.wait_for_window()
        self.open_page(program)
        return program

    def wait_for_stored(self, key, value):
        try:
            desktop.wait_until(lambda: stored(key) == value, 3, f"{key}={value} in the settings file")
        except AssertionError as error:
            raise AssertionError(f"{error}; it has {stored(key)}") from None

    def press(self, role, name):
        """Presses the item with the screen reader's action."""
        item = self.reader.find_anywhere(role, name)
        self.reader.act(item, "Press")
        return item

    def switch(self, name, key, value):
        """Switches it over. It shows the new value, and the settings file has it."""
        item = self.reader.find_anywhere("check box", name)
        self.assertEqual("checked" in item.states, not value, f"{item} before")
        self.reader.act(item, "Toggle")
        self.wait_for_switch(name, value)
        self.wait_for_stored(key, str(value).lower())

    def wait_for_switch(self, name, value):
        desktop.wait_until(lambda: ("checked" in self.reader.find_anywhere("check box", name).states) == value, 3,
                           f"“{name}” to be {value}")

    def checked(self, names):
        """Those of the options that are checked."""
        items = self.reader.everything()
        return [item.name for item in items if item.role == "radio button" and item.name in names and "checked" in item.states]

    def jump(self, section):
        """Presses the section in the sidebar, and waits until the page has stopped there."""
        self.press("page tab", section)
        desktop.wait_until(lambda: "selected" in self.reader.find("page tab", section).states, 3, f"{section} to be lit")
        self.wait_for_rest()

    def wait_for_rest(self):
        """Waits until nothing moves."""
        def places():
            return [item.bounds for item in self.reader.showing("check box") + self.reader.showing("radio button")]

        before = []

        def rests():
            nonlocal before
            before, last = places(), before
            return before == last

        desktop.wait_until(rests, 5, "the page to rest")

    def open_menu(self, name):
        """Opens the drop-down menu by the screen reader's action. Returns the names of its entries, and which are selected."""
        self.press("combo box", name)
        return self.entries()

    def entries(self):
        self.reader.find("list item", ".*")
        items = self.reader.showing("list item")
        return [item.name for item in items], [item.name for item in items if "selected" in item.states]

    def choose(self, name, entry):
        """Chooses the entry of the drop-down menu."""
        self.open_menu(name)
        self.press("list item", re.escape(entry))
        self.reader.wait_until_gone("list item", re.escape(entry))

    def shown(self, name):
        """The text on the closed drop-down menu."""
        # The explanation follows on the next line.
        return self.reader.description(self.reader.find_anywhere("combo box", name)).split("\n")[0]
