#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Takes the name of the desktop's file manager on the session bus and prints the method and the files of each call."""
import signal

from gi.repository import Gio, GLib

NAME = "org.freedesktop.FileManager1"
METHODS = Gio.DBusNodeInfo.new_for_xml(f"""
<node><interface name='{NAME}'>
  <method name='ShowFolders'><arg type='as' direction='in'/><arg type='s' direction='in'/></method>
  <method name='ShowItems'><arg type='as' direction='in'/><arg type='s' direction='in'/></method>
</interface></node>""")


def called(_connection, _sender, _path, _interface, method, parameters, invocation):
    for uri in parameters[0]:
        print(method, uri, flush=True)
    invocation.return_value(None)


def main():
    loop = GLib.MainLoop()
    Gio.bus_own_name(
        Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE,
        lambda connection, _: connection.register_object("/org/freedesktop/FileManager1", METHODS.interfaces[0], called),
        lambda *_: print("ready", "owned", flush=True), lambda *_: loop.quit())
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, loop.quit)
    loop.run()


if __name__ == "__main__":
    main()
