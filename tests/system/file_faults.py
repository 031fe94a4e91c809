# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes chosen file calls of the program's save thread fail, through the library that QUELTO_FILE_FAULTS names.
tests/base/faults/FileFaultRules.h describes the rules."""
import dataclasses
import os
import time

import desktop

SHORT, SLOW = -1, -2


@dataclasses.dataclass(frozen=True)
class Call:
    name: str
    number: int
    """An error code, SHORT, SLOW, or 0 for none."""
    fault: int
    """Inside the watched folder; empty for the folder itself."""
    path: str


def rule(name, number, fault):
    """The number counts the calls of that name from 1. 0 stands for every call."""
    return f"{name} {number} {fault} *"


class FileFaults:
    def __init__(self, folder):
        self._folder = folder
        self._control = desktop.TEST_FOLDER / f"faults-{time.monotonic_ns()}"
        self._control.mkdir()
        self._uses = 0
        self.use()
        self.environment = {"LD_PRELOAD": os.environ["QUELTO_FILE_FAULTS"], "QUELTO_FAULTS": str(self._control),
                            "QUELTO_FAULTS_THREAD": "quelto.save"}

    def use(self, *rules):
        """Replaces the rules and forgets the calls. Counting starts again."""
        self._uses += 1
        (self._control / "calls").unlink(missing_ok=True)
        text = "\n".join([str(self._uses), str(self._folder), *rules, ""])
        coming = self._control / "coming"
        coming.write_text(text)
        coming.rename(self._control / "rules")

    def calls(self):
        file = self._control / "calls"
        if not file.exists():
            return []
        fields = [line.split(" ", 3) for line in file.read_text().splitlines()]
        return [Call(name, int(number), int(fault), path) for name, number, fault, path in fields]
