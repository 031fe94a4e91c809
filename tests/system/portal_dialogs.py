# SPDX-License-Identifier: GPL-3.0-or-later
"""Answers the dialogs of GNOME's portals as a screen reader does. The desktop is that of tools/private-wayland."""
import desktop
import screen_reader

SCREEN_CAST = "xdg-desktop-portal-gnome"
SHORTCUTS = "gnome-control-center-global-shortcuts-provider"
_BUTTONS = ("push button", "button")
_LISTS = ("list", "list box")
# The start of the portal is included.
_SECONDS = 20


def _is_named(item, name):
    # GTK 4 adds the label with its mnemonic: "_Share Share".
    return name in item.name.split()


class _Dialog:
    """For a `with` statement."""

    def __init__(self, program):
        self._reader = screen_reader.ScreenReader(program)
        self._program = program

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._reader.close()

    def _first(self, roles, name=None):
        return next((item for item in self._reader.everything()
                     if item.role in roles and (name is None or _is_named(item, name))), None)

    def button(self, name):
        return desktop.wait_until(lambda: self._first(_BUTTONS, name), _SECONDS, f"{name} of {self._program}")

    def choose_first_monitor(self):
        # From GNOME 48 on, monitors are toggle buttons, and the only one is chosen already.
        choice = desktop.wait_until(lambda: self._first((*_LISTS, "toggle button")), 5, f"monitors of {self._program}")
        if choice.role in _LISTS:
            self._reader.select(choice, 0)
        elif "pressed" not in choice.states:
            self._reader.act(choice, self._reader.actions(choice)[0])

    def press(self, name):
        """Presses the button when it can be pressed."""
        button = self.button(name)
        desktop.wait_until(lambda: "sensitive" in self._reader.now(button).states, 5, f"{name} to be sensitive")
        self._reader.act(button, self._reader.actions(button)[0])


def share_screen():
    """Chooses the first monitor in the dialog of a screen cast and shares it."""
    with _Dialog(SCREEN_CAST) as dialog:
        dialog.button("Share")
        dialog.choose_first_monitor()
        dialog.press("Share")


def cancel_screen_cast():
    with _Dialog(SCREEN_CAST) as dialog:
        dialog.press("Cancel")


def wait_for_screen_cast():
    """Waits until the dialog of a screen cast is there."""
    with _Dialog(SCREEN_CAST) as dialog:
        dialog.button("Share")


def _is_there(program, name):
    reader = screen_reader.ScreenReader(program)
    try:
        return any(item.role in _BUTTONS and _is_named(item, name) for item in reader.everything())
    finally:
        reader.close()


def is_screen_cast_asked():
    """Whether the dialog of a screen cast is there now."""
    return _is_there(SCREEN_CAST, "Share")


def add_shortcuts():
    """Agrees to the shortcuts that a program asks for. GNOME has this dialog from version 48 on."""
    with _Dialog(SHORTCUTS) as dialog:
        dialog.press("Add")


def cancel_shortcuts():
    with _Dialog(SHORTCUTS) as dialog:
        dialog.press("Cancel")


def is_shortcut_asked():
    """Whether the dialog of shortcuts is there now."""
    return _is_there(SHORTCUTS, "Add")
