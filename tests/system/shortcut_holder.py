#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Another program with a global shortcut: holds Alt+Shift+C on the X server until it is ended."""
import ctypes
import time

ALT_SHIFT = 0x8 | 0x1
ASYNCHRONOUS = 1

xlib = ctypes.CDLL("libX11.so.6")
xlib.XOpenDisplay.restype = ctypes.c_void_p
xlib.XDefaultRootWindow.restype = ctypes.c_ulong
xlib.XStringToKeysym.restype = ctypes.c_ulong
display = ctypes.c_void_p(xlib.XOpenDisplay(None))
root = ctypes.c_ulong(xlib.XDefaultRootWindow(display))
key = xlib.XKeysymToKeycode(display, ctypes.c_ulong(xlib.XStringToKeysym(b"c")))
# A grab that fails ends the program, as Xlib does with every error.
xlib.XGrabKey(display, key, ALT_SHIFT, root, False, ASYNCHRONOUS, ASYNCHRONOUS)
xlib.XSync(display, False)
print("ready", flush=True)
while True:
    time.sleep(60)
