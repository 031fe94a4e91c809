# SPDX-License-Identifier: GPL-3.0-or-later
"""The desktop's trash as `gio trash` shows it: the bin at home and those of all volumes."""
import os
import re
import signal
import subprocess
import urllib.parse

import desk


class TrashCan:
    SERVICE = "/usr/libexec/gvfsd"

    def __init__(self):
        # It starts further processes for its parts.
        self._process = subprocess.Popen([self.SERVICE, "--no-fuse"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                         start_new_session=True)
        desk.wait_until(self._answers, 10, "the service behind `gio trash`")

    @staticmethod
    def _answers():
        return not subprocess.run(["gdbus", "call", "--session", "--dest", "org.gtk.vfs.Daemon", "--object-path", "/", "--method",
                                   "org.freedesktop.DBus.Peer.Ping"], capture_output=True).returncode

    @staticmethod
    def _address_of(path):
        """Of the file in the bin that came from there; None while there is none."""
        for line in desk.run("gio", "trash", "--list").splitlines():
            address, _, _ = line.partition("\t")
            # Its text shows what is not ASCII in a form of its own.
            came_from = desk.run("gio", "info", "-a", "trash::orig-path", address)
            if came_from.rpartition("trash::orig-path: ")[2].strip() == str(path):
                return address
        return None

    def wait_for(self, path):
        """The address in the bin of the file that was at that path."""
        return desk.wait_until(lambda: self._address_of(path), 5, f"{path} in the bin, which holds {desk.run('gio', 'trash', '--list')}")

    def restore(self, path):
        desk.run("gio", "trash", "--restore", self.wait_for(path))

    def stop(self):
        os.killpg(self._process.pid, signal.SIGTERM)
        self._process.wait(10)


def places(bin_folder):
    """Where the files in the bin came from, as their notes tell."""
    for file in (bin_folder / "files").iterdir():
        title, *lines = (bin_folder / "info" / f"{file.name}.trashinfo").read_text().splitlines()
        values = dict(line.split("=", 1) for line in lines)
        if title == "[Trash Info]" and re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d", values["DeletionDate"]):
            yield urllib.parse.unquote(values["Path"])
