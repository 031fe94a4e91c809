# SPDX-License-Identifier: GPL-3.0-or-later
"""Stops one thread of a child process, like a thread that reads from a disk that does not answer."""
import ctypes
import os
import pathlib

_SEIZE, _INTERRUPT, _DETACH = 0x4206, 0x4207, 17
_ALL_THREADS = 0x40000000

_libc = ctypes.CDLL(None, use_errno=True)
_libc.ptrace.argtypes = [ctypes.c_ulong, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p]
_libc.ptrace.restype = ctypes.c_long


def _ptrace(request, thread):
    if _libc.ptrace(request, thread, None, None):
        number = ctypes.get_errno()
        raise OSError(number, os.strerror(number))


class FrozenThread:
    """Errors: OSError where ptrace is not permitted."""

    def __init__(self, process, name):
        self.number = next(int(folder.name) for folder in pathlib.Path(f"/proc/{process.pid}/task").iterdir()
                           if (folder / "comm").read_text().strip() == name)
        _ptrace(_SEIZE, self.number)
        _ptrace(_INTERRUPT, self.number)
        os.waitpid(self.number, _ALL_THREADS)

    def has_ended(self):
        """The process can be waited for only after this has returned true."""
        return os.waitpid(self.number, _ALL_THREADS | os.WNOHANG)[0] == self.number

    def release(self):
        try:
            _ptrace(_DETACH, self.number)
        except ProcessLookupError:
            pass
