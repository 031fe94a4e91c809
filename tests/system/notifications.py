# SPDX-License-Identifier: GPL-3.0-or-later
"""Watches the desktop notifications that programs send over the session bus, and clicks on them."""
import dataclasses
import os
import time

from gi.repository import Gio, GLib

import desktop


@dataclasses.dataclass
class Notification:
    title: str
    body: str
    actions: list
    time: float


class CallMonitor:
    """Collects what programs ask the notification server for."""

    def __init__(self):
        self._calls = []
        self._bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self._bus.add_filter(self._filter)
        rules = ["type='method_call',interface='org.freedesktop.Notifications'"]
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring",
                            "BecomeMonitor", GLib.Variant("(asu)", (rules, 0)), None, Gio.DBusCallFlags.NONE, -1)

    def _filter(self, _bus, message, is_incoming):
        """Runs on GDBus's thread, so that the time is that of the call."""
        if not is_incoming or message.get_message_type() != Gio.DBusMessageType.METHOD_CALL:
            return message
        if message.get_body():
            self._calls.append((time.monotonic(), message.get_member(), message.get_body().unpack()))
        return None

    def calls(self, method):
        """The (time, arguments) of each call of the method, in order."""
        return [(moment, arguments) for moment, member, arguments in list(self._calls) if member == method]

    def stop(self):
        if not self._bus.is_closed():
            self._bus.close_sync()


class NotificationMonitor(CallMonitor):
    """Closes the notifications on the screen and collects all later ones in `all`."""

    def __init__(self):
        desktop.run("dunstctl", "close-all")
        super().__init__()

    @property
    def all(self):
        return [Notification(title, body, actions, moment)
                for moment, (_, _, _, title, body, actions, _, _) in self.calls("Notify")]

    def wait(self, seconds, number=1):
        """Returns the notification of that number; the first one has the number 1."""
        return desktop.wait_until(lambda: len(self.all) >= number and self.all[number - 1], seconds, "a notification")

    @staticmethod
    def click():
        """Invokes the default action of the notification on the screen."""
        desktop.wait_until(lambda: desktop.run("dunstctl", "count", "displayed").strip() != "0", 3,
                           "a notification on the screen")
        desktop.run("dunstctl", "action", "0")
