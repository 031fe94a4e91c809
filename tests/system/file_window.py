#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A GTK window that accepts files by drag and drop, or pasted with Ctrl+V.

    file_window.py X Y WIDTH HEIGHT

Prints `over` while a drag is over it, `offered` with each data format of the drag, `dropped` and `pasted` with each
file's URI, and `action` with the drop's action.
"""
import os
import signal
import sys

# Tests must not find this window through the accessibility interface.
os.environ.update(NO_AT_BRIDGE="1", GIO_USE_VFS="local", GTK_USE_PORTAL="0")
os.environ.setdefault("GDK_BACKEND", "x11")

import gi  # noqa: E402

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402

TITLE = "Files"


def report(word, *texts):
    for text in texts:
        print(word, text, flush=True)


def motion(_window, context, _x, _y, _time):
    report("over", "here")
    report("offered", *(target.name() for target in context.list_targets()))
    return False


def dropped(_window, context, _x, _y, data, _info, _time):
    report("action", context.get_selected_action().value_nicks[0])
    report("dropped", *data.get_uris())


def key_pressed(_window, event):
    if event.keyval == Gdk.KEY_v and event.state & Gdk.ModifierType.CONTROL_MASK:
        form = Gdk.Atom.intern("text/uri-list", False)
        Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).request_contents(form, lambda _, data: report("pasted", *data.get_uris()))
    return True


def main():
    x, y, width, height = map(int, sys.argv[1:])
    window = Gtk.Window(title=TITLE, decorated=False)
    window.add(Gtk.Label(label="Drop files here"))
    window.set_default_size(width, height)
    window.move(x, y)
    window.drag_dest_set(Gtk.DestDefaults.ALL, [], Gdk.DragAction.COPY)
    window.drag_dest_add_uri_targets()
    window.connect("drag-motion", motion)
    window.connect("drag-data-received", dropped)
    window.connect("key-press-event", key_pressed)
    window.connect("map-event", lambda *_: report("ready", "mapped"))
    window.connect("focus-in-event", lambda *_: report("focused", "now"))
    window.show_all()
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, Gtk.main_quit)
    Gtk.main()


if __name__ == "__main__":
    main()
