# SPDX-License-Identifier: GPL-3.0-or-later
"""What a screen reader sees of a program: tests find things by their roles and names, and click where they stand.

Needs the private desktop's --accessibility. Asks over the bus for everything anew, so nothing it tells is outdated.
"""
import dataclasses
import os
import re
import subprocess
import time

import gi

import desk

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ROOT = "/org/a11y/atspi/accessible/root"
_REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
_STATES = {1: "active", 4: "checked", 11: "focusable", 12: "focused", 16: "modal", 20: "pressed", 22: "selectable",
           23: "selected", 25: "showing", 8: "enabled"}
_TIMEOUT = 5000


@dataclasses.dataclass(frozen=True)
class Item:
    """What was at one place when it was looked at; `bounds` are x, y, width, height on the screen, or None."""
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
    """`scale`: of the program's desktop, as Qt tells where things are in pixels of its own."""

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
        """From now on `heard` knows on what the focus was said to be. A program that has not begun to tell of it learns
        of its listener by itself."""
        self._heard = []
        for event in ("focus", "object:state-changed:focused"):
            self._call(_REGISTRY, "org.a11y.atspi.Registry", "RegisterEvent", "(sass)", (event, [], ""))
        self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, "focused",
                                   Gio.DBusSignalFlags.NONE, self._focus_told)

    def _focus_told(self, _bus, sender, path, _interface, _signal, values):
        if values[1]:
            try:
                self._heard.append(self._item((sender, path)))
            except GLib.Error:
                pass

    def heard(self):
        """What the focus was told to come to since it was asked for last, in order, as it was by then."""
        while GLib.MainContext.default().iteration(False):
            pass
        told, self._heard = self._heard, []
        return told

    def wait_to_hear(self, role, name, seconds=5):
        """The names of all that was told until such an item came, it among them."""
        told = []

        def came():
            told.extend(self.heard())
            return any(item.role == role and re.fullmatch(name, item.name) for item in told)

        try:
            desk.wait_until(came, seconds, f"word of {role} “{name}”")
        except AssertionError as error:
            raise AssertionError(f"{error}; told was of {[str(item) for item in told]}") from None
        return [item.name for item in told]

    def _property(self, address, name):
        """Name or Description."""
        return self._call(address, "org.freedesktop.DBus.Properties", "Get", "(ss)", (_ACCESSIBLE, name))[0]

    def _children(self, address):
        return self._call(address, _ACCESSIBLE, "GetChildren")[0]

    def _item(self, address):
        low, _ = self._call(address, _ACCESSIBLE, "GetState")[0]
        states = frozenset(name for bit, name in _STATES.items() if low & 1 << bit)
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
            # It went while it was looked at.
            return
        yield item
        for child in children:
            yield from self._walk(child, closed)

    def everything(self, closed=()):
        """Every item of the program, in the order in which it tells of them; empty while the program is not there.
        Those of the roles in `closed` are not entered."""
        applications = self._children(("org.a11y.atspi.Registry", _ROOT))
        for address in applications:
            try:
                is_ours = self._property(address, "Name") == self._application
            except GLib.Error:
                continue
            if is_ours:
                for child in self._children(address):
                    yield from self._walk(child, closed)

    def _fitting(self, role, name, closed=()):
        return (item for item in self.everything(closed)
                if item.bounds and role in (None, item.role) and (name is None or re.fullmatch(name, item.name)))

    def showing(self, role=None, name=None):
        """Those on the screen, of that role, whose whole name fits the pattern."""
        return list(self._fitting(role, name))

    def find(self, role, name, seconds=5, closed=()):
        """The first such item, once there is one."""
        def first():
            return next(self._fitting(role, name, closed), None)

        try:
            return desk.wait_until(first, seconds, f"{role} “{name}”")
        except AssertionError as error:
            seen = "\n".join(map(str, self.showing()))
            raise AssertionError(f"{error}; there is\n{seen}") from None

    def descriptions(self, role):
        """What is said of those of that role beside their names."""
        return [self._property(item.address, "Description") for item in self.showing(role)]

    def wait_until_gone(self, role, name, seconds=5):
        desk.wait_until(lambda: not self.showing(role, name), seconds, f"{role} “{name}” to go")
        return time.monotonic()

    def focused(self):
        """What the keyboard speaks to; the innermost."""
        found = [item for item in self.showing() if "focused" in item.states]
        return found[-1] if found else None

    def tree(self):
        return "\n".join(map(str, self.showing()))

    def click(self, role, name, button=1, seconds=5):
        """A real click in the item's middle."""
        item = self.find(role, name, seconds)
        move_pointer(*item.middle)
        desk.run("xdotool", "click", button)
        return item


def move_pointer(x, y):
    # Where it is there already, xdotool would wait for a movement that never comes.
    if desk.run("xdotool", "getmouselocation").startswith(f"x:{x} y:{y} "):
        return
    desk.run("xdotool", "mousemove", "--sync", x, y)


def picture(x, y, width, height):
    """That part of the screen; red, green and blue of each pixel, row by row."""
    return subprocess.run(
        ["ffmpeg", "-v", "error", "-f", "x11grab", "-draw_mouse", "0", "-video_size", f"{width}x{height}", "-i",
         f"{os.environ['DISPLAY']}+{x},{y}", "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"],
        check=True, capture_output=True).stdout


def colours(x, y, width, height):
    """The colours in that part of the screen, as six digits."""
    pixels = picture(x, y, width, height)
    return {pixels[start:start + 3].hex() for start in range(0, len(pixels), 3)}
