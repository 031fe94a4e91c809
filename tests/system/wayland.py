# SPDX-License-Identifier: GPL-3.0-or-later
"""Controls the desktop of tools/private-wayland as its user and its faults do: keys and clicks, the monitor, the button
that stops a screen cast, screenshots, and the ends of the desktop's services."""
import functools
import os
import pathlib
import signal
import subprocess
import time

from gi.repository import Gio, GLib

import desktop
import screen_reader

COMPOSITOR = "org.gnome.Shell"
PORTAL = "org.freedesktop.portal.Desktop"
# The part of the portal that shows its dialogs.
PORTAL_BACK_END = "org.freedesktop.impl.portal.desktop.gnome"

_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
_MONITORS = ("org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig", "org.gnome.Mutter.DisplayConfig")
_REMOTE_DESKTOP = ("org.gnome.Mutter.RemoteDesktop", "/org/gnome/Mutter/RemoteDesktop", "org.gnome.Mutter.RemoteDesktop")
_TIMEOUT = 5000
# Codes of the Linux input layer. Letters are those of the American layout.
_KEYS = {"escape": 1, "tab": 15, "enter": 28, "ctrl": 29, "shift": 42, "alt": 56, "space": 57, "super": 125}
_KEYS.update((f"f{number}", 58 + number) for number in range(1, 11))
for _first, _row in ((2, "1234567890"), (16, "qwertyuiop"), (30, "asdfghjkl"), (44, "zxcvbnm")):
    _KEYS.update((name, _first + place) for place, name in enumerate(_row))
_LEFT_BUTTON = 0x110
# Compositors that this program started and that outlive it.
_started = []


@functools.cache
def _bus():
    # The desktop's services remember the connection of their caller. GIO would close it after each call.
    return desktop.session_bus()


def _call(destination, path, interface, method, signature="()", *values):
    return _bus().call_sync(destination, path, interface, method, GLib.Variant(signature, values), None, 0,
                            _TIMEOUT).unpack()


def process_of(name):
    """The id of the process that owns the bus name, or None. Does not start it."""
    try:
        return _call(*_BUS, "GetConnectionUnixProcessID", "(s)", name)[0]
    except GLib.Error:
        return None


def kill(name):
    """Ends the owner of the bus name with SIGKILL, like a crash. The bus starts a portal again when it is called."""
    pid = process_of(name)
    if pid is None:
        raise AssertionError(f"{name} is not running")
    os.kill(pid, signal.SIGKILL)
    desktop.wait_until(lambda: process_of(name) != pid, 5, f"the end of {name}")


def wait_for(name):
    """Waits until a portal that somebody starts can capture the screen."""
    interface = "org.freedesktop.impl.portal.ScreenCast" if name == PORTAL_BACK_END else "org.freedesktop.portal.ScreenCast"

    def answers():
        try:
            return process_of(name) is not None and _call(
                name, "/org/freedesktop/portal/desktop", "org.freedesktop.DBus.Properties", "Get", "(ss)", interface,
                "AvailableSourceTypes")
        except GLib.Error:
            # It has its name before it has its interfaces.
            return None

    desktop.wait_until(answers, 10, f"the start of {name}")


def start(name):
    """Starts a portal, as the first call to it does, and waits until it can capture the screen."""
    _call(*_BUS, "StartServiceByName", "(su)", name, 0)
    wait_for(name)


def start_compositor():
    """Starts the compositor again after its end and waits until it is ready. The end of the desktop ends it."""
    program = os.environ["QUELTO_TEST_SHELL"]
    log = desktop.TEST_FOLDER / "logs" / f"shell-{time.monotonic_ns()}"
    with open(log, "w") as output:
        process = subprocess.Popen([program, "run"], stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                   start_new_session=True)
    if subprocess.run([program, "wait", str(process.pid), str(log)]).returncode:
        raise AssertionError(f"the compositor did not start: {log.read_text()[-2000:]}")
    _started.append(process)
    # What the end of the earlier one has started came too early: it has no screens for as long as it runs.
    if process_of(PORTAL_BACK_END) is not None:
        kill(PORTAL_BACK_END)


def new_token(application=""):
    """A token with which the next screen cast of the monitor starts without a dialog."""
    return desktop.run(os.environ["QUELTO_TEST_TOKEN_MAKER"], application).strip()


def screenshot(path):
    """Writes the whole screen as a PNG file, without the pointer."""
    # The shell permits it only to programs with certain bus names.
    _call(*_BUS, "RequestName", "(su)", "org.gnome.Screenshot", 4)
    try:
        shell = (COMPOSITOR, "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot")

        def is_written():
            try:
                return _call(*shell, "Screenshot", "(bbs)", False, False, str(path))[0]
            except GLib.Error:
                # The shell has not learned of the name yet.
                return False

        desktop.wait_until(is_written, 5, "a screenshot")
    finally:
        _call(*_BUS, "ReleaseName", "(s)", "org.gnome.Screenshot")
    return pathlib.Path(path)


