# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads a program's window as a screen reader does. Tests find items by role and name, and click on them.

Needs the private desktop's --accessibility. Every call reads the items from the program again; nothing is cached.
"""
import dataclasses
import os
import re
import subprocess
import time

import gi

import desktop

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ROOT = "/org/a11y/atspi/accessible/root"
_ACTION = "org.a11y.atspi.Action"
_VALUE = "org.a11y.atspi.Value"
_REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
_STATES = {1: "active", 4: "checked", 11: "focusable", 12: "focused", 16: "modal", 20: "pressed", 22: "selectable",
           23: "selected", 24: "sensitive", 25: "showing", 8: "enabled"}
_TIMEOUT = 5000


@dataclasses.dataclass(frozen=True)
class Item:
    """An item at the time it was read. `bounds` are x, y, width and height on the screen, or None."""
    address: tuple
    role: str
    name: str
    states: frozenset
    bounds: tuple

    @property
    def middle(self):
        x, y, width, height = self.bounds
        return x + width // 2, y + height // 2

    def __str__(self):
        return f"{self.role} “{self.name}” {self.bounds} {' '.join(sorted(self.states))}"


class ScreenReader:
    """`scale` is the desktop's scale factor, because Qt reports positions in device-independent pixels."""

    def __init__(self, application="Quelto", scale=1):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, _TIMEOUT)
        self._application = application
        self._scale = scale
        self._bus = Gio.DBusConnection.new_for_address_sync(
            address[0], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)

    def close(self):
        self._bus.close_sync()

    def _call(self, address, interface, method, *arguments):
        signature, values = arguments or ("()", ())
        return self._bus.call_sync(*address, interface, method, GLib.Variant(signature, values), None, 0, _TIMEOUT)

    def listen(self):
        """Starts to collect focus events. A program that starts later learns of the listener by itself."""
        self._events = []
        for event in ("focus", "object:state-changed:focused"):
            self._call(_REGISTRY, "org.a11y.atspi.Registry", "RegisterEvent", "(sass)", (event, [], ""))
        self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, "focused",
                                   Gio.DBusSignalFlags.NONE, self._on_focus)

    def _on_focus(self, _bus, sender, path, _interface, _signal, values):
        if values[1]:
            try:
                self._events.append(self._item((sender, path)))
            except GLib.Error:
                pass

    def focus_events(self):
        """Returns the items that got the focus since the last call, in order, as they were at the time of the event."""
        while GLib.MainContext.default().iteration(False):
            pass
        events, self._events = self._events, []
        return events

    def wait_for_focus_event(self, role, name, seconds=5):
        """Waits until such an item gets the focus. Returns the names of all items that got it until then, including it."""
        events = []

        def is_reported():
            events.extend(self.focus_events())
            return any(item.role == role and re.fullmatch(name, item.name) for item in events)

        try:
            desktop.wait_until(is_reported, seconds, f"a focus event of {role} “{name}”")
        except AssertionError as error:
            raise AssertionError(f"{error}; the events were of {[str(item) for item in events]}") from None
        return [item.name for item in events]

    def _property(self, address, name, interface=_ACCESSIBLE):
        return self._call(address, "org.freedesktop.DBus.Properties", "Get", "(ss)", (interface, name))[0]

    def _children(self, address):
        return self._call(address, _ACCESSIBLE, "GetChildren")[0]

    def _states(self, address):
        low, _ = self._call(address, _ACCESSIBLE, "GetState")[0]
        return frozenset(name for bit, name in _STATES.items() if low & 1 << bit)

    def _item(self, address):
        states = self._states(address)
        bounds = None
        if "showing" in states:
            try:
                extents = self._call(address, "org.a11y.atspi.Component", "GetExtents", "(u)", (0,))[0]
                bounds = tuple(self._scale * value for value in extents)
            except GLib.Error:
                pass
        return Item(tuple(address), self._call(address, _ACCESSIBLE, "GetRoleName")[0], self._property(address, "Name"),
                    states, bounds)

    def _walk(self, address, closed=()):
        try:
            item = self._item(address)
            children = self._children(address) if item.role not in closed else ()
        except GLib.Error:
            # It was removed in the meantime.
            return
        yield item
        for child in children:
            yield from self._walk(child, closed)

    def _windows(self):
        """The addresses of the program's windows."""
        applications = self._children(("org.a11y.atspi.Registry", _ROOT))
        for address in applications:
            try:
                is_wanted = self._property(address, "Name") == self._application
                windows = self._children(address) if is_wanted else ()
            except GLib.Error:
                # It ended in the meantime.
                continue
            yield from windows

    def everything(self, closed=()):
        """All items of the program, in its order. Empty while the program is not running. Does not read the children of
        items with a role in `closed`."""
        for address in self._windows():
            yield from self._walk(address, closed)

    def _focused(self, address):
        """The addresses of the items at and below this one that have the focus and are on the screen, in order."""
        try:
            states = self._states(address)
            children = self._children(address)
        except GLib.Error:
            # It was removed in the meantime.
            return
        if {"focused", "showing"} <= states:
            yield address
        for child in children:
            yield from self._focused(child)

    def _matching(self, role, name, closed=()):
        return (item for item in self.everything(closed)
                if item.bounds and role in (None, item.role) and (name is None or re.fullmatch(name, item.name)))

    def showing(self, role=None, name=None):
        """The items on the screen with that role whose whole name matches the pattern."""
        return list(self._matching(role, name))

    def find(self, role, name, seconds=5, closed=()):
        """Waits for such an item and returns the first one."""
        def first():
            return next(self._matching(role, name, closed), None)

        try:
            return desktop.wait_until(first, seconds, f"{role} “{name}”")
        except AssertionError as error:
            seen = "\n".join(map(str, self.showing()))
            raise AssertionError(f"{error}; the window has\n{seen}") from None

    def descriptions(self, role, name=None):
        """The accessible descriptions of the items with that role whose whole name matches the pattern."""
        return [self._property(item.address, "Description") for item in self.showing(role, name)]

    def text(self, item):
        """What is in a text field."""
        return self._call(item.address, "org.a11y.atspi.Text", "GetText", "(ii)", (0, -1))[0]

    def everywhere(self, role, name):
        """The items with that role whose whole name matches the pattern, also those outside the visible part of a page."""
        return [item for item in self.everything() if item.role == role and re.fullmatch(name, item.name)]

    def find_anywhere(self, role, name, seconds=5):
        """Waits for such an item, and returns the first one."""
        found = desktop.wait_until(lambda: self.everywhere(role, name), seconds, f"{role} “{name}” anywhere")
        return found[0]

    def now(self, item):
        """The item as it is now."""
        return self._item(item.address)

    def description(self, item):
        return self._property(item.address, "Description")

    def actions(self, item):
        """The names of what a screen reader can do with the item."""
        count = self._property(item.address, "NActions", _ACTION)
        return [self._call(item.address, _ACTION, "GetName", "(i)", (number,))[0] for number in range(count)]

    def act(self, item, action):
        """Lets the item do one of its actions."""
        names = self.actions(item)
        if action not in names:
            raise AssertionError(f"{item} has the actions {names}, not {action}")
        self._call(item.address, _ACTION, "DoAction", "(i)", (names.index(action),))

    def select(self, item, number):
        """Selects a child of a list; the first has the number 0."""
        self._call(item.address, "org.a11y.atspi.Selection", "SelectChild", "(i)", (number,))

    def value(self, item):
        return self._property(item.address, "CurrentValue", _VALUE)

    def set_value(self, item, value):
        self._call(item.address, "org.freedesktop.DBus.Properties", "Set", "(ssv)",
                   (_VALUE, "CurrentValue", GLib.Variant("d", value)))

    def wait_until_gone(self, role, name, seconds=5):
        desktop.wait_until(lambda: not self.showing(role, name), seconds, f"{role} “{name}” to disappear")
        return time.monotonic()

    def focused(self):
        """The innermost item that has the keyboard focus, or None."""
        # Of the other items it reads only the states, which takes half as long as showing().
        found = [address for window in self._windows() for address in self._focused(window)]
        try:
            return self._item(found[-1]) if found else None
        except GLib.Error:
            return None

    def tree(self):
        return "\n".join(map(str, self.showing()))

    def click(self, role, name, button=1, seconds=5):
        """Clicks with the pointer on the item's centre."""
        item = self.find(role, name, seconds)
        move_pointer(*item.middle)
        desktop.run("xdotool", "click", button)
        return item


def move_pointer(x, y):
    # If the pointer is there already, `xdotool mousemove --sync` waits forever.
    if desktop.run("xdotool", "getmouselocation").startswith(f"x:{x} y:{y} "):
        return
    desktop.run("xdotool", "mousemove", "--sync", x, y)


def picture(x, y, width, height):
    """The pixels of that part of the screen as RGB bytes, row by row."""
    return subprocess.run(
        ["ffmpeg", "-v", "error", "-f", "x11grab", "-draw_mouse", "0", "-video_size", f"{width}x{height}", "-i",
         f"{os.environ['DISPLAY']}+{x},{y}", "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"],
        check=True, capture_output=True).stdout


def colours(x, y, width, height):
    """The colours in that part of the screen, as six hexadecimal digits each."""
    pixels = picture(x, y, width, height)
    return {pixels[start:start + 3].hex() for start in range(0, len(pixels), 3)}
