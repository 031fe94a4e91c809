# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads the desktop's trash through `gio trash`: the one in the home folder and those of all volumes."""
import os
import re
import signal
import subprocess
import urllib.parse

import desktop


class TrashCan:
    SERVICE = "/usr/libexec/gvfsd"

    def __init__(self):
        # The service starts child processes, so it gets its own process group.
        self._process = subprocess.Popen([self.SERVICE, "--no-fuse"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                         start_new_session=True)
        desktop.wait_until(lambda: desktop.bus_answers("org.gtk.vfs.Daemon"), 10, "the service behind `gio trash`")

    @staticmethod
    def _uri_of(path):
        """The URI in the trash of the file that was at that path, or None."""
        for line in desktop.run("gio", "trash", "--list").splitlines():
            uri, _, _ = line.partition("\t")
            # The list escapes non-ASCII characters; the attribute does not.
            original = desktop.run("gio", "info", "-a", "trash::orig-path", uri)
            if original.rpartition("trash::orig-path: ")[2].strip() == str(path):
                return uri
        return None

    def wait_for(self, path):
        """Waits for the file that was at that path and returns its URI in the trash."""
        return desktop.wait_until(lambda: self._uri_of(path), 5,
                                  f"{path} in the trash, which holds {desktop.run('gio', 'trash', '--list')}")

    def restore(self, path):
        desktop.run("gio", "trash", "--restore", self.wait_for(path))

    def stop(self):
        os.killpg(self._process.pid, signal.SIGTERM)
        self._process.wait(10)


def original_paths(trash_folder):
    """The original paths of the files in the trash, from their .trashinfo files."""
    for file in (trash_folder / "files").iterdir():
        title, *lines = (trash_folder / "info" / f"{file.name}.trashinfo").read_text().splitlines()
        values = dict(line.split("=", 1) for line in lines)
        if title == "[Trash Info]" and re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d", values["DeletionDate"]):
            yield urllib.parse.unquote(values["Path"])
