#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A window that fills the screen, like a game.

Prints `ready` with its window's id, `focused`, `unfocused`, and `clicked` with the position.
"""
import os
import signal

os.environ.update(NO_AT_BRIDGE="1", GIO_USE_VFS="local", GTK_USE_PORTAL="0", GDK_BACKEND="x11")

import gi  # noqa: E402

gi.require_version("Gdk", "3.0")
gi.require_version("GdkX11", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GdkX11, GLib, Gtk  # noqa: E402, F401

GROUND = "102030"


def clicked(_window, event):
    print("clicked", int(event.x_root), int(event.y_root), flush=True)
    return True


def main():
    window = Gtk.Window(title="Game")
    style = Gtk.CssProvider()
    style.load_from_data(f"window {{ background: #{GROUND}; }}".encode())
    window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
    window.add_events(Gdk.EventMask.BUTTON_PRESS_MASK)
    window.connect("map-event", lambda *_: print("ready", window.get_window().get_xid(), flush=True))
    window.connect("focus-in-event", lambda *_: print("focused", flush=True))
    window.connect("focus-out-event", lambda *_: print("unfocused", flush=True))
    window.connect("button-press-event", clicked)
    window.fullscreen()
    window.show_all()
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, Gtk.main_quit)
    Gtk.main()


if __name__ == "__main__":
    main()