def applications_of_token(token):
    """The ids of the applications that may use the token; an empty id for those that the portal knows no id of."""
    store = "org.freedesktop.impl.portal.PermissionStore"
    return set(_call(store, "/org/freedesktop/impl/portal/PermissionStore", store, "Lookup", "(ss)", "screencast", token)[0])


def forget_shortcuts(application):
    """Removes the shortcuts that the desktop has bound for the application, as its user does in the settings."""
    schema = "org.gnome.settings-daemon.global-shortcuts"
    path = "/org/gnome/settings-daemon/global-shortcuts/"
    Gio.Settings.new(schema).reset("applications")
    Gio.Settings.new_with_path(f"{schema}.application", f"{path}{application}/").reset("shortcuts")
    Gio.Settings.sync()


class ShortcutActivations:
    """Counts how often the desktop has told of pressed shortcuts. While keys are held, it does so again and again."""

    def __init__(self):
        self._count = 0
        self._subscription = _bus().signal_subscribe(
            PORTAL_BACK_END, "org.freedesktop.impl.portal.GlobalShortcuts", "Activated", None, None,
            Gio.DBusSignalFlags.NONE, self._add)

    def close(self):
        _bus().signal_unsubscribe(self._subscription)

    def _add(self, *_):
        self._count += 1

    @property
    def count(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return self._count


def rotate(quarters):
    """Turns the monitor by that number of quarters from its usual position."""
    serial, monitors, logical, _ = _call(*_MONITORS, "GetCurrentState")
    connector, modes = monitors[0][0][0], monitors[0][1]
    mode = next(mode[0] for mode in modes if mode[6].get("is-current"))
    scale = logical[0][2]
    temporary = 1
    _call(*_MONITORS, "ApplyMonitorsConfig", "(uua(iiduba(ssa{sv}))a{sv})", serial, temporary,
          [(0, 0, scale, quarters, True, [(connector, mode, {})])], {})
    desktop.wait_until(lambda: _call(*_MONITORS, "GetCurrentState")[2][0][3] == quarters, 5, "the monitor to turn")


class Input:
    """A keyboard and a pointer of the desktop, for a `with` statement."""

    def __enter__(self):
        path = _call(*_REMOTE_DESKTOP, "CreateSession")[0]
        self._session = (_REMOTE_DESKTOP[0], path, _REMOTE_DESKTOP[2] + ".Session")
        _call(*self._session, "Start")
        return self

    def __exit__(self, *_):
        try:
            _call(*self._session, "Stop")
        except GLib.Error:
            # Such a click has ended it.
            pass

    def _key(self, name, is_down):
        _call(*self._session, "NotifyKeyboardKeycode", "(ub)", _KEYS[name], is_down)

    def hold(self, *names):
        for name in names:
            self._key(name, True)

    def release(self, *names):
        for name in reversed(names):
            self._key(name, False)

    def press(self, *names):
        """Presses the keys together, for example press("alt", "shift", "c")."""
        self.hold(*names)
        self.release(*names)

    def press_until(self, condition, *names, seconds=5, interval=0):
        """Presses the keys together until the condition is true. The desktop has no keyboard before this one, and a program
        misses the keys that come before it has noticed. It has that many seconds for each press."""
        def is_true():
            self.press(*names)
            until = time.monotonic() + interval
            while not condition() and time.monotonic() < until:
                time.sleep(0.02)
            return condition()

        desktop.wait_until(is_true, seconds, f"the effect of {names}")

    def move(self, x, y):
        """Moves the pointer by that many pixels."""
        _call(*self._session, "NotifyPointerMotionRelative", "(dd)", float(x), float(y))

    def point(self, x, y):
        # There are only relative moves. The corner stops the first one.
        self.move(-100000, -100000)
        self.move(x, y)

    def hold_button(self):
        _call(*self._session, "NotifyPointerButton", "(ib)", _LEFT_BUTTON, True)

    def release_button(self):
        _call(*self._session, "NotifyPointerButton", "(ib)", _LEFT_BUTTON, False)

    def click(self, x, y):
        self.point(x, y)
        self.hold_button()
        try:
            self.release_button()
        except GLib.Error:
            # The desktop's button that stops screen casts acts when it is pressed, and ends this session too.
            pass


def stop_sharing():
    """Clicks on the button in the panel that ends all screen casts. The panel must be visible, so no window may fill the
    screen."""
    reader = screen_reader.ScreenReader("gnome-shell")
    try:
        # Its role has another name from GNOME 48 on.
        button = reader.find(None, "Stop Screen Sharing")
    finally:
        reader.close()
    with Input() as user:
        user.click(*button.middle)
