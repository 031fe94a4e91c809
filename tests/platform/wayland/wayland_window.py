#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A GTK window on a Wayland compositor, or on its X server.

    wayland_window.py BACKEND APPLICATION_ID TITLE

BACKEND is `wayland` or `x11`. Prints `shown` when the window is shown, and `key` at a key press. Each line of the input
is a new title, or `?token`, which prints `token` with an activation token; the end of the input closes the window.
"""
import os
import sys

os.environ.update(NO_AT_BRIDGE="1", GIO_USE_VFS="local", GTK_USE_PORTAL="0", GDK_BACKEND=sys.argv[1])

import gi  # noqa: E402

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gio, GLib, Gtk  # noqa: E402


def main():
    GLib.set_prgname(sys.argv[2])
    Gdk.set_program_class(sys.argv[2])
    window = Gtk.Window(title=sys.argv[3])
    window.set_default_size(200, 100)
    window.connect("map-event", lambda *_: print("shown", flush=True))
    window.connect("key-press-event", lambda *_: print("key", flush=True))

    def read(*_):
        line = sys.stdin.readline()
        if not line:
            Gtk.main_quit()
            return False
        if line == "?token\n":
            program = Gio.AppInfo.create_from_commandline("program", None, Gio.AppInfoCreateFlags.SUPPORTS_STARTUP_NOTIFICATION)
            print("token", window.get_display().get_app_launch_context().get_startup_notify_id(program, []), flush=True)
        else:
            window.set_title(line.rstrip("\n"))
        return True

    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, read)
    window.show_all()
    Gtk.main()


main()
