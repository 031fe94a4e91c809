# SPDX-License-Identifier: GPL-3.0-or-later
"""A program that captures the screen through the desktop portal, with nothing of Quelto in it."""
import itertools
import os
import subprocess

import numpy
from gi.repository import Gio, GLib

import clip
import desktop
import wayland

_PATH = "/org/freedesktop/portal/desktop"
_SCREEN_CAST = "org.freedesktop.portal.ScreenCast"
_MONITOR, _HIDDEN_CURSOR, _UNTIL_REVOKED = 1, 1, 2
_NUMBERS = itertools.count(1)


class Client:
    """A connection of its own, so that close() ends all its sessions."""

    def __init__(self):
        self.bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)

    def close(self):
        self.bus.close_sync()

    def call(self, path, interface, method, arguments):
        return self.bus.call_sync(wayland.PORTAL, path, interface, method, arguments, None, 0, 25000)

    def on_signal(self, interface, name, path, handler):
        self.bus.signal_subscribe(wayland.PORTAL, interface, name, path, None, Gio.DBusSignalFlags.NONE,
                                  lambda _bus, _sender, _path, _interface, _name, values: handler(values.unpack()))


class Request:
    """A call of the portal that is answered by a signal: (0 agreed, 1 cancelled, 2 ended; results)."""

    def __init__(self, client, method, signature, *values, **options):
        token = f"quelto{next(_NUMBERS)}"
        sender = client.bus.get_unique_name()[1:].replace(".", "_")
        self._method = method
        self._responses = []
        # Before the call, because the answer may come before its reply.
        client.on_signal("org.freedesktop.portal.Request", "Response", f"{_PATH}/request/{sender}/{token}",
                         self._responses.append)
        options["handle_token"] = GLib.Variant("s", token)
        client.call(_PATH, _SCREEN_CAST, method, GLib.Variant(signature, (*values, options)))

    def is_answered(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return bool(self._responses)

    def response(self, seconds=20):
        desktop.wait_until(self.is_answered, seconds, f"the answer to {self._method}")
        return self._responses[0]


class ScreenCast:
    """A session that captures one monitor. `token`: of an earlier session, to start without a dialog."""

    def __init__(self, client, token=None):
        self._client = client
        self._closed = []
        code, results = Request(client, "CreateSession", "(a{sv})",
                                session_handle_token=GLib.Variant("s", f"session{next(_NUMBERS)}")).response()
        if code:
            raise AssertionError(f"CreateSession was answered with {code}")
        self.path = results["session_handle"]
        client.on_signal("org.freedesktop.portal.Session", "Closed", self.path, self._closed.append)
        options = {"types": GLib.Variant("u", _MONITOR), "multiple": GLib.Variant("b", False),
                   "cursor_mode": GLib.Variant("u", _HIDDEN_CURSOR), "persist_mode": GLib.Variant("u", _UNTIL_REVOKED)}
        if token:
            options["restore_token"] = GLib.Variant("s", token)
        code, _ = Request(client, "SelectSources", "(oa{sv})", self.path, **options).response()
        if code:
            raise AssertionError(f"SelectSources was answered with {code}")
        self._start = Request(client, "Start", "(osa{sv})", self.path, "")

    def is_answered(self):
        return self._start.is_answered()

    def response(self, seconds=20):
        """(0 agreed or 1 cancelled, results) of the start."""
        return self._start.response(seconds)

    def started(self):
        """Waits for the start without a refusal. Returns the node, the size in pixels, and the token for the next."""
        code, results = self.response()
        if code:
            raise AssertionError(f"the start was answered with {code}")
        node, properties = results["streams"][0]
        return node, properties["size"], results["restore_token"]

    def is_closed(self):
        """Whether the desktop has closed the session."""
        while GLib.MainContext.default().iteration(False):
            pass
        return bool(self._closed)

    def close(self):
        self._client.call(self.path, "org.freedesktop.portal.Session", "Close", None)

    def open_remote(self):
        """A descriptor of a connection to PipeWire that sees only this screen cast."""
        reply, descriptors = self._client.bus.call_with_unix_fd_list_sync(
            wayland.PORTAL, _PATH, _SCREEN_CAST, "OpenPipeWireRemote", GLib.Variant("(oa{sv})", (self.path, {})), None, 0,
            5000, None)
        return descriptors.get(reply.unpack()[0])

    def counters(self, count, seconds=20):
        """The scene's counters in the next frames."""
        node, (width, height), _ = self.started()
        remote = self.open_remote()
        # Without a maximum, the screen cast offers the monitor's refresh rate.
        command = ["gst-launch-1.0", "-q", "pipewiresrc", f"fd={remote}", f"path={node}", f"num-buffers={count}", "!",
                   "video/x-raw,format=BGRx", "!", "fdsink", "fd=1"]
        reader = subprocess.Popen(command, pass_fds=[remote], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        os.close(remote)
        try:
            raw, errors = reader.communicate(timeout=seconds)
        except subprocess.TimeoutExpired:
            reader.kill()
            raw, errors = reader.communicate()
            raise AssertionError(f"{len(raw) // (4 * width * height)} of {count} frames within {seconds} s; {errors}") \
                from None
        pictures = numpy.frombuffer(raw, numpy.uint8).reshape(-1, height, width, 4)
        strip = slice(height // 64, height * 3 // 64)
        return [clip.read_counter(picture[strip, :, 1]) for picture in pictures]
